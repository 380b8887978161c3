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

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

/// Default and least distance from the middle of one body in a queue to the next (metres).
constexpr double usual_spacing = 0.7;
constexpr double least_spacing = 0.5;
/// Points of the line that are nearer to each other than this are merged (metres).
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
    double least_offset = portal_height_tolerance;
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

std::vector<ServerLayout> server_layouts_of(Document const& document, FloorPlan const& plan) {
    std::vector<ServerLayout> servers;
    for (auto const* const server : document.objects<ServerState>()) {
        if (!server->enabled) continue;
        auto const& vertices = polyline_of(*server->geometry->AsPolylineGeometry()).vertices;
        ServerLayout layout;
        layout.id = server->id;
        layout.title = title_of(*server);
        layout.region = region_at(plan, vertices.front());
        layout.line = line_of(vertices);
        layout.spacing = spacing_of(*server);
        if (server->capacity) layout.capacity = static_cast<std::size_t>(capacity_limit_of(*server));
        if (layout.region == navigation::none) {
            layout.problem = fmt::format(
                "{} stands on no walkable surface: its first point, at {} and the height {}, must lie on a floor or "
                "connection, at most 0.5 m above or below",
                layout.title, text_of(layout.line.front()), text_of(vertices.front().y));
        } else if (lines_to_go_to(layout, plan).empty()) {
            layout.problem = fmt::format("{} has no line to queue along that can be walked on", layout.title);
        }
        servers.push_back(std::move(layout));
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
