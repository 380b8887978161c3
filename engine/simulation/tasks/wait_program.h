#pragma once

#include "engine/simulation/world/floor_plan.h"

#include <pedflux/identifiers.h>
#include <pedflux/wait_styles.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

/// How and where people wait, compiled when the simulation is created.
namespace pedflux::engine {

class Document;

/// A wait space, on the floor that it lies on.
struct WaitSpace {
    GlobalId id;
    std::string title;
    navigation::RegionIndex region = navigation::none;  ///< none where no floor is under it
    Polygons area;                                      ///< what people can walk on of it
    bool spreads_out = false;                           ///< how people wait in it; otherwise they stand still
    // Found when somebody comes to wait there.
    std::vector<navigation::DestinationIndex> destinations;  ///< of route classes
    std::vector<Point> places;                               ///< where one could stand, from the middle outwards
    struct Taken {
        std::uint32_t agent;
        Point place;
        double radius;
    };
    std::vector<Taken> taken;
};

/// A wait style. Without spaces people wait where they are.
struct WaitRule {
    std::vector<std::uint32_t> spaces;  ///< in `WaitRules::spaces`
    std::vector<double> weights;        ///< of the spaces when one is drawn; none: the easiest to get to with room
    bool spreads_out = false;           ///< of those without a space

    bool is_to_stand_still() const { return spaces.empty() && !spreads_out; }
};

struct WaitRules {
    std::vector<WaitSpace> spaces;
    std::vector<WaitRule> styles;  ///< of the action plan's styles
};

/// The enabled wait spaces of a project.
std::vector<WaitSpace> wait_spaces_of(Document const& document, FloorPlan const& plan);

/// Throws Exception for a wait space that takes no part or lies on no floor.
WaitRule wait_rule_of(WaitStyle& style, std::vector<WaitSpace> const& spaces);

}  // namespace pedflux::engine
