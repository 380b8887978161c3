#include "tools/java_generator/surface.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace pedflux::java {

namespace {

using manifest::Kind;
using manifest::Role;

std::string const no_comment;

/// Words that a Java parameter cannot have as its name.
constexpr std::array reserved = {
    "abstract",  "assert",   "boolean", "break", "byte",   "case",         "catch",   "char",       "class",
    "const",     "continue", "default", "do",    "double", "else",         "enum",    "extends",    "final",
    "finally",   "float",    "for",     "goto",  "if",     "implements",   "import",  "instanceof", "int",
    "interface", "long",     "native",  "new",   "null",   "package",      "private", "protected",  "public",
    "return",    "short",    "static",  "super", "switch", "synchronized", "this",    "throw",      "throws",
    "transient", "true",     "false",   "try",   "void",   "volatile",     "while"};

/// "first_floor" becomes "firstFloor".
std::string java_parameter(std::string_view declared) {
    std::string name;
    bool upper = false;
    for (char const character : declared) {
        if (character == '_') {
            upper = !name.empty();
        } else {
            name += upper ? static_cast<char>(character - ('a' <= character && character <= 'z' ? 'a' - 'A' : 0))
                          : character;
            upper = false;
        }
    }
    return std::find(reserved.begin(), reserved.end(), name) == reserved.end() ? name : name + "_";
}

void note_enumeration(manifest::Type const& type, Surface& surface) {
    if (type.kind != Kind::enumeration) return;
    auto const declared = surface.headers.enumerations.find(type.name);
    surface.enumerations[type.name] = declared == surface.headers.enumerations.end() ? Enumeration() : declared->second;
}

}  // namespace

std::string const& Method::comment() const { return declared ? declared->comment : no_comment; }

std::string Method::parameter_name(std::size_t index) const {
    std::string name = declared ? java_parameter(declared->parameters[index].name) : "";
    if (!name.empty()) return name;
    return exported->parameters.size() == 1 ? "argument" : "argument" + std::to_string(index + 1);
}

std::string const& Class::comment() const { return declared ? declared->comment : no_comment; }

Method const* Class::find(std::string const& method, std::size_t parameters) const {
    auto const found = std::find_if(methods.begin(), methods.end(), [&](Method const& one) {
        return one.exported->has_object() && one.exported->method_name() == method &&
               one.exported->parameters.size() == parameters;
    });
    return found == methods.end() ? nullptr : &*found;
}

Class const& Surface::root(Class const& of) const { return of.base.empty() ? of : root(classes.at(of.base)); }

Surface join(std::vector<manifest::Export> const& exports, Headers headers) {
    Surface surface{.headers = std::move(headers), .classes = {}, .enumerations = {}};
    for (auto const& exported : exports) {
        Class& owner = surface.classes[exported.class_name];
        owner.name = exported.class_name;
        owner.by_value = exported.by_value;
        if (exported.role == Role::upcast) owner.base = exported.result.name;
        owner.methods.push_back({&exported, surface.headers.find(exported)});
        note_enumeration(exported.result, surface);
        for (auto const& parameter : exported.parameters) {
            note_enumeration(parameter, surface);
            if (parameter.kind == Kind::object && parameter.list) surface.classes[parameter.name].in_lists = true;
        }
        // A class may be used before any of its own operations are exported.
        for (auto const& parameter : exported.parameters) {
            if (parameter.kind == Kind::object) surface.classes[parameter.name].name = parameter.name;
        }
        if (exported.result.kind == Kind::object) surface.classes[exported.result.name].name = exported.result.name;
    }
    for (auto& [name, one] : surface.classes) {
        if (!one.base.empty()) surface.classes[one.base].has_derived = true;
        auto const declared = surface.headers.classes.find(name);
        if (declared != surface.headers.classes.end()) one.declared = &declared->second;
    }
    return surface;
}

}  // namespace pedflux::java
