#pragma once

#include "runtime/names.h"
#include "runtime/wrappers.h"
#include "tools/manifest/manifest.h"

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

/// The other meaning of PEDFLUX_EXPORT: the export is described instead of made. Everything is read from the wrapper's
/// type, so the description cannot differ from the native method.
namespace pedflux::manifest {

template <class T>
struct Described {
    static Type type() {
        if constexpr (std::is_enum_v<T>) {
            return {.kind = Kind::enumeration, .name = std::string(jni::class_name<T>())};
        } else {
            return {.kind = Kind::object, .name = std::string(jni::class_name<T>())};
        }
    }
};

template <Kind kind>
struct DescribedPlain {
    static Type type() { return {.kind = kind, .name = {}}; }
};
template <>
struct Described<void> : DescribedPlain<Kind::nothing> {};
template <>
struct Described<bool> : DescribedPlain<Kind::boolean> {};
template <>
struct Described<int> : DescribedPlain<Kind::integer> {};
template <>
struct Described<float> : DescribedPlain<Kind::single_float> {};
template <>
struct Described<double> : DescribedPlain<Kind::double_float> {};
template <>
struct Described<char> : DescribedPlain<Kind::character> {};
template <>
struct Described<unsigned int> : DescribedPlain<Kind::natural> {};
template <>
struct Described<std::string> : DescribedPlain<Kind::text> {};

template <class T>
struct Described<std::shared_ptr<T>> {
    static Type type() {
        Type type = Described<T>::type();
        type.shared = true;
        return type;
    }
};
template <class T>
struct Described<std::vector<T>> {
    static Type type() {
        Type type = Described<T>::type();
        type.list = true;
        return type;
    }
};

template <class T, Passing passing>
struct DescribedPassing {
    static Type type() {
        Type type = Described<T>::type();
        type.passing = passing;
        return type;
    }
};
template <class T>
struct Described<T const&> : DescribedPassing<T, Passing::const_reference> {};
template <class T>
struct Described<T&> : DescribedPassing<T, Passing::reference> {};
template <class T>
struct Described<jni::DeclaredConst<T>> : DescribedPassing<T, Passing::const_value> {};

/// The object that an operation makes with `new`.
template <class T>
struct Described<T*> : Described<T> {};

/// The parameters that follow the object.
template <class... P>
std::vector<Type> described_parameters(jni::Types<P...>) {
    return {Described<P>::type()...};
}
template <class T, class... P>
std::vector<Type> described_parameters(jni::Types<jni::Self<T>, P...>) {
    return {Described<P>::type()...};
}

template <class Member>
inline constexpr bool is_const_member = false;
template <class R, class C, class... P>
inline constexpr bool is_const_member<R (C::*)(P...) const> = true;

template <class Class>
Export described_class(Role role) {
    Export described;
    described.role = role;
    described.class_name = jni::class_name<Class>();
    described.owner = described.class_name;
    described.by_value = jni::crosses_by_value<Class>;
    return described;
}

template <class Class, class Call>
Export described_call(Role role) {
    Export described = described_class<Class>(role);
    described.parameters = described_parameters(typename Call::Parameters());
    described.result = Described<typename Call::Returned>::type();
    return described;
}

/// What the wrapper's template says, the kinds of export being those of runtime/wrappers.h.
template <class Wrapper>
struct DescribedExport;

template <class Class, auto operation, template <class> class Declared>
struct DescribedExport<jni::Method<Class, operation, Declared>> {
    static Export get() {
        using Owner = typename jni::detail::Signature<decltype(operation)>::Owner;
        constexpr bool is_static = std::is_void_v<Owner>;
        Export described = described_call<Class, jni::Method<Class, operation, Declared>>(
            is_static ? Role::static_method : Role::method);
        if constexpr (!is_static) described.owner = jni::class_name<Owner>();
        described.constant = is_const_member<decltype(operation)>;
        return described;
    }
};
template <class Class, auto function, class... P>
struct DescribedExport<jni::Extension<Class, function, P...>> {
    static Export get() { return described_call<Class, jni::Extension<Class, function, P...>>(Role::extension); }
};
template <class Class, class... P>
struct DescribedExport<jni::Constructor<Class, P...>> {
    static Export get() { return described_call<Class, jni::Constructor<Class, P...>>(Role::constructor); }
};
template <class Class>
struct DescribedExport<jni::Destructor<Class>> {
    static Export get() { return described_class<Class>(Role::destructor); }
};
template <class Class, class Base>
struct DescribedExport<jni::Upcast<Class, Base>> {
    static Export get() {
        Export described = described_class<Class>(Role::upcast);
        described.result = Described<Base>::type();
        return described;
    }
};
template <class Class, Class const* constant>
struct DescribedExport<jni::Constant<Class, constant>> {
    static Export get() {
        Export described = described_class<Class>(Role::constant);
        described.result = Described<Class>::type();
        return described;
    }
};

/// Adds an export to the manifest.
struct Registration {
    Registration(char const* symbol, char const* operation, Export described);
};

}  // namespace pedflux::manifest

#define PEDFLUX_EXPORT(short_name, operation, ...)                        \
    static pedflux::manifest::Registration const registered_##short_name( \
        #short_name, operation, pedflux::manifest::DescribedExport<__VA_ARGS__>::get());
