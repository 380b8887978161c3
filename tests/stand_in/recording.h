#pragma once

#include "bindings/value_classes.h"
#include "runtime/handles.h"

#include <pedflux/exception.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// What the stand-in for the SDK records of each operation that is reached, and what it returns.
namespace pedflux::stand_in {

/// How an object of a class is made: the class derived from it whose default constructor makes it of what there is.
template <class T>
struct Making;

/// A number that no call before returned.
int next_number();

/// Throws Exception if the test asked for a failure of the operation.
void fail_if_asked(char const* operation);

/// One reached operation: its name, the object's address, the arguments and, after "->", the result.
void begin(char const* operation, void const* object);
void add(std::string text);

/// Whether an object of a class is told from others by its bytes.
template <class T>
inline constexpr bool is_marked = std::is_class_v<T>&& std::is_trivially_copyable_v<T>;

/// Makes an object differ from all before.
template <class T>
void mark(T& object) {
    if constexpr (is_marked<T>) {
        int const number = next_number();
        for (std::size_t i = 0; i < sizeof(T); i += sizeof number)
            std::memcpy(reinterpret_cast<char*>(&object) + i, &number, std::min(sizeof number, sizeof(T) - i));
    }
}
template <class T>
T* made_value() {
    T* const object = new T(typename Making<T>::type());
    mark(*object);
    return object;
}
template <class T>
std::shared_ptr<T> made_shared() {
    std::shared_ptr<T> object = std::make_shared<typename Making<T>::type>();
    mark(*object);
    return object;
}

/// An argument for a constructor that nobody looks at.
template <class T>
T some() {
    if constexpr (std::is_default_constructible_v<T>) {
        return T{};
    } else {
        return typename Making<T>::type();
    }
}

std::string text_of_number(double number);
std::string text_of_address(void const* address);
std::string text_of_bytes(void const* bytes, std::size_t size);

template <class T>
std::string text_of(T const& value);
inline std::string text_of(std::string const& value) { return value; }
template <class T>
std::string text_of(std::shared_ptr<T> const& value) {
    return text_of_address(value.get());
}
template <class T>
std::string text_of(std::vector<T> const& values) {
    std::string text = "[";
    for (T const& value : values) text.append(text.size() == 1 ? "" : ", ").append(text_of(value));
    return text + "]";
}
template <class T>
std::string text_of(T const& value) {
    if constexpr (std::is_same_v<T, bool>) {
        return value ? "true" : "false";
    } else if constexpr (std::is_enum_v<T>) {
        return std::to_string(static_cast<int>(value));
    } else if constexpr (std::is_integral_v<T>) {
        return std::to_string(static_cast<std::int64_t>(value));
    } else if constexpr (std::is_arithmetic_v<T>) {
        return text_of_number(value);
    } else if constexpr (is_marked<T>) {
        return text_of_bytes(&value, sizeof value);
    } else {
        return "an object";
    }
}

template <class T>
struct Returned {
    static T make() {
        if constexpr (std::is_same_v<T, bool>) {
            return next_number() % 2 == 0;
        } else if constexpr (std::is_enum_v<T> || std::is_same_v<T, char>) {
            return static_cast<T>(next_number() % 100);
        } else if constexpr (std::is_arithmetic_v<T>) {
            return static_cast<T>(next_number());
        } else {
            std::unique_ptr<T> const object(made_value<T>());
            return *object;
        }
    }
};
template <>
struct Returned<std::string> {
    static std::string make() { return "text " + std::to_string(next_number()); }
};
template <class T>
struct Returned<std::shared_ptr<T>> {
    static std::shared_ptr<T> make() { return made_shared<T>(); }
};
template <class T>
struct Returned<std::vector<T>> {
    static std::vector<T> make() { return {Returned<T>::make(), Returned<T>::make()}; }
};

/// The body of every operation.
template <class R, class... A>
R reached(char const* operation, void const* object, A const&... arguments) {
    fail_if_asked(operation);
    if constexpr (std::is_void_v<R>) {
        begin(operation, object);
        (add(text_of(arguments)), ...);
    } else {
        // What is made for the result may reach operations itself.
        using Value = std::remove_cvref_t<R>;
        Value result = Returned<Value>::make();
        begin(operation, object);
        (add(text_of(arguments)), ...);
        add("->");
        add(text_of(result));
        return result;
    }
}

}  // namespace pedflux::stand_in
