#pragma once

#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>

#include <jni.h>

/// Handles: every SDK object is, on the Java side, a `long` that holds the address of a heap object made here; 0 is
/// null.
namespace pedflux::jni {

/// Whether a class crosses as the address of a heap copy (a value) or as the address of a heap std::shared_ptr (all
/// others). bindings/value_classes.h names the values.
template <class T>
inline constexpr bool crosses_by_value = false;

/// What the handle of a T is the address of.
template <class T>
using Held = std::conditional_t<crosses_by_value<T>, T, std::shared_ptr<T>>;

template <class T>
jlong to_handle(T const* held) {
    return static_cast<jlong>(reinterpret_cast<std::intptr_t>(held));
}

template <class T>
Held<T>* from_handle(jlong handle) {
    return reinterpret_cast<Held<T>*>(static_cast<std::intptr_t>(handle));
}

/// The object behind a handle; null for 0 and for a shared handle that holds nothing.
template <class T>
T* object_of(jlong handle) {
    auto* const held = from_handle<T>(handle);
    if constexpr (crosses_by_value<T>) {
        return held;
    } else {
        return held ? held->get() : nullptr;
    }
}

/// A new shared handle, even to nothing. The holder is one allocation, which yields 0 when it fails.
template <class T>
jlong hold(std::shared_ptr<T>&& shared) {
    return to_handle(new (std::nothrow) std::shared_ptr<T>(std::move(shared)));
}

/// A new shared handle for the result of an operation: 0 when it is empty.
template <class T>
jlong hold_if_any(std::shared_ptr<T>&& shared) {
    return shared ? hold(std::move(shared)) : 0;
}

/// Takes ownership of a new object and returns its first handle.
template <class T>
jlong adopt(T* object) {
    if constexpr (crosses_by_value<T>) {
        return to_handle(object);
    } else {
        return hold_if_any(std::shared_ptr<T>(object));
    }
}

}  // namespace pedflux::jni
