#pragma once

#include <string>
#include <string_view>

namespace pedflux::engine {

bool is_utf8(std::string_view text);

/// Whether the text can be an object's name, see `SimObject::S_IsValidName`.
bool is_valid_name(std::string_view name);

/// Throws Exception when it cannot, and says what a name is.
void require_valid_name(std::string_view name);

}  // namespace pedflux::engine
