#include "engine/navigation/goals.h"

#include "engine/navigation/openings.h"

#include <algorithm>
#include <optional>

namespace pedflux::engine::navigation {

namespace {

/// The part of a line within the tolerance of a triangle.
std::optional<Part> part_in(Mesh const& mesh, std::uint32_t triangle, Segment line) {
    Part part;
    for (std::size_t i = 0; i < 3; ++i) {
        Segment const edge = mesh.edge(triangle, i);
        Point const inward = turned_left(unit(edge.to - edge.from));
        double const from = dot(line.from - edge.from, inward) + line_tolerance;
        double const to = dot(line.to - edge.from, inward) + line_tolerance;
        if (from < 0 && to < 0) return std::nullopt;
        if (from < 0) part.from = std::max(part.from, from / (from - to));
        if (to < 0) part.to = std::min(part.to, from / (from - to));
    }
    if (part.from >= part.to) return std::nullopt;
    return part;
}

class GoalLookout {
  public:
    GoalLookout(RegionMap const& region, double metre, RegionGoals& goals)
        : region_(region), metre_(metre), mesh_(region.clear_mesh), goals_(goals), best_(region.waypoints.all.size()) {}

    void look_from_line(Segment line) {
        Point const aside = turned_left(unit(line.to - line.from));
        auto const source = static_cast<std::uint32_t>(goals_.sources.size());
        goals_.sources.push_back({line, aside});
        goals_.sources.push_back({line, Point{} - aside});
        for (std::uint32_t triangle = 0; triangle < mesh_.triangles().size(); ++triangle) {
            auto const part = part_in(mesh_, triangle, line);
            if (!part) continue;
            Segment const seen{at(line, part->from), at(line, part->to)};
            // An observer on the left of the line sees its beginning on the left hand; one on the right, on the right
            // hand.
            look_aside(source, triangle, {seen.from}, {seen.to}, aside);
            look_aside(source + 1, triangle, {seen.to}, {seen.from}, Point{} - aside);
        }
    }

    void look_from_point(Point point) {
        auto const source = static_cast<std::uint32_t>(goals_.sources.size());
        goals_.sources.push_back({{point, point}, {}});
        FromPoint const eye{point};
        for (std::uint32_t const triangle : mesh_.touched(mesh_.nearest(point))) {
            auto const& corner = mesh_.triangles()[triangle].corner;
            see_all(source, triangle);
            for (std::size_t i = 0; i < 3; ++i) {
                Segment const edge = mesh_.edge(triangle, i);
                if (orientation(edge.from, edge.to, point) > touching * length(edge))
                    look(source, eye, triangle, i, {edge.from, corner[after(i)]}, {edge.to, corner[before(i)]});
            }
        }
    }

    void give_lists() {
        goals_.views = grouped(mesh_.triangles().size(), views_);
        for (std::uint32_t waypoint = 0; waypoint < best_.size(); ++waypoint)
            if (best_[waypoint]) goals_.sights.push_back({waypoint, best_[waypoint]->distance, best_[waypoint]->goal});
    }

    void reach_waypoints_in_areas() {
        for (std::uint32_t waypoint = 0; waypoint < best_.size(); ++waypoint)
            if (Point const point = region_.waypoints.all[waypoint].point; contains(goals_.areas, point))
                best_[waypoint] = {waypoint, 0, point};
    }

  private:
    void look_aside(std::uint32_t source, std::uint32_t triangle, Bound first, Bound last, Point direction) {
        // Looking to the left of a line that leads away to the right, its end is on the right.
        Bound const right = last;
        Bound const left = first;
        FromLine const eye{direction};
        views_.push_back({triangle, {source, right.point, left.point}});
        see_triangle_waypoints(source, eye, {triangle, right, left});
        for (std::size_t i = 0; i < 3; ++i) {
            Segment const edge = mesh_.edge(triangle, i);
            if (cross(edge.to - edge.from, direction) >= 0) continue;
            auto const& corner = mesh_.triangles()[triangle].corner;
            Bound const edge_right{edge.from, corner[after(i)]};
            Bound const edge_left{edge.to, corner[before(i)]};
            Bound const inner_right = eye.leftness(right.point, edge_right.point) > 0 ? edge_right : right;
            Bound const inner_left = eye.leftness(left.point, edge_left.point) < 0 ? edge_left : left;
            if (eye.leftness(inner_right.point, inner_left.point) > 0)
                look(source, eye, triangle, i, inner_right, inner_left);
        }
    }

    template <class Eye>
    void look(std::uint32_t source, Eye const& eye, std::uint32_t triangle, std::size_t edge, Bound right, Bound left) {
        look_through(
            mesh_, eye, triangle, edge, right, left,
            [&](View const& view) {
                views_.push_back({view.triangle, {source, view.right.point, view.left.point}});
                see_portal_points(source, eye, view);
                return true;
            },
            [&](std::uint32_t vertex) { see_corners(source, vertex); });
    }

    /// A point is visible from all of a triangle that contains it.
    void see_all(std::uint32_t source, std::uint32_t triangle) {
        Point const point = goals_.sources[source].line.from;
        views_.push_back({triangle, {source, point, point}});
        for (std::uint32_t const vertex : mesh_.triangles()[triangle].corner) see_corners(source, vertex);
        for (std::uint32_t const waypoint : region_.waypoints.portal_points_in[triangle]) note(source, waypoint);
    }

    void see_triangle_waypoints(std::uint32_t source, FromLine const& eye, View const& view) {
        see_portal_points(source, eye, view);
        for (std::uint32_t const vertex : mesh_.triangles()[view.triangle].corner)
            if (sees(eye, view.right.point, view.left.point, mesh_.vertices()[vertex], 0)) see_corners(source, vertex);
    }

    template <class Eye>
    void see_portal_points(std::uint32_t source, Eye const& eye, View const& view) {
        for (std::uint32_t const waypoint : region_.waypoints.portal_points_in[view.triangle])
            if (sees(eye, view.right.point, view.left.point, region_.waypoints.all[waypoint].point, touching))
                note(source, waypoint);
    }

    void see_corners(std::uint32_t source, std::uint32_t vertex) {
        for (std::uint32_t const waypoint : region_.waypoints.corners_at[vertex]) {
            Waypoint const& corner = region_.waypoints.all[waypoint];
            Point const away = nearest_point(goals_.sources[source].line, corner.point) - corner.point;
            if (length(away) <= touching || leads_inside(corner, unit(away))) note(source, waypoint);
        }
    }

    void note(std::uint32_t source, std::uint32_t waypoint) {
        Point const from = region_.waypoints.all[waypoint].point;
        Point const goal = nearest_point(goals_.sources[source].line, from);
        double const walked = metre_ * distance(from, goal);
        if (!best_[waypoint] || walked < best_[waypoint]->distance) best_[waypoint] = {waypoint, walked, goal};
    }

    RegionMap const& region_;
    double metre_;
    Mesh const& mesh_;
    RegionGoals& goals_;
    std::vector<std::optional<GoalSight>> best_;
    std::vector<std::pair<std::uint32_t, GoalView>> views_;
};

}  // namespace

bool sees_goal(GoalSource const& source, GoalView const& view, Point point) {
    if (!source.is_point()) return sees(FromLine{source.direction}, view.right, view.left, point, touching);
    return sees(FromPoint{source.line.from}, view.right, view.left, point, touching);
}

RegionGoals goals_in(RegionMap const& region, double metre, std::vector<Segment> const& lines, Polygons const& areas) {
    RegionGoals goals;
    if (lines.empty() && areas.empty()) return goals;
    goals.areas = areas;
    std::vector<Segment> all = lines;
    for (Polygon const& area : areas) {
        auto const add_edges = [&all](Ring const& ring) {
            for (std::size_t i = 0; i < ring.size(); ++i) all.push_back({ring[i], ring[(i + 1) % ring.size()]});
        };
        add_edges(area.outline);
        for (Ring const& hole : area.holes) add_edges(hole);
    }
    GoalLookout lookout(region, metre, goals);
    for (Segment const line : all)
        for (Part const& part : parts_inside(line, region.clear_reach)) {
            Segment const seen{region.clear_mesh.nearest(at(line, part.from)).point,
                               region.clear_mesh.nearest(at(line, part.to)).point};
            if (length(seen) > touching) lookout.look_from_line(seen);
            lookout.look_from_point(seen.from);
            lookout.look_from_point(seen.to);
        }
    lookout.reach_waypoints_in_areas();
    lookout.give_lists();
    return goals;
}

}  // namespace pedflux::engine::navigation
