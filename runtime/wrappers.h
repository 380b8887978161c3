#pragma once

#include "runtime/call.h"

#include <new>
#include <type_traits>
#include <utility>

/// The kinds of export, each a wrapper in the sense of call.h.
namespace pedflux::jni {

namespace detail {

/// What a pointer to a function or to a member function says of itself.
template <class Pointer>
struct Signature;
template <class R, class... P>
struct Signature<R (*)(P...)> {
    using Owner = void;
    using Returned = R;
    using Parameters = Types<P...>;
};
template <class R, class C, class... P>
struct Signature<R (C::*)(P...)> {
    using Owner = C;
    using Returned = R;
    using Parameters = Types<P...>;
};
template <class R, class C, class... P>
struct Signature<R (C::*)(P...) const> : Signature<R (C::*)(P...)> {};

template <auto function>
struct CallFunction {
    template <class... Given>
    decltype(auto) operator()(Given&&... given) const {
        return function(std::forward<Given>(given)...);
    }
};

template <class Class, auto member>
struct CallMember {
    template <class... Given>
    decltype(auto) operator()(Class* object, Given&&... given) const {
        return (object->*member)(std::forward<Given>(given)...);
    }
};

template <class Class>
struct Construct {
    template <class... Given>
    Class* operator()(Given&&... given) const {
        return new (std::nothrow) Class(std::forward<Given>(given)...);
    }
};

template <class Class, auto operation, template <class> class Declared, class Owner, class R, class Parameters>
struct MethodOf;
template <class Class, auto operation, template <class> class Declared, class R, class... P>
struct MethodOf<Class, operation, Declared, void, R, Types<P...>> {
    using type = Wrapper<CallFunction<operation>, R, Declared<P>...>;
};
template <class Class, auto operation, template <class> class Declared, class Owner, class R, class... P>
struct MethodOf<Class, operation, Declared, Owner, R, Types<P...>> {
    static_assert(std::is_base_of_v<Owner, Class>, "the operation belongs to another class");
    using type = Wrapper<CallMember<Class, operation>, R, Self<Class>, Declared<P>...>;
};

}  // namespace detail

/// A parameter crosses as its type says; the other choice is DeclaredConst.
template <class P>
using AsTyped = P;

/// Picks one of several operations of the same name by its parameters: `overload<int>(&Class::Operation)`.
template <class... P>
struct Overload {
    template <class R>
    constexpr auto operator()(R (*function)(P...)) const {
        return function;
    }
    template <class R, class C>
    constexpr auto operator()(R (C::*member)(P...)) const {
        return member;
    }
    template <class R, class C>
    constexpr auto operator()(R (C::*member)(P...) const) const {
        return member;
    }
};
template <class... P>
inline constexpr Overload<P...> overload;

/// An operation of a class: a method, whose object is a Class also where a base declares it, or a static one.
template <class Class, auto operation, template <class> class Declared = AsTyped>
struct Method : detail::MethodOf<Class, operation, Declared, typename detail::Signature<decltype(operation)>::Owner,
                                 typename detail::Signature<decltype(operation)>::Returned,
                                 typename detail::Signature<decltype(operation)>::Parameters>::type {};

/// A free function of the bridge that serves as a method; its first parameter is the object, `Class const*`.
template <class Class, auto function, class... P>
struct Extension : Wrapper<detail::CallFunction<function>, typename detail::Signature<decltype(function)>::Returned,
                           Self<Class>, P...> {};

template <class Class, class... P>
struct Constructor : Wrapper<detail::Construct<Class>, Class*, P...> {};

/// Releases what the handle is the address of; 0 is ignored. Takes no proxy.
template <class Class>
struct Destructor {
    using Signature = void(JNIEnv*, jclass, jlong);
    static void call(JNIEnv*, jlong handle) { delete from_handle<Class>(handle); }
};

/// A new handle to the same object as an object of its direct base; 0 for 0. Takes no proxy.
template <class Class, class Base>
struct Upcast {
    static_assert(std::is_base_of_v<Base, Class>);
    using Signature = jlong(JNIEnv*, jclass, jlong);
    static jlong call(JNIEnv*, jlong handle) { return handle ? hold<Base>(*from_handle<Class>(handle)) : 0; }
};

/// The address of a static object of the SDK: the same at every call, never owned by Java.
template <class Class, Class const* constant>
struct Constant {
    using Signature = jlong(JNIEnv*, jclass);
    static jlong call(JNIEnv*) { return to_handle(constant); }
};

}  // namespace pedflux::jni
