#include "engine/navigation/waypoints.h"

#include <algorithm>

namespace pedflux::engine::navigation {

namespace {

/// How far from a corner people spread when they walk around it (metres).
constexpr double spread = 3;
/// Unit vectors with a smaller cross product are parallel.
constexpr double in_line = 1e-9;

std::size_t corner_of(Triangle const& triangle, std::uint32_t vertex) {
    return static_cast<std::size_t>(std::find(triangle.corner.begin(), triangle.corner.end(), vertex) -
                                    triangle.corner.begin());
}

/// Calls `visit(vertex, fan)` for every part of the area around a vertex that lies between two walls.
template <class Visit>
void for_each_fan(Mesh const& mesh, Visit visit) {
    for (std::uint32_t t = 0; t < mesh.triangles().size(); ++t)
        for (std::size_t i = 0; i < 3; ++i)
            if (mesh.triangles()[t].neighbour[before(i)] == none)
                visit(mesh.triangles()[t].corner[i], fan_from(mesh, {t, i}));
}

Point spread_end(Mesh const& mesh, Waypoint const& corner, std::vector<Wedge> const& fan) {
    Point const into_walls = corner.right_wall + corner.left_wall;
    Point const away =
        squared_length(into_walls) > in_line ? unit(Point{} - into_walls) : turned_left(corner.right_wall);
    for (Wedge const wedge : fan) {
        Segment const far_edge = mesh.edge(wedge.triangle, wedge.corner);
        if (cross(far_edge.from - corner.point, away) >= 0 && cross(away, far_edge.to - corner.point) >= 0)
            return mesh.walk({wedge.triangle, corner.point}, corner.point + spread * away);
    }
    return corner.point;
}

/// Computes what is visible from the waypoints.
class Lookout {
  public:
    Lookout(Mesh const& mesh, Waypoints& waypoints)
        : mesh_(mesh), waypoints_(waypoints), met_by_(waypoints.all.size(), none) {}

    void look_from_corner(std::uint32_t waypoint, std::vector<Wedge> const& fan) {
        for (Wedge const wedge : fan) look_from(waypoint, wedge.triangle, {&wedge.corner, 1});
        finish(waypoint);
    }

    void look_from_portal_point(std::uint32_t waypoint, std::vector<std::uint32_t> const& triangles) {
        Point const eye = waypoints_.all[waypoint].point;
        for (std::uint32_t const triangle : triangles) {
            std::vector<std::size_t> edges;
            for (std::size_t i = 0; i < 3; ++i)
                if (pedflux::engine::distance(mesh_.edge(triangle, i), eye) > touching) edges.push_back(i);
            look_from(waypoint, triangle, edges);
        }
        finish(waypoint);
    }

    void give_lists() {
        waypoints_.portal_outlooks = grouped(waypoints_.all.size() - waypoints_.portal_edge_begin.front(), outlooks_);
        waypoints_.links = grouped(waypoints_.all.size(), links_);
    }

  private:
    void look_from(std::uint32_t waypoint, std::uint32_t triangle, std::span<std::size_t const> edges) {
        Waypoint const& from = waypoints_.all[waypoint];
        FromPoint const eye{from.point};
        note_outlook(waypoint, {triangle, none, none});
        for (std::uint32_t const vertex : mesh_.triangles()[triangle].corner) meet_corners(waypoint, vertex);
        for (std::uint32_t const other : waypoints_.portal_points_in[triangle]) meet(waypoint, other);
        auto const see = [&](View const& view) {
            if (from.is_corner() && !bends_around(from, unit(view.right.point - from.point)) &&
                !bends_around(from, unit(view.left.point - from.point)))
                return false;
            note_outlook(waypoint, {view.triangle, view.right.vertex, view.left.vertex});
            for (std::uint32_t const other : waypoints_.portal_points_in[view.triangle])
                if (sees(eye, view.right.point, view.left.point, waypoints_.all[other].point, touching))
                    meet(waypoint, other);
            return true;
        };
        for (std::size_t const edge : edges) {
            Segment const far_edge = mesh_.edge(triangle, edge);
            auto const& corner = mesh_.triangles()[triangle].corner;
            look_through(mesh_, eye, triangle, edge, {far_edge.from, corner[after(edge)]},
                         {far_edge.to, corner[before(edge)]}, see,
                         [&](std::uint32_t vertex) { meet_corners(waypoint, vertex); });
        }
    }

    void note_outlook(std::uint32_t waypoint, Outlook const& outlook) {
        if (!waypoints_.all[waypoint].is_corner())
            outlooks_.emplace_back(waypoint - waypoints_.portal_edge_begin.front(), outlook);
    }

    void meet_corners(std::uint32_t waypoint, std::uint32_t vertex) {
        for (std::uint32_t const other : waypoints_.corners_at[vertex]) meet(waypoint, other);
    }

    void meet(std::uint32_t waypoint, std::uint32_t other) {
        if (other == waypoint || met_by_[other] == waypoint) return;
        Waypoint const& from = waypoints_.all[waypoint];
        Waypoint const& to = waypoints_.all[other];
        if (!from.is_corner() && from.portal_edge == to.portal_edge) return;
        double const length = distance(from.point, to.point);
        if (length > touching) {
            Point const direction = unit(to.point - from.point);
            if (from.is_corner() && !bends_around(from, direction)) return;
            if (to.is_corner() && !(bends_around(to, direction) && leads_inside(to, Point{} - direction))) return;
        }
        met_by_[other] = waypoint;
        met_.push_back({other, length});
    }

    void finish(std::uint32_t waypoint) {
        std::sort(met_.begin(), met_.end(),
                  [](WaypointLink const& a, WaypointLink const& b) { return a.waypoint < b.waypoint; });
        for (WaypointLink const& link : met_) links_.emplace_back(waypoint, link);
        met_.clear();
    }

    Mesh const& mesh_;
    Waypoints& waypoints_;
    /// By waypoint, the last one that met it.
    std::vector<std::uint32_t> met_by_;
    std::vector<WaypointLink> met_;
    std::vector<std::pair<std::uint32_t, Outlook>> outlooks_;
    std::vector<std::pair<std::uint32_t, WaypointLink>> links_;
};

}  // namespace

std::vector<Wedge> fan_from(Mesh const& mesh, Wedge first) {
    std::uint32_t const vertex = mesh.triangles()[first.triangle].corner[first.corner];
    std::vector<Wedge> fan;
    for (Wedge wedge = first;;) {
        fan.push_back(wedge);
        std::uint32_t const next = mesh.triangles()[wedge.triangle].neighbour[after(wedge.corner)];
        if (next == none) return fan;
        wedge = {next, corner_of(mesh.triangles()[next], vertex)};
    }
}

std::vector<Wedge> fan_of(Mesh const& mesh, Waypoint const& corner) {
    auto const corners = mesh.corners(corner.first_triangle);
    return fan_from(
        mesh, {corner.first_triangle,
               static_cast<std::size_t>(std::find(corners.begin(), corners.end(), corner.point) - corners.begin())});
}

bool bends_around(Waypoint const& corner, Point direction) {
    double const right = cross(direction, corner.right_wall);
    double const left = cross(direction, corner.left_wall);
    return (right >= -in_line && left >= -in_line) || (right <= in_line && left <= in_line);
}

bool leads_inside(Waypoint const& corner, Point direction) {
    return cross(corner.left_wall, direction) <= in_line || cross(direction, corner.right_wall) <= in_line;
}

Waypoints waypoints_of(Mesh const& mesh, std::vector<PortalEdge> const& portal_edges) {
    Waypoints result;
    std::vector<std::vector<Wedge>> fans;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> corners_at;
    for_each_fan(mesh, [&](std::uint32_t vertex, std::vector<Wedge> const& fan) {
        Waypoint corner;
        corner.point = mesh.vertices()[vertex];
        corner.right_wall = unit(mesh.edge(fan.front().triangle, fan.front().corner).from - corner.point);
        corner.left_wall = unit(mesh.edge(fan.back().triangle, fan.back().corner).to - corner.point);
        double const turn = cross(corner.right_wall, corner.left_wall);
        bool const whole_turn = std::abs(turn) <= in_line && dot(corner.right_wall, corner.left_wall) > 0;
        if (turn >= -in_line && !(whole_turn && fan.size() > 1)) return;
        corner.spread_end = spread_end(mesh, corner, fan);
        corner.first_triangle = fan.front().triangle;
        corners_at.emplace_back(vertex, static_cast<std::uint32_t>(result.all.size()));
        result.all.push_back(corner);
        fans.push_back(fan);
    });
    result.corners_at = grouped(mesh.vertices().size(), corners_at);

    std::vector<std::vector<std::uint32_t>> triangles_at_portal_points;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> portal_points_in;
    for (std::uint32_t portal_edge = 0; portal_edge < portal_edges.size(); ++portal_edge) {
        result.portal_edge_begin.push_back(static_cast<std::uint32_t>(result.all.size()));
        for (Point const point : portal_edges[portal_edge].points) {
            triangles_at_portal_points.push_back(mesh.touched(mesh.nearest(point)));
            for (std::uint32_t const triangle : triangles_at_portal_points.back())
                portal_points_in.emplace_back(triangle, static_cast<std::uint32_t>(result.all.size()));
            result.all.push_back({point, portal_edge, {}, {}, point, none});
        }
    }
    result.portal_edge_begin.push_back(static_cast<std::uint32_t>(result.all.size()));
    result.portal_points_in = grouped(mesh.triangles().size(), portal_points_in);

    Lookout lookout(mesh, result);
    std::uint32_t waypoint = 0;
    for (auto const& fan : fans) lookout.look_from_corner(waypoint++, fan);
    for (auto const& triangles : triangles_at_portal_points) lookout.look_from_portal_point(waypoint++, triangles);
    lookout.give_lists();
    return result;
}

}  // namespace pedflux::engine::navigation
