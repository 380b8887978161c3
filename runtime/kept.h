#pragma once

/// The leak checker knows the buffers by the name of the function that makes them.
#ifdef __SANITIZE_ADDRESS__
#define PEDFLUX_INLINED [[gnu::noinline]]
#else
#define PEDFLUX_INLINED [[gnu::always_inline]] inline
#endif

namespace pedflux::jni {

/// A new buffer that is never released: the strings and primitive vectors built from Java arguments.
///
/// The SDK takes them by reference and does not say how long it keeps the reference; programs depend on operations that
/// hold on to it. Nothing tells the bridge when it is let go, so the buffer lives as long as the process. The price is
/// the bytes that the program passed in. Vectors of objects are not kept: they hold references of their own, and an
/// identifier or an object must not outlive its owner unseen. Inlined, since the call would show beside so little work.
template <class T, class... Arguments>
PEDFLUX_INLINED T const& keep(Arguments... arguments) {
    return *new T(arguments...);
}

}  // namespace pedflux::jni

#undef PEDFLUX_INLINED
