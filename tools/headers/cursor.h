#pragma once

#include "tools/manifest/manifest.h"

#include <filesystem>
#include <functional>
#include <string>

#include <clang-c/Index.h>

/// The SDK's headers as libclang sees them.
namespace pedflux::headers {

std::string owned(CXString string);
std::string spelling(CXCursor cursor);

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

/// The type as the manifest describes it. What no export can have is of the kind `nothing`.
manifest::Type type_of(CXType declared);

/// Calls visit for what every header in `<include>/pedflux` declares in namespace pedflux. Throws std::runtime_error
/// with the compiler's messages when one does not compile.
void for_each_in_sdk(std::filesystem::path const& include, std::function<void(CXCursor)> const& visit);

/// The headers' names in order.
std::string including_all(std::filesystem::path const& include);

}  // namespace pedflux::headers
