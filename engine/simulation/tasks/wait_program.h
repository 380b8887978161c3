#pragma once

#include "engine/simulation/world/floor_plan.h"

#include <pedflux/identifiers.h>
#include <pedflux/wait_styles.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

/// How and where agents wait, compiled when a simulation is created.
namespace pedflux::engine {

class Document;

/// A wait space, on the floor that it lies on.
struct WaitSpace {
    GlobalId id;
    std::string title;
    navigation::RegionIndex region = navigation::none;  ///< none where no floor is under it
    Polygons area;                                      ///< its walkable part
    bool spreads_out = false;                           ///< whether agents spread out in it, or stand still
};

/// A wait style. Without spaces agents wait where they are.
struct WaitProgram {
    std::vector<std::uint32_t> spaces;  ///< numbers of wait spaces
    std::vector<double> weights;        ///< of the spaces when one is drawn; none: the easiest to get to with room
    bool spreads_out = false;           ///< whether those without a space spread out

    bool is_to_stand_still() const { return spaces.empty() && !spreads_out; }
};

/// The enabled wait spaces of a project.
std::vector<WaitSpace> wait_spaces_of(Document const& document, FloorPlan const& plan);

/// Compiles a wait style. Throws Exception for a wait space that takes no part or lies on no floor.
WaitProgram wait_program_of(WaitStyle& style, std::vector<WaitSpace> const& spaces);

}  // namespace pedflux::engine
