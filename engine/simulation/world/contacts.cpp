#include "engine/simulation/world/contacts.h"

#include "engine/geometry/polygons.h"
#include "engine/geometry/vector.h"
#include "engine/simulation/world/lines.h"

#include <pedflux/geometry.h>

#include <array>
#include <cmath>

namespace pedflux::engine {

namespace {

/// The least vertical component of the normals of faces that can be walked on, as for the ends of connections.
constexpr double least_upward_normal = 0.01;
/// The least width of a joint (metres).
constexpr double least_joint = 0.05;

Point plan_of(Vector corner) { return {corner.x, corner.z}; }

Segment plan_of(LineSeg3d line) {
    return {plan_of(vector_of(line.GetStartPoint())), plan_of(vector_of(line.GetEndPoint()))};
}

}  // namespace

std::vector<Triangle> upward_faces_of(SceneState const& state) {
    std::vector<Triangle> faces;
    for (Tri3d triangle : state.geometry->AsMeshGeometry()->GetFaces()) {
        Triangle const face{vector_of(triangle.GetFirstVertex()), vector_of(triangle.GetSecondVertex()),
                            vector_of(triangle.GetThirdVertex())};
        if (normalized(cross(face[1] - face[0], face[2] - face[0])).y >= least_upward_normal) faces.push_back(face);
    }
    return faces;
}

Polygons area_of(std::vector<Triangle> const& faces) {
    std::vector<std::array<Point, 3>> triangles;
    for (auto const& face : faces) triangles.push_back({plan_of(face[0]), plan_of(face[1]), plan_of(face[2])});
    return united(triangles);
}

ConnectionEnd end_of(LineSeg3d line, LineSeg3d other_end) {
    Vector const middle = vector_of(line.GetMidpoint());
    ConnectionEnd end{plan_of(line), {}, middle.y};
    end.outward = unit(turned_left(end.line.to - end.line.from));
    if (dot(end.outward, plan_of(middle) - plan_of(vector_of(other_end.GetMidpoint()))) < 0) {
        end.outward = -1 * end.outward;
        std::swap(end.line.from, end.line.to);
    }
    return end;
}

std::vector<Segment> joints_of(ConnectionEnd const& end, Polygons const& floor, Ground const& ground) {
    // The edge of a floor counts as inside no more than as outside, so the test is made a little further out.
    constexpr double beyond = 0.01;
    auto const moved = [&](Segment line, double outwards) {
        return Segment{line.from + outwards * end.outward, line.to + outwards * end.outward};
    };
    std::vector<Segment> joints;
    for (Segment const part : parts_inside(moved(end.line, end_reach + beyond), floor)) {
        Segment const joint = moved(part, -beyond);
        bool const is_level = std::abs(ground.height(at(joint, 0.5)) - end.height) <= end_height_tolerance;
        if (length(joint) >= least_joint && is_level) joints.push_back(joint);
    }
    return joints;
}

std::optional<PortalContact> contact_of(LineSeg3d goal_line, Polygons const& floor, Ground const& ground) {
    auto const on_floor = line_on(floor, plan_of(goal_line), portal_reach);
    if (!on_floor) return std::nullopt;
    double const offset = std::abs(ground.height(at(*on_floor, 0.5)) - goal_line.GetMidpoint().GetY());
    if (offset > portal_height_tolerance) return std::nullopt;
    return PortalContact{*on_floor, offset};
}

}  // namespace pedflux::engine
