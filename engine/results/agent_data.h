#pragma once

#include "engine/results/recorded_run.h"

#include <pedflux/agent_data.h>

#include <array>
#include <cstdint>

namespace pedflux::engine {

/// A stored state as the SDK shows it.
AgentData agent_data(AgentFrame const& state, SurfaceKind surface);

/// Red, green, blue and opacity in steps of 1/255, as frames store them.
std::array<std::uint8_t, 4> color_bytes(Color color);
Color color_of(std::array<std::uint8_t, 4> const& bytes);

/// By which density is judged on a surface.
LevelOfServiceStandard standard_of(SurfaceKind surface);

}  // namespace pedflux::engine
