#pragma once

#include <jni.h>

/// PEDFLUX_EXPORT(short_name, operation, wrapper): the native method `short_name` of com.kelvar.pedflux.pedfluxJNI.
///
/// `short_name` is written as the Java virtual machine looks it up, every "_" as "_1"; the signature is the wrapper's,
/// hence the SDK's. `operation` is the SDK's name for it, which only the manifest wants.
///
/// A C symbol cannot be a template, so its parameter list cannot be deduced; but a friend function that is defined
/// inside a class template can take the template's pack, and be a C symbol when it was declared as one before. Hence
/// four steps: declare the symbol through its function type; define the friend in a class template over that type;
/// instantiate the template; name the symbol, since a friend is only instantiated where it is used. `used` has it
/// emitted although nothing here calls it. The symbol is weak, as every inline function's.
#define PEDFLUX_EXPORT(short_name, operation, ...)                                                \
    extern "C" JNIEXPORT __attribute__((used)) __VA_ARGS__::Signature PEDFLUX_SYMBOL(short_name); \
    template <class Signature>                                                                    \
    struct Export_##short_name;                                                                   \
    template <class R, class... P>                                                                \
    struct Export_##short_name<R(JNIEnv*, jclass, P...)> {                                        \
        friend R PEDFLUX_SYMBOL(short_name)(JNIEnv * env, jclass, P... given) {                   \
            return __VA_ARGS__::call(env, given...);                                              \
        }                                                                                         \
    };                                                                                            \
    template struct Export_##short_name<__VA_ARGS__::Signature>;                                  \
    static_assert(pedflux::jni::exported<&PEDFLUX_SYMBOL(short_name)>);

#define PEDFLUX_SYMBOL(short_name) Java_com_kelvar_pedflux_pedfluxJNI_##short_name

namespace pedflux::jni {

/// Names a symbol where nothing is evaluated.
template <auto symbol>
inline constexpr bool exported = true;

}  // namespace pedflux::jni
