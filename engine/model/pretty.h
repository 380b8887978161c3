#pragma once

#include "engine/model/json.h"

#include <string>

namespace pedflux::engine {

/// JSON that people can read: indented, with each list of plain values on one line.
std::string pretty(Json const& json);

}  // namespace pedflux::engine
