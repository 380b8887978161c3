#pragma once

#include "engine/results/recorded_run.h"

#include <string>

namespace pedflux::engine {

/// The area and triangles of a surface as they stand in the file (JSON).
std::string shape_text(Surface const& surface);
/// Sets them from such a text. Throws Exception when it is none.
void read_shape(std::string const& text, Surface& surface);

}  // namespace pedflux::engine
