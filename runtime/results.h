#pragma once

#include "runtime/arguments.h"
#include "runtime/handles.h"
#include "runtime/names.h"

#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <jni.h>

/// How each type of result goes out. `Result<R>`, R being the result's type as the SDK declares it, has two members
/// everywhere:
///     using Jni = …;                              the JNI type
///     static Jni from(JNIEnv*, Produce&&);        call `produce`, which calls the SDK, and convert what it returns
/// Taking the call instead of its result lets a value be made where it stays: in its handle.
namespace pedflux::jni {

template <class R>
struct Result;

namespace detail {

template <class J>
struct NumberResult {
    using Jni = J;
    template <class Produce>
    static J from(JNIEnv*, Produce&& produce) {
        return static_cast<J>(produce());
    }
};

inline jsize array_size(std::size_t size) { return static_cast<jsize>(size); }

/// The handle of a list's element, moved out of the vector. An empty shared pointer gets a holder too.
template <class T>
jlong element_handle(Held<T>&& element) {
    if constexpr (crosses_by_value<T>) {
        return to_handle(new (std::nothrow) T(std::move(element)));
    } else {
        return hold(std::move(element));
    }
}

/// A Java array of new proxies, each owning its handle. The elements' class is the static one.
template <class T>
struct ObjectVectorResult {
    using Jni = jobjectArray;
    template <class Produce>
    static jobjectArray from(JNIEnv* env, Produce&& produce) {
        std::vector<Held<T>> elements = produce();
        jclass const proxy_type = env->FindClass(proxy_class<T>());
        jmethodID const constructor = env->GetMethodID(proxy_type, "<init>", "(JZ)V");
        jobjectArray const array = env->NewObjectArray(array_size(elements.size()), proxy_type, nullptr);
        jsize index = 0;
        for (auto& element : elements) {
            jobject const proxy =
                env->NewObject(proxy_type, constructor, element_handle<T>(std::move(element)), JNI_TRUE);
            env->SetObjectArrayElement(array, index++, proxy);
        }
        return array;
    }
};

template <class Element>
struct PrimitiveVectorResult {
    using Jni = typename Primitive<Element>::Array;
    template <class Produce>
    static Jni from(JNIEnv* env, Produce&& produce) {
        std::vector<Element> const elements = produce();
        jsize const size = array_size(elements.size());
        Jni const array = (env->*Primitive<Element>::create)(size);
        (env->*Primitive<Element>::fill)(array, 0, size, elements.data());
        return array;
    }
};

}  // namespace detail

template <>
struct Result<void> {
    using Jni = void;
    template <class Produce>
    static void from(JNIEnv*, Produce&& produce) {
        produce();
    }
};

template <>
struct Result<bool> : detail::NumberResult<jboolean> {};
template <>
struct Result<int> : detail::NumberResult<jint> {};
template <>
struct Result<float> : detail::NumberResult<jfloat> {};
template <>
struct Result<double> : detail::NumberResult<jdouble> {};
/// Zero-extended: never negative.
template <>
struct Result<unsigned int> : detail::NumberResult<jlong> {};
template <class R>
requires std::is_enum_v<R>
struct Result<R> : detail::NumberResult<jint> {
};

template <>
struct Result<std::string> {
    using Jni = jbyteArray;
    template <class Produce>
    static jbyteArray from(JNIEnv* env, Produce&& produce) {
        std::string const text = produce();
        jsize const size = detail::array_size(text.size());
        jbyteArray const array = env->NewByteArray(size);
        env->SetByteArrayRegion(array, 0, size, reinterpret_cast<jbyte const*>(text.data()));
        return array;
    }
};

template <>
struct Result<std::vector<std::string>> {
    using Jni = jobjectArray;
    template <class Produce>
    static jobjectArray from(JNIEnv* env, Produce&& produce) {
        std::vector<std::string> const texts = produce();
        jstring const initial = env->NewStringUTF("");
        jclass const string_type = env->FindClass("java/lang/String");
        jobjectArray const array = env->NewObjectArray(detail::array_size(texts.size()), string_type, initial);
        jsize index = 0;
        for (auto const& text : texts) env->SetObjectArrayElement(array, index++, env->NewStringUTF(text.c_str()));
        return array;
    }
};

template <>
struct Result<std::vector<int>> : detail::PrimitiveVectorResult<int> {};
template <>
struct Result<std::vector<double>> : detail::PrimitiveVectorResult<double> {};
template <detail::SdkClass T>
struct Result<std::vector<T>> : detail::ObjectVectorResult<T> {
    static_assert(crosses_by_value<T>, "a shared class crosses in a list as std::shared_ptr");
};
template <class T>
struct Result<std::vector<std::shared_ptr<T>>> : detail::ObjectVectorResult<T> {};

template <class T>
struct Result<std::shared_ptr<T>> {
    using Jni = jlong;
    template <class Produce>
    static jlong from(JNIEnv*, Produce&& produce) {
        return hold_if_any(std::shared_ptr<T>(produce()));
    }
};

/// An object returned by value: a new object, owned by its handle.
template <detail::SdkClass T>
struct Result<T> {
    using Jni = jlong;
    template <class Produce>
    static jlong from(JNIEnv*, Produce&& produce) {
        T* const object = new (std::nothrow) T(produce());
        if (!object) produce();  // the operation takes place also when there is no room for what it returns
        return adopt(object);
    }
};

/// An object that an operation has made with `new` and gives away.
template <class T>
struct Result<T*> {
    using Jni = jlong;
    template <class Produce>
    static jlong from(JNIEnv*, Produce&& produce) {
        return adopt(static_cast<T*>(produce()));
    }
};

}  // namespace pedflux::jni
