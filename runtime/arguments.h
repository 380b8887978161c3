#pragma once

#include "runtime/errors.h"
#include "runtime/handles.h"
#include "runtime/kept.h"
#include "runtime/names.h"

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <jni.h>

/// How each type of parameter comes in. `Argument<P>`, P being the parameter's type as the SDK declares it, has three
/// members everywhere:
///     using Jni = Types<…>;             the JNI parameters that it takes up
///     bool receive(JNIEnv*, Jni…);      convert or check; false when a Java exception ends the call
///     … pass();                         what the SDK operation is given
/// No array, string or list is checked for null.
namespace pedflux::jni {

template <class...>
struct Types {};

/// The object that a method is called on. Never checked: a 0 handle reaches the SDK as a null object.
template <class T>
struct Self {};

/// A parameter that the SDK declares `T const`, by value. C++ drops the const from the function's type, so the table of
/// exports says it.
template <class T>
struct DeclaredConst {};

template <class P>
struct Argument;

namespace detail {

/// A number that only changes its type.
template <class P, class J>
struct NumberArgument {
    using Jni = Types<J>;
    bool receive(JNIEnv*, J given) {
        value = static_cast<P>(given);
        return true;
    }
    P pass() const { return value; }
    P value{};
};

/// A handle followed by its proxy, which is there to keep the proxy alive during the call.
using ObjectJni = Types<jlong, jobject>;

/// An SDK object whose absence ends the call with `message`.
template <class T>
struct CheckedObject {
    using Jni = ObjectJni;
    bool receive_or_throw(JNIEnv* env, jlong handle, char const* message) {
        object = object_of<T>(handle);
        if (!object) throwJavaException(env, ErrorCode::null_pointer, message);
        return object != nullptr;
    }
    T* object = nullptr;
};

template <class T>
struct SharedPointer {
    using Jni = ObjectJni;
    bool receive(JNIEnv*, jlong handle, jobject) {
        if (handle) pointer = from_handle<T>(handle);
        return true;
    }
    std::shared_ptr<T> empty;
    std::shared_ptr<T>* pointer = &empty;
};

struct StringArgument {
    using Jni = Types<jbyteArray>;
    bool receive(JNIEnv* env, jbyteArray array) {
        jbyte* const bytes = env->GetByteArrayElements(array, nullptr);
        auto const length = static_cast<std::size_t>(env->GetArrayLength(array));
        text = &keep<std::string>(reinterpret_cast<char const*>(bytes), length);
        env->ReleaseByteArrayElements(array, bytes, JNI_ABORT);
        return true;
    }
    std::string const& pass() const { return *text; }
    std::string const* text = nullptr;
};

/// The JNI functions of an array of a primitive.
template <class Element>
struct Primitive;
template <>
struct Primitive<int> {
    using Array = jintArray;
    static constexpr auto elements = &JNIEnv::GetIntArrayElements;
    static constexpr auto release = &JNIEnv::ReleaseIntArrayElements;
    static constexpr auto create = &JNIEnv::NewIntArray;
    static constexpr auto fill = &JNIEnv::SetIntArrayRegion;
};
template <>
struct Primitive<double> {
    using Array = jdoubleArray;
    static constexpr auto elements = &JNIEnv::GetDoubleArrayElements;
    static constexpr auto release = &JNIEnv::ReleaseDoubleArrayElements;
    static constexpr auto create = &JNIEnv::NewDoubleArray;
    static constexpr auto fill = &JNIEnv::SetDoubleArrayRegion;
};

template <class Element>
struct PrimitiveVectorArgument {
    using Array = typename Primitive<Element>::Array;
    using Jni = Types<Array>;
    bool receive(JNIEnv* env, Array array) {
        auto* const first = (env->*Primitive<Element>::elements)(array, nullptr);
        vector = &keep<std::vector<Element>>(first, first + env->GetArrayLength(array));
        (env->*Primitive<Element>::release)(array, first, JNI_ABORT);
        return true;
    }
    std::vector<Element> const& pass() const { return *vector; }
    std::vector<Element> const* vector = nullptr;
};

struct StringVectorArgument {
    using Jni = Types<jobjectArray>;
    bool receive(JNIEnv* env, jobjectArray array) {
        jsize const length = env->GetArrayLength(array);
        auto& texts =
            const_cast<std::vector<std::string>&>(keep<std::vector<std::string>>(static_cast<std::size_t>(length)));
        for (jsize index = 0; index < length; ++index) {
            auto const string = static_cast<jstring>(env->GetObjectArrayElement(array, index));
            char const* const characters = env->GetStringUTFChars(string, nullptr);
            texts[static_cast<std::size_t>(index)] = characters;
            env->ReleaseStringUTFChars(string, characters);
        }
        vector = &texts;
        return true;
    }
    std::vector<std::string> const& pass() const { return *vector; }
    std::vector<std::string> const* vector = nullptr;
};

/// A list of proxies. A null element is reported and leaves a default element; the conversion and the call go on. The
/// vector, with the references that it holds, is released on every path.
template <class T>
struct ObjectVectorArgument {
    using Jni = Types<jobjectArray>;
    bool receive(JNIEnv* env, jobjectArray array) {
        jsize const length = env->GetArrayLength(array);
        vector.resize(static_cast<std::size_t>(length));
        jfieldID const handle = env->GetFieldID(env->FindClass(proxy_class<T>()), "swigCPtr", "J");
        for (jsize index = 0; index < length; ++index) {
            if (jobject const proxy = env->GetObjectArrayElement(array, index)) {
                vector[static_cast<std::size_t>(index)] = *from_handle<T>(env->GetLongField(proxy, handle));
            } else {
                throw_sdk_exception(env, named<T, "Null element in ", " list">());
            }
        }
        return true;
    }
    std::vector<Held<T>> const& pass() const { return vector; }
    std::vector<Held<T>> vector;
};

template <class T>
inline constexpr bool is_standard = false;
template <class T>
inline constexpr bool is_standard<std::vector<T>> = true;
template <class T>
inline constexpr bool is_standard<std::shared_ptr<T>> = true;
template <>
inline constexpr bool is_standard<std::string> = true;

/// A class of the SDK.
template <class T>
concept SdkClass = std::is_class_v<T> && !is_standard<T>;

}  // namespace detail

template <>
struct Argument<bool> : detail::NumberArgument<bool, jboolean> {};
template <>
struct Argument<int> : detail::NumberArgument<int, jint> {};
template <>
struct Argument<float> : detail::NumberArgument<float, jfloat> {};
template <>
struct Argument<double> : detail::NumberArgument<double, jdouble> {};
/// The low byte of the Java character.
template <>
struct Argument<char> : detail::NumberArgument<char, jchar> {};
/// The low 32 bits of the Java long.
template <>
struct Argument<unsigned int> : detail::NumberArgument<unsigned int, jlong> {};
template <class P>
requires std::is_enum_v<P>
struct Argument<P> : detail::NumberArgument<P, jint> {
};

template <>
struct Argument<std::string const&> : detail::StringArgument {};
template <>
struct Argument<std::string> : detail::StringArgument {};

template <>
struct Argument<std::vector<int> const&> : detail::PrimitiveVectorArgument<int> {};
template <>
struct Argument<std::vector<double> const&> : detail::PrimitiveVectorArgument<double> {};
template <>
struct Argument<std::vector<std::string> const&> : detail::StringVectorArgument {};
template <detail::SdkClass T>
struct Argument<std::vector<T> const&> : detail::ObjectVectorArgument<T> {
    static_assert(crosses_by_value<T>, "a shared class crosses in a list as std::shared_ptr");
};
template <class T>
struct Argument<std::vector<std::shared_ptr<T>> const&> : detail::ObjectVectorArgument<T> {};

template <class T>
struct Argument<Self<T>> {
    using Jni = detail::ObjectJni;
    bool receive(JNIEnv*, jlong handle, jobject) {
        object = object_of<T>(handle);
        return true;
    }
    T* pass() const { return object; }
    T* object = nullptr;
};

template <detail::SdkClass T>
struct Argument<T const&> : detail::CheckedObject<T> {
    bool receive(JNIEnv* env, jlong handle, jobject) {
        return this->receive_or_throw(env, handle,
                                      crosses_by_value<T> ? named<T, "pedflux::", " const & is null">()
                                                          : named<T, "pedflux::", " const & reference is null">());
    }
    T const& pass() const { return *this->object; }
};

template <detail::SdkClass T>
struct Argument<T&> : detail::CheckedObject<T> {
    bool receive(JNIEnv* env, jlong handle, jobject) {
        return this->receive_or_throw(env, handle, named<T, "pedflux::", " & is null">());
    }
    T& pass() const { return *this->object; }
};

template <detail::SdkClass T>
struct Argument<T> : detail::CheckedObject<T> {
    bool receive(JNIEnv* env, jlong handle, jobject) {
        return this->receive_or_throw(env, handle, named<T, "Attempt to dereference null pedflux::">());
    }
    T const& pass() const { return *this->object; }
};

template <class T>
struct Argument<DeclaredConst<T>> : detail::CheckedObject<T> {
    bool receive(JNIEnv* env, jlong handle, jobject) {
        return this->receive_or_throw(env, handle, named<T, "Attempt to dereference null pedflux::", " const">());
    }
    T const& pass() const { return *this->object; }
};

template <class T>
struct Argument<std::shared_ptr<T> const&> : detail::SharedPointer<T> {
    std::shared_ptr<T> const& pass() const { return *this->pointer; }
};
template <class T>
struct Argument<std::shared_ptr<T>> : detail::SharedPointer<T> {
    std::shared_ptr<T> const& pass() const { return *this->pointer; }
};
/// The SDK may put another object into the caller's own handle.
template <class T>
struct Argument<std::shared_ptr<T>&> : detail::SharedPointer<T> {
    std::shared_ptr<T>& pass() const { return *this->pointer; }
};

}  // namespace pedflux::jni
