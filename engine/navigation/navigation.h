#pragma once

#include "engine/navigation/navigation_input.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

/// Walkable regions and the shortest routes through them.
///
/// Every agent asks for its next aim in every step:
///
///     RouteStep const step = navigation.next(region, position, destination, hint);
///     if (step.kind == RouteStep::Kind::UNREACHABLE) …
///     Point const aim = nearest_point(step.target, position);   // spreads people across an opening
///     // or step.aim, the next point of the shortest route itself
///
/// and changes to the connection's other region when it crosses `step.target` of a connection. The hint belongs to the
/// agent and makes the next query cheap. docs/navigation.md explains the method.
namespace pedflux::engine::navigation {

/// State of an agent between calls of next(), which saves looking at the destination's routes again (64 bytes). A
/// default-constructed hint is always valid.
struct RouteHint {
    RegionIndex region = none;
    DestinationIndex destination = none;
    /// Version of the destination's routes.
    std::uint32_t version = 0;
    std::uint32_t triangle = none;
    /// The current aim: a waypoint, or a view of the goal.
    std::uint32_t aimed = none;
    /// The vertices between which the waypoint is visible; `none` on the side that `behind` bounds.
    std::uint32_t right = none;
    std::uint32_t left = none;
    /// The range of visible points of the portal edge.
    std::uint32_t first_in_sight = none;
    std::uint32_t last_in_sight = none;
    bool to_goal = false;
    /// At a corner: whether the whole line of `Waypoint::spread_end` is visible.
    bool spread_in_sight = false;
    /// At a corner: the remaining distance from it (metres), and a point of the line on which the next leg becomes
    /// visible.
    double rest = 0;
    Point behind;
};

/// The next leg of a route.
struct RouteStep {
    enum class Kind : std::uint8_t {
        UNREACHABLE,  ///< There is no route; the other fields are unset.
        ARRIVED,      ///< Inside an area of the destination, or on one of its lines.
        GOAL,         ///< Straight to a line of the destination or to the edge of one of its areas.
        CONNECTION,   ///< Straight to a connection and through it.
        CORNER        ///< To a corner, which `aim` passes at the clearance.
    };
    Kind kind = Kind::UNREACHABLE;
    /// The next point of the shortest route. Visible from the position.
    Point aim;
    /// Alternative points to aim at, all visible when the leg was chosen: the passable part of the goal or connection,
    /// or a line that leads away from the corner.
    Segment target;
    /// At a corner: the next point of the route behind it.
    Point onward;
    /// Remaining distance in metres, including the costs of connections.
    double distance = 0;
    /// The connection to cross when `kind` is CONNECTION, otherwise `none`.
    ConnectionIndex connection = none;
    /// Whether the connection is crossed from its `from` region to its `to` region.
    bool forward = true;
};

/// A piece of a region's boundary.
struct Wall {
    Segment segment;
    /// The connection on this piece, `none` for a proper wall. Passable while the connection is open from this side.
    ConnectionIndex connection = none;
    /// The destination of the input on this piece, such as a portal through which agents leave.
    DestinationIndex destination = none;
};

/// A point of a route.
struct RoutePoint {
    RegionIndex region = none;
    Point point;
};

/// Routes are computed once per destination and shared by all agents that go there. Queries may run on several threads
/// at once, changes may not. Results depend on the input only; ties go to the lower index.
class Navigation {
  public:
    /// Throws Exception naming the region, connection or destination that cannot be walked.
    explicit Navigation(NavigationInput const& input);
    Navigation(Navigation&&) noexcept;
    Navigation& operator=(Navigation&&) noexcept;
    ~Navigation();

    /// Adds a destination, numbered after the existing ones, for everybody or for one class of people: a goal is one
    /// destination for each class that uses it. Distances to it are the costs of that class, in metres.
    DestinationIndex add_destination(Destination const& destination, RouteClass const& people = {});
    /// Opens or closes a connection or changes its cost. Only the routes that depend on it are computed again.
    void set_passage(ConnectionIndex connection, Passage const& passage);
    Passage const& passage(ConnectionIndex connection) const;

    std::size_t region_count() const;
    std::size_t destination_count() const;

    /// The next leg from a point of the region to the destination. A point outside the clear area is replaced by the
    /// nearest point of it.
    RouteStep next(RegionIndex region, Point point, DestinationIndex destination, RouteHint& hint) const;
    /// Distance in metres; empty when the destination cannot be reached.
    std::optional<double> distance(RegionIndex region, Point point, DestinationIndex destination) const;
    /// Whether the destination can be reached from the point.
    bool reachable(RegionIndex region, Point point, DestinationIndex destination) const;
    /// The shortest route from the point to the destination, both included; empty when there is none. A connection
    /// gives two points, one in each region.
    std::vector<RoutePoint> path(RegionIndex region, Point point, DestinationIndex destination) const;

    /// Whether the point lies in the walkable area of the region.
    bool contains(RegionIndex region, Point point) const;
    /// The point itself, or the nearest point of the walkable area.
    Point nearest_walkable(RegionIndex region, Point point) const;
    /// The point itself, or the nearest point that keeps the clearance from walls.
    Point nearest_clear(RegionIndex region, Point point) const;
    /// Whether the straight line between two points keeps the clearance from walls.
    bool in_sight(RegionIndex region, Point from, Point to) const;
    std::vector<Wall> const& walls(RegionIndex region) const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace pedflux::engine::navigation
