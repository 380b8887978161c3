#include "engine/simulation/world/floor_plan.h"

#include "engine/geometry/checks.h"
#include "engine/geometry/polygons.h"
#include "engine/model/document.h"
#include "engine/scene/goal_lines.h"
#include "engine/simulation/world/contacts.h"

#include <pedflux/geometry.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

/// Barriers and connections within this height over a floor (metres) take their area from it.
constexpr double headroom = 2;
/// Thickness assumed for barriers that have none (metres).
constexpr double thin_wall = 0.02;
/// Shares of the speed on level ground at which agents walk up and down stairs, in the plan: 0.610 and 0.694 of
/// 1.34 m/s (Weidmann, "Transporttechnik der Fussgaenger", 1993).
constexpr double stairs_up = 0.610 / 1.34;
constexpr double stairs_down = 0.694 / 1.34;

Point plan_of(Vector corner) { return {corner.x, corner.z}; }

std::vector<Triangle> faces_of(SceneState const& state) {
    std::vector<Triangle> faces;
    for (Tri3d face : state.geometry->AsMeshGeometry()->GetFaces()) {
        faces.push_back(
            {vector_of(face.GetFirstVertex()), vector_of(face.GetSecondVertex()), vector_of(face.GetThirdVertex())});
    }
    return faces;
}

std::vector<Triangle> walkable_faces_of(SceneState const& state) {
    auto faces = upward_faces_of(state);
    if (faces.empty()) {
        refuse(fmt::format("{} has no face that looks upwards, so nobody can walk on it", title_of(state)));
    }
    return faces;
}

double plan_area(Triangle const& face) {
    return std::abs(orientation(plan_of(face[0]), plan_of(face[1]), plan_of(face[2]))) / 2;
}
double true_area(Triangle const& face) { return length(cross(face[1] - face[0], face[2] - face[0])) / 2; }

/// The rectangle around a line that reaches `to_left` and `to_right` of it (metres).
Polygon strip(Segment line, double to_left, double to_right) {
    Point const left = unit(turned_left(line.to - line.from));
    return {
        {line.from - to_right * left, line.to - to_right * left, line.to + to_left * left, line.from + to_left * left},
        {}};
}

/// The area that a barrier covers in the plan: its faces, and thin strips under the vertical ones.
Polygons footprint_of(std::vector<Triangle> const& faces) {
    std::vector<std::array<Point, 3>> triangles;
    Polygons parts;
    for (auto const& face : faces) {
        triangles.push_back({plan_of(face[0]), plan_of(face[1]), plan_of(face[2])});
        for (std::size_t i = 0; i < 3; ++i) {
            Segment const edge{plan_of(face[i]), plan_of(face[(i + 1) % 3])};
            bool const is_upright = plan_area(face) < thin_wall * thin_wall;
            if (is_upright && length(edge) > 0) parts.push_back(strip(edge, thin_wall / 2, thin_wall / 2));
        }
    }
    auto const solid = united(triangles);
    parts.insert(parts.end(), solid.begin(), solid.end());
    return united(parts);
}

struct Box {
    Vector least{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
                 std::numeric_limits<double>::infinity()};
    Vector most = -least;
};

Box box_of(std::vector<Triangle> const& faces) {
    Box box;
    for (auto const& face : faces) {
        for (Vector const corner : face) {
            box.least = smaller(box.least, corner);
            box.most = larger(box.most, corner);
        }
    }
    return box;
}

bool stands_on(Box const& box, Ground const& ground) {
    double low = 0;
    double high = 0;
    if (!ground.heights_in(plan_of(box.least), plan_of(box.most), low, high)) return false;
    return box.least.y < high + headroom && box.most.y > low;
}

/// The part of a face between two heights, in the plan; empty when there is none.
Ring part_between(Triangle const& face, double low, double high) {
    std::vector<Vector> corners(face.begin(), face.end());
    for (double const sign : {1.0, -1.0}) {
        double const bound = sign > 0 ? low : -high;
        std::vector<Vector> kept;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            Vector const from = corners[i];
            Vector const to = corners[(i + 1) % corners.size()];
            double const from_over = sign * from.y - bound;
            double const to_over = sign * to.y - bound;
            if (from_over >= 0) kept.push_back(from);
            if ((from_over > 0 && to_over < 0) || (from_over < 0 && to_over > 0)) {
                kept.push_back(from + (from_over / (from_over - to_over)) * (to - from));
            }
        }
        corners = std::move(kept);
    }
    Ring ring;
    for (Vector const corner : corners) ring.push_back(plan_of(corner));
    return ring.size() >= 3 ? ring : Ring();
}

/// A connection while the plan is built.
struct Draft {
    ConnectionState const* state;
    std::vector<Triangle> faces;
    Polygons area;
};

class FloorPlanBuilder {
  public:
    explicit FloorPlanBuilder(Document const& document) : document_(document) {}

    FloorPlan build() {
        add_floors();
        add_connections();
        take_connections_from_floors();
        for (std::size_t region = 0; region < plan_.surfaces.size(); ++region) {
            if (plan_.surfaces[region].walkable.empty()) {
                refuse(fmt::format("{} has no area that can be walked on: barriers cover all of it", titles_[region]));
            }
        }
        add_doorways();
        plan_.servers = server_layouts_of(document_, plan_);
        return std::move(plan_);
    }

  private:
    void add_surface(SceneState const& state, SurfaceKind kind, Polygons walkable, std::vector<Triangle> faces) {
        plan_.grounds.emplace_back(faces);
        plan_.surfaces.push_back({state.id, state.name, kind, std::move(walkable), std::move(faces)});
        plan_.inclines.emplace_back();
        titles_.push_back(title_of(state));
    }

    void add_floors() {
        for (auto const* const floor : document_.objects<FloorState>()) {
            if (!floor->enabled) continue;
            auto faces = walkable_faces_of(*floor);
            auto area = area_of(faces);
            add_surface(*floor, SurfaceKind::LEVEL, std::move(area), std::move(faces));
        }
        plan_.floor_count = plan_.surfaces.size();
        if (plan_.floor_count == 0) refuse("The project has no enabled floor, so nobody can walk in it");
        for (auto const* const barrier : document_.objects<BarrierState>()) {
            if (!barrier->enabled) continue;
            auto const faces = faces_of(*barrier);
            auto const box = box_of(faces);
            auto const footprint = footprint_of(faces);
            for (std::size_t floor = 0; floor < plan_.floor_count; ++floor) {
                auto& walkable = plan_.surfaces[floor].walkable;
                if (stands_on(box, plan_.grounds[floor])) walkable = difference(walkable, footprint);
            }
        }
    }

    void add_connections() {
        for (auto const* const state : document_.objects<ConnectionState>()) {
            bool const is_surface = state->geometry->AsMeshGeometry() != nullptr;
            if (!state->enabled || !is_surface) continue;
            Draft draft{state, walkable_faces_of(*state), {}};
            draft.area = area_of(draft.faces);
            auto const region = static_cast<navigation::RegionIndex>(plan_.surfaces.size());
            auto const ends = end_goal_lines(*state->geometry);
            join(draft, region, ends.ball, ends.box, true);
            join(draft, region, ends.box, ends.ball, false);
            bool const is_stair = dynamic_cast<StairState const*>(state) != nullptr;
            add_surface(*state, is_stair ? SurfaceKind::STAIR : SurfaceKind::LEVEL, draft.area, draft.faces);
            plan_.inclines.back() = incline_of(draft, ends.ball, ends.box, is_stair);
            plan_.passageways.push_back(
                {region, title_of(*state), state->gated, state->direction != ConnectionObjectDirection::BOX_TO_BALL,
                 state->direction != ConnectionObjectDirection::BALL_TO_BOX, state->distance_added.value_or(0)});
            drafts_.push_back(std::move(draft));
        }
    }

    static Incline incline_of(Draft const& draft, LineSeg3d ball, LineSeg3d box, bool is_stair) {
        double plan = 0;
        double slope = 0;
        for (auto const& face : draft.faces) {
            plan += plan_area(face);
            slope += true_area(face);
        }
        Vector const rise = vector_of(box.GetMidpoint()) - vector_of(ball.GetMidpoint());
        Incline incline;
        incline.length_factor = std::max(1.0, slope / plan);
        incline.limit = draft.state->speed_limit;
        bool const is_level = std::abs(rise.y) < 0.01;
        if (!is_level) incline.uphill = unit(plan_of(rise));
        incline.up_factor = is_stair && !is_level ? stairs_up : 1 / incline.length_factor;
        incline.down_factor = is_stair && !is_level ? stairs_down : 1 / incline.length_factor;
        return incline;
    }

    /// Lengthens the connection by the reach of its end, and joins it to the floors there.
    void join(Draft& draft, navigation::RegionIndex region, LineSeg3d end, LineSeg3d other_end, bool at_ball) {
        auto const contact_end = end_of(end, other_end);
        bool joined = false;
        for (std::size_t floor = 0; floor < plan_.floor_count; ++floor) {
            for (Segment const joint : joints_of(contact_end, plan_.surfaces[floor].walkable, plan_.grounds[floor])) {
                plan_.joints.push_back(
                    {region, static_cast<navigation::RegionIndex>(floor), joint, contact_end.outward, at_ball});
                joined = true;
            }
        }
        if (!joined) {
            Vector const middle = vector_of(end.GetMidpoint());
            bool const is_level = std::abs(middle.y - vector_of(other_end.GetMidpoint()).y) < 0.01;
            refuse(fmt::format("{} touches no floor at its {} end, at ({}, {}, {}){}", title_of(*draft.state),
                               at_ball ? "ball" : "box", text_of(middle.x), text_of(middle.y), text_of(middle.z),
                               is_level ? "; the ends of a level connection are those of its longer side: one that is "
                                          "wider than long must be drawn longer, into the floors on both sides"
                                        : ""));
        }
        auto parts = draft.area;
        parts.push_back(strip(contact_end.line, end_reach, 2 * thin_wall));
        draft.area = united(parts);
    }

    /// Where a connection passes over or under a floor by less than the headroom, only the connection can be walked on.
    void take_connections_from_floors() {
        for (std::size_t floor = 0; floor < plan_.floor_count; ++floor) {
            Polygons taken;
            for (std::size_t i = 0; i < drafts_.size(); ++i) {
                auto const region = plan_.floor_count + i;
                double low = 0;
                double high = 0;
                auto const box = box_of(drafts_[i].faces);
                if (!plan_.grounds[floor].heights_in(plan_of(box.least), plan_of(box.most), low, high)) continue;
                for (auto const& face : drafts_[i].faces) {
                    if (auto part = part_between(face, low - headroom, high + headroom); !part.empty()) {
                        taken.push_back({std::move(part), {}});
                    }
                }
                for (auto const& joint : plan_.joints) {
                    if (joint.connection != region || joint.floor != floor) continue;
                    bool const is_left = dot(turned_left(joint.line.to - joint.line.from), joint.to_floor) > 0;
                    double const back = end_reach + thin_wall;
                    taken.push_back(strip(joint.line, is_left ? 0 : back, is_left ? back : 0));
                }
            }
            auto& walkable = plan_.surfaces[floor].walkable;
            if (!taken.empty()) walkable = difference(walkable, united(taken));
        }
    }

    void add_doorways() {
        for (auto const* const portal : document_.objects<PortalState>()) {
            if (!portal->enabled) continue;
            auto const goal_line = centre_goal_line(*portal->geometry);
            plan_.doorways.push_back(
                {portal->id, title_of(*portal), line_on_floor(*portal, goal_line), portal->placement});
        }
    }

    navigation::RegionLine line_on_floor(PortalState const& portal, LineSeg3d goal_line) const {
        std::optional<navigation::RegionLine> found;
        double least_offset = portal_height_tolerance;
        for (std::size_t floor = 0; floor < plan_.floor_count; ++floor) {
            auto const contact = contact_of(goal_line, plan_.surfaces[floor].walkable, plan_.grounds[floor]);
            if (!contact || contact->height_offset > least_offset) continue;
            least_offset = contact->height_offset;
            found = {static_cast<navigation::RegionIndex>(floor), contact->line};
        }
        if (!found) {
            Vector const from = vector_of(goal_line.GetStartPoint());
            Vector const to = vector_of(goal_line.GetEndPoint());
            refuse(
                fmt::format("{} lies on no floor: its line from {} to {} at the height {} must lie on a walkable "
                            "floor or within 0.3 m of its edge, at most 0.5 m above or below",
                            title_of(portal), text_of(plan_of(from)), text_of(plan_of(to)), text_of(from.y)));
        }
        return *found;
    }

    Document const& document_;
    FloorPlan plan_;
    std::vector<std::string> titles_;
    std::vector<Draft> drafts_;
};

}  // namespace

FloorPlan floor_plan_of(Document const& document) { return FloorPlanBuilder(document).build(); }

}  // namespace pedflux::engine
