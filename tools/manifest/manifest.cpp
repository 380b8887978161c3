#include "tools/manifest/manifest.h"

#include "tools/manifest/register.h"

#include <string_view>
#include <utility>

namespace pedflux::manifest {

namespace {

std::vector<Export>& registered() {
    static std::vector<Export> all;
    return all;
}

char const* plain_cpp(Kind kind) {
    switch (kind) {
        case Kind::nothing:
            return "void";
        case Kind::boolean:
            return "bool";
        case Kind::integer:
            return "int";
        case Kind::single_float:
            return "float";
        case Kind::double_float:
            return "double";
        case Kind::character:
            return "char";
        case Kind::natural:
            return "unsigned int";
        case Kind::text:
            return "std::string";
        case Kind::enumeration:
        case Kind::object:
            break;
    }
    return "pedflux::";
}

std::string cpp_spelling(std::vector<Type> const& parameters) {
    std::string spelled;
    for (Type const& parameter : parameters) {
        spelled += (spelled.empty() ? "" : ", ") + manifest::cpp_spelling(parameter);
    }
    return "(" + spelled + ")";
}

std::string descriptor(Type const& type) {
    switch (type.kind) {
        case Kind::nothing:
            return "V";
        case Kind::boolean:
            return "Z";
        case Kind::integer:
        case Kind::enumeration:
            return type.list ? "[I" : "I";
        case Kind::single_float:
            return "F";
        case Kind::double_float:
            return type.list ? "[D" : "D";
        case Kind::character:
            return "C";
        case Kind::natural:
            return "J";
        case Kind::text:
            return type.list ? "[Ljava/lang/String;" : "[B";
        case Kind::object:
            break;
    }
    std::string const proxy = "Lcom/kelvar/pedflux/" + type.name + ";";
    return type.list ? "[" + proxy : "J" + proxy;
}

}  // namespace

Registration::Registration(char const* symbol, char const* operation, Export described) {
    described.name = unmangled(symbol);
    described.operation = operation;
    registered().push_back(std::move(described));
}

std::vector<Export> const& exports() { return registered(); }

std::string unmangled(std::string const& symbol) {
    std::string name;
    for (std::size_t index = 0; index < symbol.size(); ++index) {
        name += symbol[index];
        if (symbol[index] == '_') ++index;  // the 1 of "_1"
    }
    return name;
}

std::string Export::method_name() const {
    if (role == Role::constructor || role == Role::destructor) return class_name;
    std::string const method = name.substr(class_name.size() + 1);
    return method.substr(0, method.find("__SWIG_"));
}

std::string cpp_spelling(Type const& type) {
    std::string spelled = plain_cpp(type.kind) + type.name;
    if (type.shared) spelled = "std::shared_ptr<" + spelled + ">";
    if (type.list) spelled = "std::vector<" + spelled + ">";
    switch (type.passing) {
        case Passing::value:
            break;
        case Passing::const_value:
            spelled += " const";
            break;
        case Passing::reference:
            spelled += " &";
            break;
        case Passing::const_reference:
            spelled += " const &";
            break;
    }
    return spelled;
}

std::string operation_spelling(Export const& one, bool is_virtual) {
    std::string const owner = "pedflux::" + one.owner + "::";
    switch (one.role) {
        case Role::destructor:
            return "delete";
        case Role::upcast:
            return "upcast";
        case Role::constant:
            return "constant " + one.operation;
        case Role::extension:
            return "arithmetic";
        case Role::constructor:
            return owner + one.owner + cpp_spelling(one.parameters);
        case Role::method:
        case Role::static_method:
            break;
    }
    char const* const before = one.role == Role::static_method ? "static " : is_virtual ? "virtual " : "";
    return before + cpp_spelling(one.result) + " " + owner + one.operation + cpp_spelling(one.parameters) +
           (one.constant ? " const" : "");
}

std::string native_spelling(Type const& type) {
    std::string spelled;
    switch (type.kind) {
        case Kind::nothing:
            spelled = "void";
            break;
        case Kind::boolean:
            spelled = "boolean";
            break;
        case Kind::integer:
        case Kind::enumeration:
            spelled = "int";
            break;
        case Kind::single_float:
            spelled = "float";
            break;
        case Kind::double_float:
            spelled = "double";
            break;
        case Kind::character:
            spelled = "char";
            break;
        case Kind::natural:
            spelled = "long";
            break;
        case Kind::text:
            spelled = type.list ? "String" : "byte[]";
            break;
        case Kind::object:
            spelled = type.name;
            break;
    }
    return type.list ? spelled + "[]" : spelled;
}

std::string descriptor(Export const& one) {
    std::string const object = "JLcom/kelvar/pedflux/" + one.class_name + ";";
    std::string parameters;
    if (one.has_object()) parameters += object;
    if (one.role == Role::destructor || one.role == Role::upcast) parameters += "J";
    for (Type const& parameter : one.parameters) parameters += descriptor(parameter);
    bool const handle = one.result.kind == Kind::object && !one.result.list;
    return "(" + parameters + ")" + (handle ? "J" : descriptor(one.result));
}

}  // namespace pedflux::manifest
