#pragma once

#include "engine/navigation/navigation_input.h"
#include "engine/results/recorded_run.h"
#include "engine/scene/scene_states.h"
#include "engine/simulation/world/ground.h"
#include "engine/simulation/world/server_layout.h"

#include <pedflux/identifiers.h>

#include <optional>
#include <string>
#include <vector>

/// The project's building as agents walk in it. Regions, surfaces and grounds have the same numbers: the floors first,
/// then the links, stairs and ramps.
namespace pedflux::engine {

class Document;

/// How the surface of a region differs from a level floor.
struct Incline {
    Point uphill;          ///< of length 1; (0, 0) where it is level
    double up_factor = 1;  ///< share of the speed on level ground, in the plan
    double down_factor = 1;
    std::optional<SpeedLimit> limit;  ///< metres per second along the slope, instead of the factors
    double length_factor = 1;
};

/// A line where two regions join, and the direction across it.
struct Joint {
    navigation::RegionIndex connection = 0;  ///< the region of the link, stair or ramp
    navigation::RegionIndex floor = 0;
    Segment line;
    Point to_floor;       ///< of length 1
    bool at_ball = true;  ///< or at the box end
};

/// A connection as a whole.
struct Passageway {
    navigation::RegionIndex region = 0;
    std::string title;
    bool gated = false;
    bool ball_to_box = true;  ///< whether its direction lets agents through
    bool box_to_ball = true;
    double cost = 0;  ///< metres added to routes through it
};

/// A portal: an opening where agents enter and leave.
struct Doorway {
    GlobalId id;
    std::string title;
    navigation::RegionLine line;
    AgentInitialPlacement placement = AgentInitialPlacement::RANDOM;
};

struct FloorPlan {
    std::vector<Surface> surfaces;
    std::vector<Ground> grounds;
    std::vector<Incline> inclines;
    std::size_t floor_count = 0;
    std::vector<Passageway> passageways;  ///< those of the regions from floor_count on
    std::vector<Joint> joints;
    std::vector<Doorway> doorways;
    std::vector<ServerLayout> servers;
};

/// Throws Exception in one sentence when the building cannot be walked in: a project without floors, a connection that
/// touches no floor at an end, a portal that lies on none.
FloorPlan floor_plan_of(Document const& document);

}  // namespace pedflux::engine
