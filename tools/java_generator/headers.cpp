#include "tools/java_generator/headers.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include <clang-c/Index.h>

namespace pedflux::java {

namespace {

using manifest::Kind;
using manifest::Passing;
using manifest::Type;

std::string owned(CXString string) {
    char const* const text = clang_getCString(string);
    std::string copy = text ? text : "";
    clang_disposeString(string);
    return copy;
}

std::string spelling(CXCursor cursor) { return owned(clang_getCursorSpelling(cursor)); }

/// A comment without its marks; the lines stay.
std::string comment(CXCursor cursor) {
    std::istringstream lines(owned(clang_Cursor_getRawCommentText(cursor)));
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        std::string_view rest = line;
        auto const skip = [&](std::string_view mark) {
            if (rest.substr(0, mark.size()) == mark) rest.remove_prefix(mark.size());
        };
        rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
        for (auto const* mark : {"/**<", "/**", "///<", "///", "//!<", "//!", "*/", "*", " "}) skip(mark);
        if (rest.size() >= 2 && rest.substr(rest.size() - 2) == "*/") rest.remove_suffix(2);
        text.append(rest).append("\n");
    }
    auto const first = text.find_first_not_of('\n');
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(" \n") + 1 - first);
}

template <class Visit>
void for_each_child(CXCursor parent, Visit visit) {
    clang_visitChildren(
        parent,
        [](CXCursor child, CXCursor, CXClientData data) {
            (*static_cast<Visit*>(data))(child);
            return CXChildVisit_Continue;
        },
        &visit);
}

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

Operation operation(CXCursor cursor) {
    Operation read{.name = spelling(cursor),
                   .parameters = {},
                   .is_virtual = clang_CXXMethod_isVirtual(cursor) != 0,
                   .comment = comment(cursor)};
    int const count = clang_Cursor_getNumArguments(cursor);
    for (int index = 0; index < count; ++index) {
        CXCursor const parameter = clang_Cursor_getArgument(cursor, static_cast<unsigned>(index));
        read.parameters.push_back({spelling(parameter), type_of(clang_getCursorType(parameter))});
    }
    return read;
}

ClassDeclaration class_declaration(CXCursor cursor) {
    ClassDeclaration read{.comment = comment(cursor), .bases = {}, .operations = {}, .constants = {}};
    for_each_child(cursor, [&](CXCursor member) {
        switch (clang_getCursorKind(member)) {
            case CXCursor_CXXBaseSpecifier:
                read.bases.push_back(spelling(clang_getTypeDeclaration(clang_getCursorType(member))));
                break;
            case CXCursor_Constructor:
            case CXCursor_CXXMethod:
                read.operations.push_back(operation(member));
                break;
            case CXCursor_VarDecl:
                read.constants[spelling(member)] = comment(member);
                break;
            default:
                break;
        }
    });
    return read;
}

Enumeration enumeration(CXCursor cursor) {
    Enumeration read{.comment = comment(cursor), .constants = {}};
    for_each_child(cursor, [&](CXCursor constant) {
        if (clang_getCursorKind(constant) != CXCursor_EnumConstantDecl) return;
        read.constants.push_back({spelling(constant), clang_getEnumConstantDeclValue(constant), comment(constant)});
    });
    return read;
}

void read_namespace(CXCursor space, Headers& headers) {
    for_each_child(space, [&](CXCursor cursor) {
        if (!clang_isCursorDefinition(cursor)) return;
        switch (clang_getCursorKind(cursor)) {
            case CXCursor_ClassDecl:
            case CXCursor_StructDecl:
                headers.classes[spelling(cursor)] = class_declaration(cursor);
                break;
            case CXCursor_EnumDecl:
                headers.enumerations[spelling(cursor)] = enumeration(cursor);
                break;
            default:
                break;
        }
    });
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

std::string including_all(std::filesystem::path const& directory) {
    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(directory)) {
        if (entry.path().extension() == ".h") names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    std::string source;
    for (auto const& name : names) source += "#include <pedflux/" + name + ">\n";
    return source;
}

}  // namespace

Operation const* Headers::find(manifest::Export const& one) const {
    using manifest::Role;
    bool const constructs = one.role == Role::constructor;
    if (!constructs && one.role != Role::method && one.role != Role::static_method) return nullptr;
    auto const declaration = classes.find(one.owner);
    if (declaration == classes.end()) return nullptr;
    auto const& operations = declaration->second.operations;
    auto const found = std::find_if(operations.begin(), operations.end(), [&](Operation const& operation) {
        return operation.name == (constructs ? one.class_name : one.operation) &&
               std::equal(operation.parameters.begin(), operation.parameters.end(), one.parameters.begin(),
                          one.parameters.end(), [](Parameter const& declared, manifest::Type const& exported) {
                              return declared.type == exported;
                          });
    });
    if (found != operations.end()) return &*found;
    // What a static operation's type does not say: a base may declare it.
    for (auto const& base : declaration->second.bases) {
        manifest::Export in_base = one;
        in_base.owner = base;
        if (auto const* inherited = constructs ? nullptr : find(in_base)) return inherited;
    }
    return nullptr;
}

std::string Headers::introducing_class(manifest::Export const& one) const {
    auto const* const operation = find(one);
    auto const declaration = classes.find(one.owner);
    if (!operation || !operation->is_virtual || declaration == classes.end()) return one.owner;
    for (auto const& base : declaration->second.bases) {
        manifest::Export in_base = one;
        in_base.owner = base;
        auto const* const introduced = find(in_base);
        if (introduced && introduced->is_virtual) return introducing_class(in_base);
    }
    return one.owner;
}

Headers read_headers(std::filesystem::path const& include) {
    std::string const source = including_all(include / "pedflux");
    std::string const option = "-I" + include.string();
    char const* const arguments[] = {"-x", "c++", "-std=c++20", option.c_str()};
    CXUnsavedFile file{"all_headers.cpp", source.c_str(), source.size()};
    CXIndex const index = clang_createIndex(0, 0);
    CXTranslationUnit const unit =
        clang_parseTranslationUnit(index, file.Filename, arguments, 4, &file, 1, CXTranslationUnit_SkipFunctionBodies);
    if (!unit) throw std::runtime_error("libclang cannot read the headers in " + include.string());
    check(unit);
    Headers headers;
    for_each_child(clang_getTranslationUnitCursor(unit), [&](CXCursor cursor) {
        if (clang_getCursorKind(cursor) == CXCursor_Namespace && spelling(cursor) == "pedflux") {
            read_namespace(cursor, headers);
        }
    });
    clang_disposeTranslationUnit(unit);
    clang_disposeIndex(index);
    return headers;
}

}  // namespace pedflux::java
