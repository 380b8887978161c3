#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

/// Small helpers for writing source text.
namespace pedflux::java {

/// The pattern with `$1` to `$9` replaced by the values.
std::string fill(std::string_view pattern, std::initializer_list<std::string_view> values);

std::string joined(std::vector<std::string> const& parts, std::string_view separator);

/// The text with every line that is not empty moved to the right by four spaces.
std::string indented(std::string_view text);

/// "rotatedBy" for "RotatedBy", "ANGLE_OF_VIEW" for "AngleOfView".
std::string lower_first(std::string text);
std::string upper_words(std::string_view text);

/// Writes a file, making its directory first. A file that has this text already is left as it is, so that the build
/// does not go on from it. Returns whether it was written. Throws std::runtime_error when it cannot.
bool write_file(std::filesystem::path const& path, std::string_view text);

}  // namespace pedflux::java
