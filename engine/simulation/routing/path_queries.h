#pragma once

#include "engine/navigation/navigation.h"
#include "engine/simulation/agents/routing_preferences.h"
#include "engine/simulation/world/world.h"

#include <optional>
#include <span>

namespace pedflux::engine {

struct Routes;

/// The way of an agent to the next waypoint on its route: a connection, or the goal itself.
struct WayToNext {
    double distance = 0;                                        ///< metres
    Point direction;                                            ///< of length 1; (0, 0) at the waypoint
    navigation::ConnectionIndex connection = navigation::none;  ///< its joint; none: the goal
    Segment line;                                               ///< what is crossed or reached there
};

/// None when no way leads to the destination.
std::optional<WayToNext> way_to_next(navigation::Navigation const& navigation, FloorPlan const& plan,
                                     Standpoint const& from, navigation::DestinationIndex destination);

/// The joint between two regions that is nearest to a point; none where they do not join.
navigation::ConnectionIndex joint_at(FloorPlan const& plan, navigation::RegionIndex from, navigation::RegionIndex to,
                                     Point point);

/// The direction in which the way to a destination starts; (0, 0) at the destination, none when no way leads there.
std::optional<Point> direction_to(navigation::Navigation const& navigation, Standpoint const& from,
                                  navigation::DestinationIndex destination);

/// The place with the shortest way to it; the first when no way leads to any.
PlaceIndex nearest_place(Routes& routes, World const& world, Standpoint const& from, RouteClassIndex people,
                         std::span<PlaceIndex const> places);

/// The nearest point of the region, within `reach` (metres), from which a way leads to the destination.
std::optional<Point> nearest_with_way(navigation::Navigation const& navigation, navigation::RegionIndex region,
                                      Point point, double reach, navigation::DestinationIndex destination);

}  // namespace pedflux::engine
