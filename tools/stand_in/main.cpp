#include "tools/headers/cursor.h"
#include "tools/java_generator/text.h"
#include "tools/manifest/manifest.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

/// Writes a library that stands in for the SDK: every operation that the headers declare, with a body that records that
/// it was reached and with what, and returns something distinct.
namespace {

using namespace pedflux;
using headers::for_each_child;
using headers::owned;
using headers::spelling;
using java::fill;
using java::joined;

std::string type_spelling(CXType type) { return owned(clang_getTypeSpelling(type)); }

std::vector<CXCursor> parameters_of(CXCursor operation) {
    std::vector<CXCursor> parameters;
    int const count = clang_Cursor_getNumArguments(operation);
    for (int index = 0; index < count; ++index)
        parameters.push_back(clang_Cursor_getArgument(operation, static_cast<unsigned>(index)));
    return parameters;
}

/// "std::string const& a0, int a1" and "a0, a1".
std::string declared_parameters(std::vector<CXCursor> const& parameters) {
    std::vector<std::string> declared;
    for (std::size_t i = 0; i < parameters.size(); ++i)
        declared.push_back(type_spelling(clang_getCursorType(parameters[i])) + " a" + std::to_string(i));
    return joined(declared, ", ");
}
std::string passed_parameters(std::size_t count) {
    std::string passed;
    for (std::size_t i = 0; i < count; ++i) passed += ", a" + std::to_string(i);
    return passed;
}

/// The class that introduces a virtual operation.
CXCursor introducing(CXCursor operation) {
    CXCursor* overridden = nullptr;
    unsigned count = 0;
    clang_getOverriddenCursors(operation, &overridden, &count);
    CXCursor const introduced = count == 0 ? operation : introducing(overridden[0]);
    clang_disposeOverriddenCursors(overridden);
    return introduced;
}

/// The operation as the list of exports spells it.
std::string operation_spelling(CXCursor operation) {
    manifest::Export described;
    bool const constructs = clang_getCursorKind(operation) == CXCursor_Constructor;
    described.role = constructs                                 ? manifest::Role::constructor
                     : clang_CXXMethod_isStatic(operation) != 0 ? manifest::Role::static_method
                                                                : manifest::Role::method;
    described.owner = spelling(clang_getCursorSemanticParent(introducing(operation)));
    described.operation = spelling(operation);
    described.constant = clang_CXXMethod_isConst(operation) != 0;
    for (CXCursor const parameter : parameters_of(operation))
        described.parameters.push_back(headers::type_of(clang_getCursorType(parameter)));
    described.result = headers::type_of(clang_getCursorResultType(operation));
    return manifest::operation_spelling(described, false);
}

struct Class {
    std::string name;
    std::vector<CXCursor> members;
    std::string base;
};
using Classes = std::map<std::string, Class>;

/// A base that is not the SDK's needs nothing.
Class read_class(CXCursor cursor, Classes const& before) {
    Class read{.name = spelling(cursor), .members = {}, .base = {}};
    for_each_child(cursor, [&](CXCursor member) {
        read.members.push_back(member);
        if (clang_getCursorKind(member) != CXCursor_CXXBaseSpecifier) return;
        std::string const base = spelling(clang_getTypeDeclaration(clang_getCursorType(member)));
        if (before.contains(base)) read.base = base;
    });
    return read;
}

/// Whether a declaration has no body, is not deleted, not defaulted and not abstract.
bool is_only_declared(CXCursor member) {
    CXTranslationUnit const unit = clang_Cursor_getTranslationUnit(member);
    CXToken* tokens = nullptr;
    unsigned count = 0;
    clang_tokenize(unit, clang_getCursorExtent(member), &tokens, &count);
    bool declared = true;
    int depth = 0;
    std::string before;
    for (unsigned i = 0; i < count && declared; ++i) {
        std::string const token = owned(clang_getTokenSpelling(unit, tokens[i]));
        if (token == "(") ++depth;
        if (token == ")") --depth;
        declared = depth != 0 || (token != "{" && (token != "=" || before == "operator"));
        before = token;
    }
    clang_disposeTokens(unit, tokens, count);
    return declared;
}

bool copies_or_moves(CXCursor constructor) {
    return clang_CXXConstructor_isCopyConstructor(constructor) != 0 ||
           clang_CXXConstructor_isMoveConstructor(constructor) != 0;
}

/// "(some<int>(), some<GlobalId>())": arguments of a constructor, the one with the fewest; "()" when none is declared.
std::string construction(Classes const& classes, std::string const& name) {
    std::vector<CXCursor> fewest;
    bool found = false;
    for (CXCursor const member : classes.at(name).members) {
        if (clang_getCursorKind(member) != CXCursor_Constructor || copies_or_moves(member)) continue;
        auto const parameters = parameters_of(member);
        if (!found || parameters.size() < fewest.size()) fewest = parameters;
        found = true;
    }
    if (!found && !classes.at(name).base.empty()) return construction(classes, classes.at(name).base);
    std::vector<std::string> arguments;
    for (CXCursor const parameter : fewest) {
        arguments.push_back("stand_in::some<std::remove_cvref_t<" + type_spelling(clang_getCursorType(parameter)) +
                            ">>()");
    }
    return "(" + joined(arguments, ", ") + ")";
}

std::string exception_specification(CXCursor operation) {
    return clang_getCursorExceptionSpecificationType(operation) == CXCursor_ExceptionSpecificationKind_BasicNoexcept
               ? " noexcept"
               : "";
}

std::string constructor_body(Classes const& classes, Class const& of, CXCursor constructor) {
    auto const parameters = parameters_of(constructor);
    std::string const before = of.base.empty() ? "" : " : " + of.base + construction(classes, of.base);
    return fill("$1::$1($2)$6$3 { stand_in::reached<void>(\"$4\", nullptr$5); }\n",
                {of.name, declared_parameters(parameters), before, operation_spelling(constructor),
                 passed_parameters(parameters.size()), exception_specification(constructor)});
}

/// Whether a declaration says [[noreturn]], the only attribute of its kind in the headers.
bool never_returns(CXCursor method) {
    bool found = false;
    for_each_child(method,
                   [&](CXCursor child) { found = found || clang_getCursorKind(child) == CXCursor_UnexposedAttr; });
    return found;
}

std::string method_body(Class const& of, CXCursor method) {
    auto const parameters = parameters_of(method);
    std::string const result = type_spelling(clang_getCursorResultType(method));
    std::string const name = spelling(method);
    bool const is_static = clang_CXXMethod_isStatic(method) != 0;
    std::string const head =
        fill("auto $1::$2($3)$4 -> $5",
             {of.name, name, declared_parameters(parameters),
              (clang_CXXMethod_isConst(method) != 0 ? " const" : "") + exception_specification(method), result});
    if (name == "operator=") return head + " { return *this; }\n";
    if (never_returns(method)) return head + " { throw Exception(\"" + of.name + "::" + name + "\"); }\n";
    return head + fill(" { return stand_in::reached<$1>(\"$2\", $3$4); }\n",
                       {result, operation_spelling(method), is_static ? "nullptr" : "this",
                        passed_parameters(parameters.size())});
}

/// Overrides of what a class and its bases leave abstract, for the class that objects are made of.
std::string overrides(Classes const& classes, Class const& of) {
    std::set<std::string> seen;
    std::string source;
    for (Class const* one = &of;; one = &classes.at(one->base)) {
        for (CXCursor const member : one->members) {
            if (clang_CXXMethod_isVirtual(member) == 0) continue;
            bool const is_new = seen.insert(owned(clang_getCursorDisplayName(member))).second;
            if (!is_new || clang_CXXMethod_isPureVirtual(member) == 0) continue;
            std::string const body = method_body(*one, member);
            source += "    auto " + body.substr(std::string("auto ::").size() + one->name.size());
        }
        if (one->base.empty()) return source;
    }
}

/// The definitions of structs that a class only declares.
std::string nested_structs(Class const& of) {
    std::string source;
    for (CXCursor const member : of.members) {
        if (clang_getCursorKind(member) == CXCursor_StructDecl && !clang_isCursorDefinition(member))
            source += fill("struct $1::$2 {};\n", {of.name, spelling(member)});
    }
    return source;
}

/// The definitions of what a class only declares. What its header defines is listed in `inlined`.
std::string definitions(Classes const& classes, Class const& of, std::string& inlined) {
    std::string source;
    for (CXCursor const member : of.members) {
        bool const is_operation =
            clang_getCursorKind(member) == CXCursor_Constructor || clang_getCursorKind(member) == CXCursor_CXXMethod;
        if (clang_isCursorDefinition(member) || !is_only_declared(member)) {
            if (is_operation) inlined += fill("\"$1\",\n", {operation_spelling(member)});
            continue;
        }
        switch (clang_getCursorKind(member)) {
            case CXCursor_VarDecl:
                source += fill("$1 $2::$3 = stand_in::some<std::remove_cvref_t<$1>>();\n",
                               {type_spelling(clang_getCursorType(member)), of.name, spelling(member)});
                break;
            case CXCursor_Constructor:
                source += constructor_body(classes, of, member);
                break;
            case CXCursor_Destructor:
                source += fill("$1::~$1() {}\n", {of.name});
                break;
            case CXCursor_CXXMethod:
                source += method_body(of, member);
                break;
            default:
                break;
        }
    }
    return source;
}

/// Empty definitions of the types that stand behind opaque pointers.
std::string empty_definitions(CXCursor space, std::set<std::string>& defined) {
    std::string source;
    for_each_child(space, [&](CXCursor cursor) {
        auto const kind = clang_getCursorKind(cursor);
        bool const is_type = kind == CXCursor_StructDecl || kind == CXCursor_ClassDecl;
        if (!is_type || !clang_Cursor_isNull(clang_getCursorDefinition(cursor))) return;
        std::string const name = spelling(cursor);
        if (defined.insert(name).second)
            source +=
                fill("$1 $2::$3 {};\n", {kind == CXCursor_StructDecl ? "struct" : "class", spelling(space), name});
    });
    return source;
}

constexpr std::size_t FILES = 4;

void write(std::filesystem::path const& include, std::filesystem::path const& output) {
    Classes classes;
    // Cursors end with their unit, so everything is written while it is there.
    std::array<std::string, FILES> sources;
    std::string made;
    std::string opaque;
    std::string inlined;
    std::set<std::string> defined;
    std::size_t next = 0;
    headers::for_each_in_sdk(include, [&](CXCursor cursor) {
        if (clang_getCursorKind(cursor) == CXCursor_Namespace) opaque += empty_definitions(cursor, defined);
        bool const is_class = clang_getCursorKind(cursor) == CXCursor_ClassDecl;
        if (!is_class || !clang_isCursorDefinition(cursor)) return;
        Class const& read = classes.emplace(spelling(cursor), read_class(cursor, classes)).first->second;
        // What it throws with is no stand-in.
        if (read.name == "Exception") return;
        sources[next++ % FILES] += definitions(classes, read, inlined);
        made += nested_structs(read) + fill(
                                           "struct Made$1 : $1 {\n    Made$1() : $1$2 {}\n$3};\n"
                                           "template <>\nstruct stand_in::Making<$1> {\n    using type = Made$1;\n};\n",
                                           {read.name, construction(classes, read.name), overrides(classes, read)});
    });
    java::write_file(output / "made.h", "#pragma once\n\n#include \"tests/stand_in/recording.h\"\n\n" +
                                            headers::including_all(include) + "\nnamespace pedflux {\n\n" + opaque +
                                            made + "\n}  // namespace pedflux\n");
    for (std::size_t i = 0; i < FILES; ++i) {
        java::write_file(output / ("stand_in_" + std::to_string(i) + ".cpp"),
                         "#include \"made.h\"\n\nnamespace pedflux {\n\n" + sources[i] + "\n}  // namespace pedflux\n");
    }
    java::write_file(output / "inlined.inc", inlined);
    std::string table;
    for (auto const& [name, read] : classes) {
        if (name != "Exception") table += fill("ENTRY($1)\n", {name});
    }
    java::write_file(output / "classes.inc", table);
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fprintf(stderr, "usage: %s <the SDK's include directory> <output directory>\n", arguments[0]);
        return 2;
    }
    try {
        write(arguments[1], arguments[2]);
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "%s: %s\n", arguments[0], failure.what());
        return 1;
    }
    return 0;
}
