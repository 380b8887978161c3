#include "engine/navigation/views.h"

#include <cmath>
#include <limits>

namespace pedflux::engine::navigation {

namespace {

/// Ways that differ less (metres) count as equally long.
constexpr double equally_long = 1e-6;

class Viewing {
  public:
    Viewing(RegionMap const& region, double metre, std::span<double const> rest, std::span<Onward const> onward)
        : region_(region), metre_(metre), mesh_(region.clear_mesh), rest_(rest), onward_(onward) {
        bound_vertices();
    }

    void add_corner(std::uint32_t waypoint);

    void add_portal_point(std::uint32_t waypoint) {
        for (Outlook const& outlook :
             region_.waypoints.portal_outlooks[waypoint - region_.waypoints.portal_edge_begin.front()])
            if (may_be_shortest(waypoint, outlook.triangle))
                add(outlook.triangle, {waypoint, outlook.right, outlook.left});
    }

    Lists<WaypointView> lists() const { return grouped(mesh_.triangles().size(), views_); }

  private:
    void add(std::uint32_t triangle, WaypointView const& view) { views_.emplace_back(triangle, view); }
    void bound_vertices();
    bool may_be_shortest(std::uint32_t waypoint, std::uint32_t triangle) const;

    RegionMap const& region_;
    double metre_;
    Mesh const& mesh_;
    std::span<double const> rest_;
    std::span<Onward const> onward_;
    /// By vertex, an upper bound of the distance to the destination (metres).
    std::vector<double> within_;
    std::vector<std::pair<std::uint32_t, WaypointView>> views_;
};

void Viewing::bound_vertices() {
    within_.assign(mesh_.vertices().size(), std::numeric_limits<double>::infinity());
    for (std::size_t vertex = 0; vertex < within_.size(); ++vertex) {
        auto const corners = region_.waypoints.corners_at[vertex];
        // Areas that touch in a vertex share it, although no way leads from one to the other.
        if (corners.size() == 1) within_[vertex] = rest_[corners[0]];
    }
}

/// Whether the way from some point of the triangle straight to the waypoint can be the shortest, judged by the ways
/// from the triangle's corners. With the remaining distance R of corner v, the distance from p is at most |p - v| + R;
/// by way of the waypoint it is at least (p - waypoint) . u + rest for any unit vector u. The difference of the two is
/// smallest at a corner.
bool Viewing::may_be_shortest(std::uint32_t waypoint, std::uint32_t triangle) const {
    Point const from = region_.waypoints.all[waypoint].point;
    auto const corners = mesh_.corners(triangle);
    Point const middle = 1.0 / 3 * (corners[0] + corners[1] + corners[2]);
    Point const direction = unit(middle - from);
    for (std::size_t i = 0; i < 3; ++i) {
        double const within = within_[mesh_.triangles()[triangle].corner[i]];
        if (!std::isfinite(within)) continue;
        double least = std::numeric_limits<double>::infinity();
        for (Point const point : corners)
            least = std::min(least, dot(point - from, direction) - distance(point, corners[i]));
        if (rest_[waypoint] + metre_ * least > within + equally_long) return false;
    }
    return true;
}

/// A corner comes next where it hides the rest of the way: between one of its walls and the line of the next leg,
/// produced backwards through the corner.
void Viewing::add_corner(std::uint32_t waypoint) {
    Waypoint const& corner = region_.waypoints.all[waypoint];
    FromPoint const eye{corner.point};
    Point const direction = onward_[waypoint].point - corner.point;
    bool const ends_here = length(direction) <= touching;
    if (!ends_here && !bends_around(corner, unit(direction))) return;
    Bound const behind{bound_behind(corner, onward_[waypoint]), none};
    bool const bounds_right = !ends_here && cross(direction, corner.right_wall + corner.left_wall) <= 0;
    bool const bounds_left = !ends_here && !bounds_right;
    for (Wedge const wedge : fan_of(mesh_, corner)) {
        auto const& corners = mesh_.triangles()[wedge.triangle].corner;
        Segment const far_edge = mesh_.edge(wedge.triangle, wedge.corner);
        Bound right{far_edge.from, corners[after(wedge.corner)]};
        Bound left{far_edge.to, corners[before(wedge.corner)]};
        if (bounds_right) {
            if (eye.leftness(behind.point, left.point) <= 0) continue;
            if (eye.leftness(behind.point, right.point) < 0) right = behind;
        }
        if (bounds_left) {
            if (eye.leftness(behind.point, right.point) >= 0) continue;
            if (eye.leftness(behind.point, left.point) > 0) left = behind;
        }
        add(wedge.triangle, {waypoint, right.vertex, left.vertex});
        look_through(
            mesh_, eye, wedge.triangle, wedge.corner, right, left,
            [&](View const& view) {
                // Where another way is shorter, it is also shorter further away in the same direction.
                if (!may_be_shortest(waypoint, view.triangle)) return false;
                add(view.triangle, {waypoint, view.right.vertex, view.left.vertex});
                return true;
            },
            [](std::uint32_t) {});
    }
}

}  // namespace

Lists<WaypointView> views_to(RegionMap const& region, double metre, std::span<double const> rest,
                             std::span<Onward const> onward, std::span<double const> rest_after) {
    Viewing viewing(region, metre, rest, onward);
    for (std::uint32_t waypoint = 0; waypoint < region.waypoints.all.size(); ++waypoint) {
        if (!std::isfinite(rest[waypoint])) continue;
        if (region.waypoints.all[waypoint].is_corner())
            viewing.add_corner(waypoint);
        else if (rest[waypoint] < rest_after[waypoint])
            // Otherwise there is a shorter way than through the portal edge.
            viewing.add_portal_point(waypoint);
    }
    return viewing.lists();
}

}  // namespace pedflux::engine::navigation
