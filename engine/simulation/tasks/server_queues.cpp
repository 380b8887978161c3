#include "engine/simulation/tasks/server_queues.h"

#include "engine/simulation/world/floor_plan.h"

#include <algorithm>
#include <limits>

namespace pedflux::engine {

namespace {

/// At most so many places are behind the end of a line.
constexpr std::size_t most_behind = 100;

std::vector<Point> points_along(std::vector<Point> const& line, double spacing) {
    std::vector<Point> points;
    double passed = 0;
    for (std::size_t i = 1; i < line.size(); ++i) {
        Segment const part{line[i - 1], line[i]};
        for (;;) {
            double const along = static_cast<double>(points.size()) * spacing - passed;
            constexpr double rounding = 1e-6;
            if (along > length(part) + rounding) break;
            points.push_back(at(part, along / length(part)));
        }
        passed += length(part);
    }
    return points;
}

std::vector<Point> places_of(navigation::Navigation const& navigation, ServerLayout const& server) {
    std::vector<Point> places;
    for (auto const point : points_along(server.line, server.spacing)) {
        if (!places.empty() && !navigation.contains(server.region, point)) return places;
        places.push_back(navigation.nearest_clear(server.region, point));
    }
    Point const onwards = server.spacing * unit(server.line.back() - server.line[server.line.size() - 2]);
    for (std::size_t i = 0; i < most_behind; ++i) {
        Point const next = places.back() + onwards;
        if (!navigation.in_sight(server.region, places.back(), next)) break;
        places.push_back(next);
    }
    return places;
}

}  // namespace

ServerQueues server_queues_of(FloorPlan const& plan, navigation::Navigation const& navigation) {
    ServerQueues servers;
    for (auto const& layout : plan.servers) {
        auto& queue = servers.queues.emplace_back();
        if (layout.problem.empty()) queue.places = places_of(navigation, layout);
    }
    return servers;
}

bool is_open(ServerQueues const& servers, std::uint32_t server, ServerAccessPoint point) {
    if (server == no_server) return false;
    auto const& open = servers.queues[server].open;
    return (point == ServerAccessPoint::EXIT || open[entrance_side]) &&
           (point == ServerAccessPoint::ENTRANCE || open[exit_side]);
}

double server_number(ServerQueues const& servers, FloorPlan const& plan, std::uint32_t server, ServerMeasure measure) {
    auto const& queue = servers.queues[server];
    auto const& capacity = plan.servers[server].capacity;
    auto const at_server = capacity ? std::min(queue.line.size(), *capacity) : queue.line.size();
    std::size_t const served = queue.serves ? 1 : 0;
    switch (measure) {
        case ServerMeasure::SERVER_QUEUE:
            return static_cast<double>(at_server - served);
        case ServerMeasure::SERVER_QUEUE_AND_APPROACH:
            return static_cast<double>(queue.visitors - served);
        case ServerMeasure::SERVER_AVAILABLE_CAPACITY:
            break;
    }
    return capacity ? static_cast<double>(*capacity - at_server) : std::numeric_limits<double>::max();
}

std::size_t visitors_of(ServerQueues const& servers, Places const& places, PlaceIndex place) {
    return places[place].is_server() ? servers.queues[places[place].server].visitors : 0;
}

}  // namespace pedflux::engine
