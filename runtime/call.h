#pragma once

#include "runtime/arguments.h"
#include "runtime/errors.h"
#include "runtime/results.h"

#include <cstddef>
#include <tuple>
#include <utility>

#include <jni.h>

/// The one pattern that every export follows: receive the arguments strictly in their order, the first failing check
/// ending the call; call the SDK inside the guard; convert the result.
///
/// An export's wrapper is a type with
///     using Signature = R(JNIEnv*, jclass, …);    the native function's type
///     static R call(JNIEnv*, …);                  its body, without the module class, which nothing uses
/// and, for those who describe the surface, `Returned` and `Parameters` as the SDK declares them.
namespace pedflux::jni {

namespace detail {

template <class... Packs>
struct Joined;
template <class... First>
struct Joined<Types<First...>> {
    using type = Types<First...>;
};
template <class... First, class... Second, class... Rest>
struct Joined<Types<First...>, Types<Second...>, Rest...> : Joined<Types<First..., Second...>, Rest...> {};

template <class R, class Pack>
struct FunctionOf;
template <class R, class... P>
struct FunctionOf<R, Types<P...>> {
    using type = R(P...);
};

template <class... T>
constexpr std::size_t size_of(Types<T...>) {
    return sizeof...(T);
}

/// The arguments of one call.
template <class... P>
class Arguments {
  public:
    template <class... Jni>
    bool receive(JNIEnv* env, Jni... given) {
        return receive_each(env, std::tuple<Jni...>(given...), std::index_sequence_for<P...>());
    }

    template <class Operation>
    decltype(auto) pass_to(Operation operation) {
        return std::apply([&](auto&... argument) -> decltype(auto) { return operation(argument.pass()...); },
                          arguments_);
    }

  private:
    template <class Given, std::size_t... index>
    bool receive_each([[maybe_unused]] JNIEnv* env, [[maybe_unused]] Given const& given,
                      std::index_sequence<index...>) {
        return (receive_one<index>(env, given) && ...);
    }

    template <std::size_t index, class Given>
    bool receive_one(JNIEnv* env, Given const& given) {
        constexpr std::size_t first = [] {
            std::size_t const sizes[] = {size_of(typename Argument<P>::Jni())...};
            std::size_t sum = 0;
            for (std::size_t before = 0; before < index; ++before) sum += sizes[before];
            return sum;
        }();
        auto& argument = std::get<index>(arguments_);
        if constexpr (size_of(typename std::remove_cvref_t<decltype(argument)>::Jni()) == 2) {
            return argument.receive(env, std::get<first>(given), std::get<first + 1>(given));
        } else {
            return argument.receive(env, std::get<first>(given));
        }
    }

    std::tuple<Argument<P>...> arguments_;
};

}  // namespace detail

/// The wrapper of an operation: a function object that is given what the arguments P pass and returns R.
template <class Operation, class R, class... P>
struct Wrapper {
    using Returned = R;
    using Parameters = Types<P...>;
    using Jni = typename Result<R>::Jni;
    using Signature = typename detail::FunctionOf<
        Jni, typename detail::Joined<Types<JNIEnv*, jclass>, typename Argument<P>::Jni...>::type>::type;

    template <class... Given>
    [[gnu::always_inline]] static Jni call(JNIEnv* env, Given... given) {
        detail::Arguments<P...> arguments;
        if (!arguments.receive(env, given...)) return Jni();
        try {
            return Result<R>::from(env, [&]() -> R { return arguments.pass_to(Operation()); });
        } catch (pedflux::Exception const& exception) {
            throw_sdk_exception(env, exception);
            return Jni();
        }
    }
};

}  // namespace pedflux::jni
