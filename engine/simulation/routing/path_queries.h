#pragma once

#include "engine/simulation/frame/simulation_state.h"
#include "engine/simulation/routing/surroundings.h"

#include <optional>
#include <span>
#include <vector>

namespace pedflux::engine {

/// The way to the next waypoint of somebody who is on the way to a destination: a connection, or the goal itself.
struct WayToNext {
    double distance = 0;                                        ///< metres
    Point direction;                                            ///< of length 1; (0, 0) at the waypoint
    navigation::ConnectionIndex connection = navigation::none;  ///< its joint; none: the goal
    Segment line;                                               ///< what is crossed or reached there
};

/// None when no way leads to the destination.
std::optional<WayToNext> way_to_next(SimulationState const& run, Standpoint const& from,
                                     navigation::DestinationIndex destination);

/// The joint between two regions that is nearest to a point; none where they do not join.
navigation::ConnectionIndex joint_at(SimulationState const& run, navigation::RegionIndex from,
                                     navigation::RegionIndex to, Point point);

/// The direction in which the way to a destination starts.
std::optional<Point> direction_to(SimulationState const& run, Standpoint const& from,
                                  navigation::DestinationIndex destination);

/// The nearest of some places by the way to walk; the first when no way leads to any.
PlaceIndex nearest_place(SimulationState& run, Standpoint const& from, RouteClassIndex people,
                         std::span<PlaceIndex const> places);

/// The nearest point of the region at most so far away from which a way leads to the destination.
std::optional<Point> nearest_with_way(SimulationState const& run, navigation::RegionIndex region, Point point,
                                      double reach, navigation::DestinationIndex destination);

}  // namespace pedflux::engine
