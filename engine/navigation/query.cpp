#include "engine/navigation/query.h"

#include "engine/navigation/way_through.h"

#include <optional>

namespace pedflux::engine::navigation {

namespace {

/// Ways that differ less (metres) count as equally long. The one with the shorter remaining distance is then preferred.
constexpr double equally_long = 1e-7;

/// One query. Points are in the clear area; `place` is the point of it nearest to the position.
class Question {
  public:
    Question(RegionMap const& region, Routes const& routes, RegionIndex index, Mesh::Place place)
        : region_(region),
          metre_(routes.metre_costs[index]),
          ways_(routes.ways),
          goals_(routes.goals[index]),
          views_(routes.views[index]),
          place_(place) {}

    /// The answer according to the hint, as long as it holds.
    std::optional<RouteStep> held(RouteHint const& hint) const;
    /// The best of all visible candidates; updates the hint.
    RouteStep fresh(RouteHint& hint) const;

  private:
    struct Best {
        double distance = unreachable;
        double rest = unreachable;
        std::uint32_t view = none;
        bool to_goal = false;

        void offer(Best const& other) {
            if (other.distance < distance - equally_long ||
                (other.distance < distance + equally_long && other.rest < rest - equally_long))
                *this = other;
        }
    };

    Waypoint const& waypoint(std::uint32_t number) const { return region_.waypoints.all[number]; }
    double rest(std::uint32_t number) const { return ways_.rest[region_.first_waypoint + number]; }
    double walk_to(Point point) const { return metre_ * distance(place_.point, point); }

    Onward const& onward(std::uint32_t number) const { return ways_.onward[region_.first_waypoint + number]; }
    bool in_view(WaypointView const& view, Point behind) const {
        if (view.right == none && view.left == none) return true;
        auto const& vertices = region_.clear_mesh.vertices();
        return sees(FromPoint{waypoint(view.waypoint).point}, view.right == none ? behind : vertices[view.right],
                    view.left == none ? behind : vertices[view.left], place_.point, touching);
    }
    bool in_view(WaypointView const& view) const {
        return in_view(view, bound_behind(waypoint(view.waypoint), onward(view.waypoint)));
    }

    Best best_goal() const;
    Best best_waypoint() const;
    void note_portal_points_in_sight(RouteHint& hint) const;

    RouteStep to_goal(std::uint32_t view) const;
    RouteStep to_corner(RouteHint const& hint) const;
    RouteStep to_portal_edge(RouteHint const& hint) const;

    RegionMap const& region_;
    double metre_;
    Ways const& ways_;
    RegionGoals const& goals_;
    Lists<WaypointView> const& views_;
    Mesh::Place place_;
};

RouteStep Question::to_goal(std::uint32_t view) const {
    RouteStep step;
    Segment const line = goals_.sources[goals_.views.items[view].source].line;
    step.aim = nearest_point(line, place_.point);
    step.target = line;
    step.distance = walk_to(step.aim);
    step.kind = step.distance <= touching ? RouteStep::Kind::ARRIVED : RouteStep::Kind::GOAL;
    return step;
}

RouteStep Question::to_corner(RouteHint const& hint) const {
    RouteStep step;
    Waypoint const& corner = waypoint(hint.aimed);
    step.kind = RouteStep::Kind::CORNER;
    step.aim = corner.point;
    step.onward = onward(hint.aimed).point;
    step.target = {corner.point, hint.spread_in_sight ? corner.spread_end : corner.point};
    step.distance = walk_to(corner.point) + hint.rest;
    if (squared_length(place_.point - step.aim) <= touching * touching) {
        step.aim = onward(hint.aimed).point;
        step.target = {step.aim, step.aim};
    }
    return step;
}

RouteStep Question::to_portal_edge(RouteHint const& hint) const {
    RouteStep step;
    std::uint32_t const point = hint.aimed;
    step.kind = RouteStep::Kind::CONNECTION;
    step.aim = waypoint(point).point;
    step.distance = walk_to(step.aim) + rest(point);
    std::uint32_t const first = std::max(point, hint.first_in_sight + 1) - 1;
    for (std::uint32_t i = first; i < std::min(point + 1, hint.last_in_sight); ++i) {
        if (rest(i) == unreachable || rest(i + 1) == unreachable) continue;
        WayThrough const way =
            way_through(place_.point, {waypoint(i).point, waypoint(i + 1).point}, rest(i), rest(i + 1), metre_);
        if (way.distance >= step.distance) continue;
        step.distance = way.distance;
        step.aim = way.point;
    }
    step.target = {waypoint(hint.first_in_sight).point, waypoint(hint.last_in_sight).point};
    PortalEdge const& portal_edge = region_.portal_edges[waypoint(point).portal_edge];
    step.connection = portal_edge.connection;
    step.forward = portal_edge.forward;
    return step;
}

std::optional<RouteStep> Question::held(RouteHint const& hint) const {
    if (hint.to_goal) {
        GoalView const& view = goals_.views.items[hint.aimed];
        if (!sees_goal(goals_.sources[view.source], view, place_.point)) return std::nullopt;
        return to_goal(hint.aimed);
    }
    if (!in_view({hint.aimed, hint.right, hint.left}, hint.behind)) return std::nullopt;
    Waypoint const& aimed = waypoint(hint.aimed);
    if (aimed.is_corner()) {
        if (squared_length(place_.point - aimed.point) <= touching * touching) return std::nullopt;
        return to_corner(hint);
    }
    RouteStep const step = to_portal_edge(hint);
    bool const slid_off = (hint.aimed > hint.first_in_sight && step.aim == waypoint(hint.aimed - 1).point) ||
                          (hint.aimed < hint.last_in_sight && step.aim == waypoint(hint.aimed + 1).point);
    if (slid_off) return std::nullopt;
    return step;
}

Question::Best Question::best_goal() const {
    Best best;
    if (goals_.sources.empty()) return best;
    std::uint32_t const begin = goals_.views.begin[place_.triangle];
    std::uint32_t const end = goals_.views.begin[place_.triangle + 1];
    for (std::uint32_t i = begin; i < end; ++i) {
        GoalView const& view = goals_.views.items[i];
        GoalSource const& source = goals_.sources[view.source];
        double const walked = walk_to(nearest_point(source.line, place_.point));
        if (walked < best.distance && sees_goal(source, view, place_.point)) best.offer({walked, 0, i, true});
    }
    return best;
}

Question::Best Question::best_waypoint() const {
    Best best;
    std::uint32_t last_portal_point = none;
    std::uint32_t const begin = views_.begin[place_.triangle];
    std::uint32_t const end = views_.begin[place_.triangle + 1];
    for (std::uint32_t i = begin; i < end; ++i) {
        WaypointView const& view = views_.items[i];
        double const on = rest(view.waypoint);
        if (on == unreachable) continue;
        double const whole = walk_to(waypoint(view.waypoint).point) + on;
        if (waypoint(view.waypoint).is_corner()) {
            if (whole < best.distance + equally_long && in_view(view)) best.offer({whole, on, i, false});
            continue;
        }
        if (view.waypoint == last_portal_point || !in_view(view)) continue;
        best.offer({whole, on, i, false});
        if (last_portal_point != none && last_portal_point + 1 == view.waypoint &&
            waypoint(last_portal_point).portal_edge == waypoint(view.waypoint).portal_edge) {
            WayThrough const way =
                way_through(place_.point, {waypoint(last_portal_point).point, waypoint(view.waypoint).point},
                            rest(last_portal_point), on, metre_);
            best.offer({way.distance, on, i, false});
        }
        last_portal_point = view.waypoint;
    }
    return best;
}

/// Extends the hint to the range of visible points of its portal edge.
void Question::note_portal_points_in_sight(RouteHint& hint) const {
    std::uint32_t const aimed = hint.aimed;
    hint.first_in_sight = hint.last_in_sight = aimed;
    auto const views = views_[place_.triangle];
    auto const seen = [&](std::uint32_t point) {
        auto view = std::lower_bound(
            views.begin(), views.end(), point,
            [](WaypointView const& candidate, std::uint32_t number) { return candidate.waypoint < number; });
        for (; view != views.end() && view->waypoint == point; ++view)
            if (in_view(*view)) return true;
        return false;
    };
    auto const& portal_edge_begin = region_.waypoints.portal_edge_begin;
    std::uint32_t const portal_edge = waypoint(aimed).portal_edge;
    while (hint.first_in_sight > portal_edge_begin[portal_edge] && seen(hint.first_in_sight - 1)) --hint.first_in_sight;
    while (hint.last_in_sight + 1 < portal_edge_begin[portal_edge + 1] && seen(hint.last_in_sight + 1))
        ++hint.last_in_sight;
}

RouteStep Question::fresh(RouteHint& hint) const {
    Best best = best_goal();
    best.offer(best_waypoint());
    std::uint32_t const corner_before = hint.triangle == none || hint.to_goal ? none : hint.aimed;
    hint.triangle = best.view == none ? none : place_.triangle;
    hint.to_goal = best.to_goal;
    if (best.view == none) return {};
    if (best.to_goal) {
        hint.aimed = best.view;
        return to_goal(best.view);
    }
    WaypointView const& view = views_.items[best.view];
    hint.aimed = view.waypoint;
    hint.right = view.right;
    hint.left = view.left;
    Waypoint const& aimed = waypoint(view.waypoint);
    if (!aimed.is_corner()) {
        note_portal_points_in_sight(hint);
        return to_portal_edge(hint);
    }
    hint.rest = rest(view.waypoint);
    hint.behind = bound_behind(aimed, onward(view.waypoint));
    if (view.waypoint != corner_before)
        hint.spread_in_sight = region_.clear_mesh.walk(place_, aimed.spread_end) == aimed.spread_end;
    return to_corner(hint);
}

}  // namespace

RouteStep next_step(RegionMap const& region, Routes const& routes, Point point, RouteHint& hint) {
    RegionGoals const& goals = routes.goals[hint.region];
    if (!goals.areas.empty() && contains(goals.areas, point)) {
        RouteStep step;
        step.kind = RouteStep::Kind::ARRIVED;
        step.aim = point;
        step.target = {point, point};
        return step;
    }
    Mesh const& mesh = region.clear_mesh;
    if (hint.triangle != none && mesh.has(hint.triangle, point)) {
        Question const question(region, routes, hint.region, {hint.triangle, point});
        if (auto step = question.held(hint)) return *step;
    }
    Mesh::Place const place = mesh.nearest(point);
    if (place.triangle == none) return {};
    Question const question(region, routes, hint.region, place);
    std::optional<RouteStep> step;
    if (place.triangle == hint.triangle) step = question.held(hint);
    if (!step) step = question.fresh(hint);
    step->distance += routes.metre_costs[hint.region] * distance(place.point, point);
    return *step;
}

}  // namespace pedflux::engine::navigation
