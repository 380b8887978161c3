#pragma once

#include "tools/manifest/manifest.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

/// What only the SDK's headers say: names of parameters, comments, enumerations and which operations are virtual.
namespace pedflux::java {

struct Parameter {
    std::string name;  ///< empty when the header gives none
    manifest::Type type;
};

/// A constructor, which is named like its class, or an operation.
struct Operation {
    std::string name;
    std::vector<Parameter> parameters;
    bool is_virtual = false;
    std::string comment;  ///< without comment marks; empty when there is none
};

struct ClassDeclaration {
    std::string comment;
    std::vector<std::string> bases;
    std::vector<Operation> operations;
    std::map<std::string, std::string> constants;  ///< the comment of each static member
};

struct Enumerator {
    std::string name;
    long long value = 0;
    std::string comment;
};

struct Enumeration {
    std::string comment;
    std::vector<Enumerator> constants;
};

struct Headers {
    std::map<std::string, ClassDeclaration> classes;
    std::map<std::string, Enumeration> enumerations;

    /// The declaration of an export's operation; null when the headers have none, as for what the bridge brings along.
    Operation const* find(manifest::Export const& one) const;

    /// The class that introduces an export's operation: for a virtual one, the topmost base that declares it.
    std::string introducing_class(manifest::Export const& one) const;
};

/// Reads every header in `<include>/pedflux`. Throws std::runtime_error with the compiler's messages when one does not
/// compile.
Headers read_headers(std::filesystem::path const& include);

}  // namespace pedflux::java
