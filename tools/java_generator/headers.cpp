#include "tools/java_generator/headers.h"

#include "tools/headers/cursor.h"

#include <algorithm>
#include <sstream>
#include <string_view>

#include <clang-c/Index.h>

namespace pedflux::java {

namespace {

using headers::for_each_child;
using headers::owned;
using headers::spelling;
using headers::type_of;

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

void read_declaration(CXCursor cursor, Headers& headers) {
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
    Headers headers;
    headers::for_each_in_sdk(include, [&](CXCursor cursor) { read_declaration(cursor, headers); });
    return headers;
}

}  // namespace pedflux::java
