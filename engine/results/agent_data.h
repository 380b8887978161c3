#pragma once

#include "engine/results/recorded_run.h"

#include <pedflux/agent_data.h>

namespace pedflux::engine {

/// A stored state as the SDK's value.
AgentData agent_data(AgentFrame const& state, SurfaceKind surface);

ColorBytes color_bytes(Color color);
Color color_of(ColorBytes const& bytes);

/// The standard of levels of service on a surface.
LevelOfServiceStandard standard_of(SurfaceKind surface);

}  // namespace pedflux::engine
