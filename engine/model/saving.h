#pragma once

#include "engine/model/document.h"
#include "engine/model/state.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Project files: JSON with the members
///
///     "format": "pedflux project", "version": 1,
///     "settings": { ... }, "objects": [ { "kind": "Floor", "id": "...", "name": "...", ... }, ... ]
///
/// Objects are in the order of their creation. Missing members have their defaults. Members, and kinds of
/// objects, that this version does not know are kept and written back, with a warning. A higher version number means
/// that older versions would misread the file; they refuse it.
namespace pedflux::engine {

inline constexpr std::string_view file_format = "pedflux project";
inline constexpr int file_version = 1;

/// The kinds of objects that a file may hold.
using Kinds = std::span<Kind const* const>;

/// The project as the text of its file.
std::string to_text(Document const& document);

/// The project that a text describes. Throws Exception, which says where in the text something is wrong and what would
/// be right, unless all of it makes sense.
std::unique_ptr<Document> from_text(std::string_view text, Kinds kinds);

/// One object as it stands in a file.
std::string to_text(ObjectState const& object);
/// Adds the object that such a text describes. What it refers to is not checked: the document need not have it. Throws
/// Exception when the text makes no sense.
void add_from_text(Document& document, std::string_view text, Kinds kinds);

/// The differences of two projects, one line for each place; empty when all fields are equal.
std::vector<std::string> differences(Document const& a, Document const& b);

}  // namespace pedflux::engine
