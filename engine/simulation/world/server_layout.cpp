#include "engine/simulation/world/server_layout.h"

#include "engine/geometry/access.h"
#include "engine/geometry/checks.h"
#include "engine/model/document.h"
#include "engine/scene/server_states.h"
#include "engine/simulation/world/contacts.h"
#include "engine/simulation/world/floor_plan.h"
#include "engine/simulation/world/lines.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine {

namespace {

/// From the middle of one body to the next in a queue that says nothing else, and the least that bodies need (metres).
constexpr double usual_spacing = 0.7;
constexpr double least_spacing = 0.5;
/// Points of the line that are nearer to each other than this are one.
constexpr double same_point = 0.01;

std::vector<Point> line_of(std::vector<Vector> const& vertices) {
    std::vector<Point> line;
    for (auto const& vertex : vertices) {
        Point const point{vertex.x, vertex.z};
        if (line.empty() || distance(line.back(), point) > same_point) line.push_back(point);
    }
    return line;
}

/// The surface under the point at which people are served, of several the one that is nearest in height.
navigation::RegionIndex region_at(FloorPlan const& plan, Vector place) {
    Point const point{place.x, place.z};
    navigation::RegionIndex nearest = navigation::none;
    double least_offset = PORTAL_HEIGHT_TOLERANCE;
    for (navigation::RegionIndex region = 0; region < plan.surfaces.size(); ++region) {
        if (!contains(plan.surfaces[region].walkable, point)) continue;
        double const offset = std::abs(plan.grounds[region].height(point) - place.y);
        if (offset > least_offset) continue;
        least_offset = offset;
        nearest = region;
    }
    return nearest;
}

double spacing_of(ServerState const& server) {
    auto const* const automatic = server.capacity ? std::get_if<AutoCapacity>(&*server.capacity) : nullptr;
    return automatic != nullptr ? std::max(automatic->spacing, least_spacing) : usual_spacing;
}

}  // namespace

std::vector<ServerLayout> server_plans_of(Document const& document, FloorPlan const& plan) {
    std::vector<ServerLayout> servers;
    for (auto const* const server : document.objects<ServerState>()) {
        if (!server->enabled) continue;
        auto const& vertices = polyline_of(*server->geometry->AsPolylineGeometry()).vertices;
        ServerLayout planned;
        planned.id = server->id;
        planned.title = title_of(*server);
        planned.region = region_at(plan, vertices.front());
        planned.line = line_of(vertices);
        planned.spacing = spacing_of(*server);
        if (server->capacity) planned.capacity = static_cast<std::size_t>(capacity_limit_of(*server));
        if (planned.region == navigation::none) {
            planned.problem = planned.title + " stands on no walkable surface: its first point, at " +
                              text_of(planned.line.front()) + " and the height " + text_of(vertices.front().y) +
                              ", must lie on a floor or connection, at most 0.5 m above or below";
        } else if (lines_to_go_to(planned, plan).empty()) {
            planned.problem = planned.title + " has no line to queue along that can be walked on";
        }
        servers.push_back(std::move(planned));
    }
    return servers;
}

std::uint32_t server_of(FloorPlan const& plan, GlobalId const& object) {
    auto const found =
        std::ranges::find_if(plan.servers, [&](auto const& one) { return one.id.InternalEquals(object); });
    return found == plan.servers.end() ? no_server : static_cast<std::uint32_t>(found - plan.servers.begin());
}

std::vector<navigation::RegionLine> lines_to_go_to(ServerLayout const& server, FloorPlan const& plan) {
    std::vector<navigation::RegionLine> lines;
    for (std::size_t i = 1; i < server.line.size(); ++i) {
        for (Segment const part :
             parts_inside({server.line[i - 1], server.line[i]}, plan.surfaces[server.region].walkable)) {
            if (length(part) > same_point) lines.push_back({server.region, part});
        }
    }
    return lines;
}

}  // namespace pedflux::engine
