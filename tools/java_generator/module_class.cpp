#include "tools/java_generator/module_class.h"

#include "tools/java_generator/text.h"

#include <algorithm>
#include <stdexcept>

namespace pedflux::java {

namespace {

using manifest::Kind;
using manifest::Role;

bool is_handle(manifest::Type const& type) { return type.kind == Kind::object && !type.list; }

std::string parameter(manifest::Type const& type, std::string const& name) {
    if (is_handle(type)) return fill("long $1, $2 $1Proxy", {name, type.name});
    return manifest::native_spelling(type) + " " + name;
}

std::string native_method(Method const& method) {
    auto const& exported = *method.exported;
    std::vector<std::string> parameters;
    if (exported.has_object()) parameters.push_back(fill("long handle, $1 proxy", {exported.class_name}));
    if (exported.role == Role::destructor || exported.role == Role::upcast) parameters.emplace_back("long handle");
    for (std::size_t index = 0; index < exported.parameters.size(); ++index) {
        parameters.push_back(parameter(exported.parameters[index], method.parameter_name(index)));
    }
    std::string const result = is_handle(exported.result) ? "long" : manifest::native_spelling(exported.result);
    return fill("    public static native $1 $2($3);\n", {result, exported.name, joined(parameters, ", ")});
}

bool has_destructor(Class const& one) {
    return std::any_of(one.methods.begin(), one.methods.end(),
                       [](Method const& method) { return method.exported->role == Role::destructor; });
}

/// A handle that Java is given must be releasable.
void require_destructors(Surface const& surface) {
    for (auto const& [name, one] : surface.classes) {
        for (auto const& method : one.methods) {
            auto const& result = method.exported->result;
            if (result.kind != Kind::object || has_destructor(surface.classes.at(result.name))) continue;
            throw std::runtime_error(fill("$1 returns a $2, but delete_$2 is not exported: the tables need CLASS($2)",
                                          {method.exported->name, result.name}));
        }
    }
}

}  // namespace

std::string module_class(std::vector<manifest::Export> const& exports, Surface const& surface) {
    std::string methods;
    for (auto const& exported : exports) {
        methods += native_method({&exported, surface.headers.find(exported)});
    }
    return fill(R"(package com.kelvar.pedflux;

/**
 * The native methods. The proxies call them; a program that calls them itself passes handles and the proxies that keep
 * them alive, and answers for what it passes: no handle is checked. docs/java.md tells who owns what.
 */
public final class pedfluxJNI {
    static {
        NativeLoader.load();
    }

    private pedfluxJNI() {}

$1}
)",
                {methods});
}

std::string release_row(std::string const& class_name) {
    std::string row;
    for (std::size_t index = 0; index < class_name.size(); ++index) {
        bool const upper = class_name[index] >= 'A' && class_name[index] <= 'Z';
        bool const after_lower = index > 0 && class_name[index - 1] >= 'a' && class_name[index - 1] <= 'z';
        if (upper && after_lower) row += '_';
        bool const lower = class_name[index] >= 'a' && class_name[index] <= 'z';
        row += lower ? static_cast<char>(class_name[index] - 'a' + 'A') : class_name[index];
    }
    return row;
}

std::string release_table(Surface const& surface) {
    require_destructors(surface);
    std::string rows;
    std::string cases;
    int count = 0;
    for (auto const& [name, one] : surface.classes) {
        rows += fill("    static final int $1 = $2;\n", {release_row(name), std::to_string(count++)});
        if (has_destructor(one)) {
            cases += fill("            case $1 -> pedfluxJNI.delete_$2(handle);\n", {release_row(name), name});
        }
    }
    return fill(R"(package com.kelvar.pedflux;

/** The classes that own handles, and how each releases them. */
final class ReleaseTable {
    static final int TYPES = $1;
$2
    private ReleaseTable() {}

    static void release(int type, long handle) {
        switch (type) {
$3            default -> throw new IllegalArgumentException("no handle is of type " + type);
        }
    }
}
)",
                {std::to_string(count), rows, cases});
}

}  // namespace pedflux::java
