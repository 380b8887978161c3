#pragma once

#include "engine/navigation/navigation_input.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

/// Walkable regions and the shortest ways through them.
///
/// A crowd asks for the next route point of every agent in every step:
///
///     RouteStep const step = navigation.next(region, position, destination, hint);
///     if (step.kind == RouteStep::Kind::UNREACHABLE) …
///     Point const aim = nearest_point(step.target, position);   // spreads people across an opening
///     // or step.aim, the next point of the shortest way itself
///
/// and moves the agent to the connection's other region when the agent crosses `step.target` of a connection. The hint
/// belongs to the agent and makes the next question cheap. Everything here is explained in docs/navigation.md.
namespace pedflux::engine::navigation {

/// What next() remembers of its last answer, so that it need not look at the destination's routes again: 64 bytes. A
/// fresh one is always right.
struct RouteHint {
    RegionIndex region = none;
    DestinationIndex destination = none;
    /// The version of the destination's routes.
    std::uint32_t version = 0;
    std::uint32_t triangle = none;
    /// What is aimed at: a waypoint, or a view of the goal.
    std::uint32_t aimed = none;
    /// The vertices between which a waypoint is seen, `none` on the side of `behind`.
    std::uint32_t right = none;
    std::uint32_t left = none;
    /// The points of a portal edge that are in sight.
    std::uint32_t first_in_sight = none;
    std::uint32_t last_in_sight = none;
    bool to_goal = false;
    /// At a corner: whether all of the line to aim at is in sight.
    bool spread_in_sight = false;
    /// At a corner: the metres to walk from it, and a point of the line on which the way that goes on comes into sight.
    double rest = 0;
    Point behind;
};

/// Where to walk now.
struct RouteStep {
    enum class Kind : std::uint8_t {
        UNREACHABLE,  ///< No way leads there; nothing else is set.
        ARRIVED,      ///< In an area of the destination or on a line of it.
        GOAL,         ///< Straight to a line or the edge of an area of the destination.
        CONNECTION,   ///< Straight to a connection and through it.
        CORNER        ///< Around a corner, which `aim` passes at the clearance.
    };
    Kind kind = Kind::UNREACHABLE;
    /// The next point of the shortest way, in sight.
    Point aim;
    /// What may be aimed at instead, all of it in sight when it was first aimed at: the passable part of the goal or
    /// connection, or the line that leads from the corner across the way.
    Segment target;
    /// At a corner: the next point of the way after it.
    Point onward;
    /// Metres still to walk, costs of connections included.
    double distance = 0;
    /// The connection that is crossed next when its kind is CONNECTION, otherwise `none`.
    ConnectionIndex connection = none;
    /// Whether it is crossed from its `from` region to its `to` region.
    bool forward = true;
};

/// A piece of a region's boundary.
struct Wall {
    Segment segment;
    /// The connection that it lies on, `none` for a wall proper. People pass while that is open from this side.
    ConnectionIndex connection = none;
    /// The destination of the input whose line it lies on: a portal, through which people may leave.
    DestinationIndex destination = none;
};

/// A point of a route.
struct RoutePoint {
    RegionIndex region = none;
    Point point;
};

/// Routes are found once per destination and shared by all who go there. Questions may be asked from several threads at
/// once, changes may not. Answers depend on the input only, ties fall to the lower index.
class Navigation {
  public:
    /// Throws Exception naming the region, connection or destination when something in the input cannot be walked.
    explicit Navigation(NavigationInput const& input);
    Navigation(Navigation&&) noexcept;
    Navigation& operator=(Navigation&&) noexcept;
    ~Navigation();

    /// One more destination, numbered after those before, for all or for people of a class: the same goal is one
    /// destination for each class of people who go there. Distances to it are in metres as these count them.
    DestinationIndex add_destination(Destination const& destination, RouteClass const& people = {});
    /// Opens, closes or reprices a connection. Only routes that this changes are found again.
    void set_passage(ConnectionIndex connection, Passage const& passage);
    Passage const& passage(ConnectionIndex connection) const;

    std::size_t region_count() const;
    std::size_t destination_count() const;

    /// Where to walk now from a point of the region, for someone on the way to the destination. A point that is too
    /// near to a wall or outside is taken for the nearest one that is not.
    RouteStep next(RegionIndex region, Point point, DestinationIndex destination, RouteHint& hint) const;
    /// Metres to walk, empty when no way leads there.
    std::optional<double> distance(RegionIndex region, Point point, DestinationIndex destination) const;
    /// Whether someone at the point can get there.
    bool reachable(RegionIndex region, Point point, DestinationIndex destination) const;
    /// The shortest way, from the point to the destination, both included; empty when there is none. A connection gives
    /// two route points, one in each region.
    std::vector<RoutePoint> path(RegionIndex region, Point point, DestinationIndex destination) const;

    /// Whether the point is in the region's walkable area.
    bool contains(RegionIndex region, Point point) const;
    /// The point, or the nearest one of the walkable area.
    Point nearest_walkable(RegionIndex region, Point point) const;
    /// The point, or the nearest one that keeps the clearance from walls.
    Point nearest_clear(RegionIndex region, Point point) const;
    /// Whether the straight line between two points keeps the clearance from walls.
    bool in_sight(RegionIndex region, Point from, Point to) const;
    std::vector<Wall> const& walls(RegionIndex region) const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace pedflux::engine::navigation
