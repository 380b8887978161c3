#pragma once

#include "tools/java_generator/headers.h"
#include "tools/manifest/manifest.h"

#include <map>
#include <string>
#include <vector>

/// The manifest and the headers, joined: what the generated files are written from.
namespace pedflux::java {

/// An export with the declaration of its operation.
struct Method {
    manifest::Export const* exported = nullptr;
    Operation const* declared = nullptr;  ///< null when the headers do not declare it

    std::string const& comment() const;
    /// The name of a parameter in Java, also where the header gives none.
    std::string parameter_name(std::size_t index) const;
};

struct Class {
    std::string name;
    std::string base;  ///< empty for a class without base
    bool by_value = false;
    bool has_derived = false;
    bool in_lists = false;  ///< whether a list of its objects is an argument
    ClassDeclaration const* declared = nullptr;
    std::vector<Method> methods;  ///< every export of the class

    std::string const& comment() const;
    /// The first method of that Java name and number of parameters; null if there is none.
    Method const* find(std::string const& method, std::size_t parameters) const;
};

struct Surface {
    Headers headers;
    std::map<std::string, Class> classes;
    /// The enumerations that the exports use.
    std::map<std::string, Enumeration> enumerations;

    /// The class without base from which a class descends.
    Class const& root(Class const& of) const;
};

Surface join(std::vector<manifest::Export> const& exports, Headers headers);

}  // namespace pedflux::java
