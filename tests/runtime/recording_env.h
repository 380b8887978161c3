#pragma once

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <jni.h>

namespace pedflux::jni::test {

/// A Java object, as much of it as the bridge can see.
struct Object {
    std::string type;  ///< "Class", "String", "byte[]", "Label[]"; "Label" for a proxy
    std::string text;  ///< a string's characters; a class's path
    std::vector<jbyte> bytes = {};
    std::vector<jint> ints = {};
    std::vector<jdouble> doubles = {};
    std::vector<Object*> elements = {};
    jlong handle = 0;  ///< a proxy's swigCPtr
};

/// A JNI environment that adds each call to the trace and models arrays, strings, classes, proxies and the pending
/// exception. A function that it does not model throws std::logic_error with the function's name. Array elements are
/// given out as copies, which must come back exactly once.
class RecordingEnv : public JNIEnv {
  public:
    RecordingEnv();
    RecordingEnv(RecordingEnv const&) = delete;
    RecordingEnv& operator=(RecordingEnv const&) = delete;
    ~RecordingEnv();

    jbyteArray bytes(std::string_view text);
    jintArray ints(std::vector<jint> const& values);
    jdoubleArray doubles(std::vector<jdouble> const& values);
    jobjectArray strings(std::vector<std::string> const& texts);
    /// Proxies of one class with these handles; no handle is a null element.
    jobjectArray proxies(std::string const& type, std::vector<std::optional<jlong>> const& handles);

    /// "java/lang/Some: message"; empty when nothing is pending.
    std::string pending;
    /// Classes that FindClass does not find.
    std::set<std::string> missing_classes;

    Object* make(Object object);
    /// Elements that were given out and have not come back.
    std::map<void*, Object*> given_out;

  private:
    JNINativeInterface_ table_{};
    std::deque<Object> objects_;
};

/// The object behind what the bridge returned.
inline Object const& object(jobject reference) { return *reinterpret_cast<Object const*>(reference); }

}  // namespace pedflux::jni::test
