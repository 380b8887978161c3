#pragma once

#include <pedflux/sdk.h>

#include <string_view>

namespace pedflux::engine {

/// Writes a line to the standard error stream if the output level set in Sdk includes the given one.
void log(LogOutputLevel level, std::string_view line);

}  // namespace pedflux::engine
