#pragma once

#include "engine/crowd/crowd.h"
#include "engine/navigation/navigation.h"
#include "engine/simulation/world/world.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Walls of the crowd that open and close: the gates of connections and the exits at portals.
namespace pedflux::engine {

/// A wall of a region of the crowd.
struct DynamicWall {
    navigation::RegionIndex region;
    std::size_t wall;
};

/// Whether agents may enter a connection, from its ball to its box and the other way: all of them, or some.
struct GateState {
    bool ball_to_box = true;
    bool box_to_ball = true;
    bool ball_to_box_for_some = false;  ///< open, but not to all
    bool box_to_ball_for_some = false;

    bool operator==(GateState const&) const = default;
};

struct Gates {
    std::vector<GateState> states;                ///< of each passageway
    std::vector<std::vector<DynamicWall>> walls;  ///< of each joint, on both sides
};

/// How a joint may be passed, given the state of its connection's gate.
navigation::Passage passage_of(Gates const& gates, FloorPlan const& plan, std::size_t joint);
/// Opens and closes a gate for routes and bodies.
void set_gate(Gates& gates, FloorPlan const& plan, navigation::Navigation& navigation, crowd::Crowd& crowd,
              std::size_t passageway, GateState const& state);

struct Exits {
    std::vector<bool> is_exit;                    ///< of each doorway, whether agents leave by it
    std::vector<std::vector<DynamicWall>> walls;  ///< of each doorway
    std::vector<std::vector<std::uint32_t>> of;   ///< of each region, the doorways on its edge that are exits
};

/// Lets agents leave by a portal. Nothing happens for other places.
void open_exit(Exits& exits, World const& world, crowd::Crowd& crowd, PlaceIndex place);

/// Finds the walls at joints and doorways, and sets `World::doorway_outward`. All gates are open and no portal is an
/// exit yet.
void find_dynamic_walls(World& world, navigation::Navigation const& navigation, Gates& gates, Exits& exits);

}  // namespace pedflux::engine
