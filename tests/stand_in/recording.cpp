#include "tests/stand_in/recording.h"

#include "made.h"

#include <array>
#include <charconv>
#include <functional>
#include <set>
#include <string_view>

namespace pedflux {

// Nothing stands behind the stand-in's objects.
void engine::NodeRelease::operator()(NodeState*) const noexcept {}

namespace stand_in {
namespace {

struct Recorder {
    std::vector<std::vector<std::string>> records;
    std::string failing;  ///< the operation that is to fail
    std::string failure;
    int number = 0;
};

Recorder& recorder() {
    thread_local Recorder instance;
    return instance;
}

}  // namespace

int next_number() { return ++recorder().number; }

void fail_if_asked(char const* operation) {
    if (recorder().failing != operation) return;
    recorder().failing.clear();
    throw Exception(recorder().failure);
}

void begin(char const* operation, void const* object) {
    recorder().records.push_back({operation, text_of_address(object)});
}
void add(std::string text) { recorder().records.back().push_back(std::move(text)); }

std::string text_of_number(double number) {
    std::array<char, 32> text{};
    auto const end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}
std::string text_of_address(void const* address) { return std::to_string(reinterpret_cast<std::intptr_t>(address)); }
std::string text_of_bytes(void const* bytes, std::size_t size) {
    std::uint64_t hash = 14695981039346656037U;
    for (unsigned char const byte : std::string_view(static_cast<char const*>(bytes), size)) {
        hash = (hash ^ byte) * 1099511628211U;
    }
    return "#" + std::to_string(hash);
}

namespace {

/// What the tests can do with objects of a class.
struct ClassFunctions {
    std::string_view name;
    bool is_value;
    jlong (*make)();  ///< a new handle
    jlong (*copy)(jlong handle);
    std::string (*describe)(jlong handle);  ///< the object as a record shows it
    std::string (*content)(jlong handle);   ///< the same of an object that crosses as such, also when it is shared
    std::string (*missing)();               ///< what stands in a list for a null element
    jlong (*owners)(jlong handle);          ///< how many share the object; 1 for a value
};

template <class T>
constexpr ClassFunctions functions_of(std::string_view name) {
    if constexpr (jni::crosses_by_value<T>) {
        return {name,
                true,
                [] { return jni::to_handle(made_value<T>()); },
                [](jlong handle) { return jni::to_handle(new T(*jni::from_handle<T>(handle))); },
                [](jlong handle) { return text_of(*jni::from_handle<T>(handle)); },
                [](jlong handle) { return text_of(*jni::from_handle<T>(handle)); },
                [] { return text_of(some<T>()); },
                [](jlong) { return jlong{1}; }};
    } else {
        return {name,
                false,
                [] { return jni::hold(made_shared<T>()); },
                [](jlong handle) { return jni::hold(std::shared_ptr<T>(*jni::from_handle<T>(handle))); },
                [](jlong handle) { return text_of(*jni::from_handle<T>(handle)); },
                [](jlong handle) { return text_of(**jni::from_handle<T>(handle)); },
                [] { return text_of(std::shared_ptr<T>()); },
                [](jlong handle) { return jlong{jni::from_handle<T>(handle)->use_count()}; }};
    }
}

constexpr ClassFunctions CLASSES[] = {
#define ENTRY(Class) functions_of<Class>(#Class),
#include "classes.inc"
};

std::string text_in(JNIEnv* env, jstring text) {
    char const* const bytes = env->GetStringUTFChars(text, nullptr);
    std::string copied(bytes);
    env->ReleaseStringUTFChars(text, bytes);
    return copied;
}

ClassFunctions const& class_named(JNIEnv* env, jstring name) {
    std::string const wanted = text_in(env, name);
    for (auto const& functions : CLASSES) {
        if (functions.name == wanted) return functions;
    }
    env->FatalError(("no class of the SDK is called " + wanted).c_str());
    return CLASSES[0];
}

jobjectArray strings(JNIEnv* env, std::vector<std::string> const& texts) {
    jobjectArray const array =
        env->NewObjectArray(static_cast<jsize>(texts.size()), env->FindClass("java/lang/String"), nullptr);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        jstring const text = env->NewStringUTF(texts[i].c_str());
        env->SetObjectArrayElement(array, static_cast<jsize>(i), text);
        env->DeleteLocalRef(text);
    }
    return array;
}

}  // namespace
}  // namespace stand_in
}  // namespace pedflux

#define NATIVE(Result, name) extern "C" JNIEXPORT Result JNICALL Java_com_kelvar_pedflux_StandIn_##name

using namespace pedflux::stand_in;

NATIVE(jlong, make)(JNIEnv* env, jclass, jstring name) { return class_named(env, name).make(); }
/// Whether a header of the SDK defines the operation, which then is compiled into the bridge and cannot be recorded.
NATIVE(jboolean, isInlined)(JNIEnv* env, jclass, jstring operation) {
    static std::set<std::string, std::less<>> const inlined = {
#include "inlined.inc"
    };
    return inlined.contains(text_in(env, operation)) ? 1 : 0;
}
NATIVE(jstring, content)(JNIEnv* env, jclass, jstring name, jlong handle) {
    return env->NewStringUTF(class_named(env, name).content(handle).c_str());
}
NATIVE(jlong, copy)(JNIEnv* env, jclass, jstring name, jlong handle) { return class_named(env, name).copy(handle); }
NATIVE(jboolean, isValue)(JNIEnv* env, jclass, jstring name) { return class_named(env, name).is_value ? 1 : 0; }
NATIVE(jstring, describe)(JNIEnv* env, jclass, jstring name, jlong handle) {
    return env->NewStringUTF(class_named(env, name).describe(handle).c_str());
}
NATIVE(jstring, missing)(JNIEnv* env, jclass, jstring name) {
    return env->NewStringUTF(class_named(env, name).missing().c_str());
}
NATIVE(jlong, owners)(JNIEnv* env, jclass, jstring name, jlong handle) { return class_named(env, name).owners(handle); }
/// The reached operations since the last call, one after the other.
NATIVE(jobjectArray, records)(JNIEnv* env, jclass) {
    auto const records = std::exchange(recorder().records, {});
    jobjectArray const array =
        env->NewObjectArray(static_cast<jsize>(records.size()), env->FindClass("[Ljava/lang/String;"), nullptr);
    for (std::size_t i = 0; i < records.size(); ++i) {
        jobjectArray const one = strings(env, records[i]);
        env->SetObjectArrayElement(array, static_cast<jsize>(i), one);
        env->DeleteLocalRef(one);
    }
    return array;
}
/// The operation throws an exception with this message when it is reached the next time.
NATIVE(void, fail)(JNIEnv* env, jclass, jstring operation, jstring message) {
    recorder().failing = text_in(env, operation);
    recorder().failure = text_in(env, message);
}
