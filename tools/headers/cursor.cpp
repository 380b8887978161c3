#include "tools/headers/cursor.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

namespace pedflux::headers {

using manifest::Kind;
using manifest::Passing;
using manifest::Type;

namespace {

Kind builtin(CXTypeKind kind) {
    switch (kind) {
        case CXType_Bool:
            return Kind::boolean;
        case CXType_Int:
            return Kind::integer;
        case CXType_Float:
            return Kind::single_float;
        case CXType_Double:
            return Kind::double_float;
        case CXType_Char_S:
        case CXType_Char_U:
            return Kind::character;
        case CXType_UInt:
            return Kind::natural;
        default:
            return Kind::nothing;
    }
}

/// Throws when the compiler found an error.
void check(CXTranslationUnit unit) {
    std::string messages;
    for (unsigned index = 0; index < clang_getNumDiagnostics(unit); ++index) {
        CXDiagnostic const diagnostic = clang_getDiagnostic(unit, index);
        if (clang_getDiagnosticSeverity(diagnostic) >= CXDiagnostic_Error) {
            messages += "\n" + owned(clang_formatDiagnostic(diagnostic, clang_defaultDiagnosticDisplayOptions()));
        }
        clang_disposeDiagnostic(diagnostic);
    }
    if (!messages.empty()) throw std::runtime_error("the SDK's headers do not compile:" + messages);
}

}  // namespace

std::string owned(CXString string) {
    char const* const text = clang_getCString(string);
    std::string copy = text ? text : "";
    clang_disposeString(string);
    return copy;
}

std::string spelling(CXCursor cursor) { return owned(clang_getCursorSpelling(cursor)); }

Type type_of(CXType declared) {
    CXType const type = clang_getCanonicalType(declared);
    if (type.kind == CXType_LValueReference) {
        CXType const pointee = clang_getPointeeType(type);
        Type referred = type_of(pointee);
        referred.passing = clang_isConstQualifiedType(pointee) ? Passing::const_reference : Passing::reference;
        return referred;
    }
    Type result;
    std::string const name = spelling(clang_getTypeDeclaration(type));
    if (type.kind == CXType_Enum) {
        result = {.kind = Kind::enumeration, .name = name};
    } else if (type.kind != CXType_Record) {
        result = {.kind = builtin(type.kind), .name = {}};
    } else if (name == "basic_string") {
        result = {.kind = Kind::text, .name = {}};
    } else if (name == "vector" || name == "shared_ptr") {
        result = type_of(clang_Type_getTemplateArgumentAsType(type, 0));
        (name == "vector" ? result.list : result.shared) = true;
    } else {
        result = {.kind = Kind::object, .name = name};
        if (clang_isConstQualifiedType(type)) result.passing = Passing::const_value;
    }
    return result;
}

std::string including_all(std::filesystem::path const& include) {
    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(include / "pedflux")) {
        if (entry.path().extension() == ".h") names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    std::string source;
    for (auto const& name : names) source += "#include <pedflux/" + name + ">\n";
    return source;
}

void for_each_in_sdk(std::filesystem::path const& include, std::function<void(CXCursor)> const& visit) {
    std::string const source = including_all(include);
    std::string const option = "-I" + include.string();
    char const* const arguments[] = {"-x", "c++", "-std=c++20", option.c_str()};
    CXUnsavedFile file{"all_headers.cpp", source.c_str(), source.size()};
    std::unique_ptr<void, void (*)(CXIndex)> const index(clang_createIndex(0, 0), clang_disposeIndex);
    std::unique_ptr<CXTranslationUnitImpl, void (*)(CXTranslationUnit)> const unit(
        clang_parseTranslationUnit(index.get(), file.Filename, arguments, 4, &file, 1, CXTranslationUnit_None),
        clang_disposeTranslationUnit);
    if (!unit) throw std::runtime_error("libclang cannot read the headers in " + include.string());
    check(unit.get());
    for_each_child(clang_getTranslationUnitCursor(unit.get()), [&](CXCursor cursor) {
        if (clang_getCursorKind(cursor) == CXCursor_Namespace && spelling(cursor) == "pedflux") {
            for_each_child(cursor, visit);
        }
    });
}

}  // namespace pedflux::headers
