#pragma once

#include <string>
#include <vector>

/// What the tables of exports say of themselves: every native method with the SDK operation behind it.
namespace pedflux::manifest {

/// What a type of the SDK's operations is made of.
enum class Kind {
    nothing,
    boolean,
    integer,
    single_float,
    double_float,
    character,
    natural,
    enumeration,
    text,
    object
};

/// How a parameter is declared.
enum class Passing { value, const_value, reference, const_reference };

/// The type of a parameter or a result.
struct Type {
    Kind kind = Kind::nothing;
    std::string name;     ///< of the class or enumeration, without namespace
    bool shared = false;  ///< a std::shared_ptr to the class
    bool list = false;    ///< a std::vector
    Passing passing = Passing::value;

    bool operator==(Type const&) const = default;
};

enum class Role { constructor, destructor, upcast, constant, method, static_method, extension };

/// One native method.
struct Export {
    std::string name;  ///< the native method's: "Vec3d_getX"
    Role role = Role::method;
    std::string class_name;        ///< the class whose method it is
    std::string owner;             ///< the class that declares the operation; it may be a base
    std::string operation;         ///< the SDK's name: "GetX"
    bool constant = false;         ///< a const member function
    bool by_value = false;         ///< whether the class crosses by value
    std::vector<Type> parameters;  ///< without the object that the operation is called on
    Type result;

    bool has_object() const { return role == Role::method || role == Role::extension; }
    /// The Java method's name: "getX", without class and overload number.
    std::string method_name() const;
};

/// All exports, in the order of the tables.
std::vector<Export> const& exports();

/// "Vec3d_getX" for "Vec3d_1getX".
std::string unmangled(std::string const& symbol);

/// The type as it stands in a C++ declaration: "std::vector<pedflux::Tri3d> const &".
std::string cpp_spelling(Type const& type);

/// The SDK operation as C++ declares it, or the word for an operation that the bridge brings along. Whether it is
/// virtual is not in its type.
std::string operation_spelling(Export const& one, bool is_virtual);

/// The type as the native method has it: "byte[]", "Vec3d", "int" for an enumeration.
std::string native_spelling(Type const& type);

/// The native method's JNI descriptor: "(JLcom/kelvar/pedflux/Vec3d;)D".
std::string descriptor(Export const& one);

}  // namespace pedflux::manifest
