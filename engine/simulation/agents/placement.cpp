#include "engine/simulation/agents/placement.h"

#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/geometry/plane.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine {

namespace {

/// Side of the cells that bodies are looked up in (metres).
constexpr double cell_size = 1;
/// The gap between bodies where people come in (metres).
constexpr double gap = 0.05;
/// How many places are tried for a person in one frame.
constexpr int tries_at_portal = 6;
constexpr int tries_in_area = 60;
/// Distance of neighbouring places of an ordered placement (metres).
constexpr double slot_width = 0.55;

std::uint64_t key_of(navigation::RegionIndex region, std::int64_t column, std::int64_t row) {
    auto const part = [](std::int64_t value) { return static_cast<std::uint64_t>(value) & 0xffffff; };
    return (static_cast<std::uint64_t>(region) << 48) | (part(column) << 24) | part(row);
}

std::int64_t cell_of(double coordinate) { return static_cast<std::int64_t>(std::floor(coordinate / cell_size)); }

/// The fractions of a portal's line to try, in this order.
std::vector<double> fractions_to_try(AgentInitialPlacement placement, double line_length, std::uint32_t number,
                                     Random& random) {
    auto const slots = std::max(1, static_cast<int>(line_length / slot_width));
    std::vector<double> fractions;
    switch (placement) {
        case AgentInitialPlacement::RANDOM:
            for (int i = 0; i < tries_at_portal; ++i) fractions.push_back(random.uniform());
            break;
        case AgentInitialPlacement::EVEN:
            fractions.push_back((number % static_cast<unsigned>(slots) + 0.5) / slots);
            break;
        case AgentInitialPlacement::CENTER:
            for (int i = 0; i < slots; ++i) {
                int const slots_aside = (i + 1) / 2;
                double const offset = i % 2 == 0 ? slots_aside : -slots_aside;
                fractions.push_back(std::clamp(0.5 + offset * slot_width / line_length, 0.0, 1.0));
            }
            break;
    }
    return fractions;
}

std::optional<Spot> spot_at_portal(SimulationState const& run, std::uint32_t doorway_number,
                                   SpawnRequest const& request, Occupancy const& occupancy, Random& random) {
    Doorway const& doorway = run.plan.doorways[doorway_number];
    Segment const line = doorway.line.line;
    auto const number = run.entered_at[doorway_number];
    for (double const fraction : fractions_to_try(doorway.placement, length(line), number, random)) {
        // Just inside, as the line itself may be a closed wall.
        Point const inside = at(line, fraction) - request.radius * run.doorway_outward[doorway_number];
        Point const place = run.navigation.nearest_clear(doorway.line.region, inside);
        if (occupancy.is_free(doorway.line.region, place, request.radius)) return Spot{doorway.line.region, place};
    }
    return std::nullopt;
}

struct Extent {
    Point least;
    Point most;
};

Extent extent_of(Polygon const& polygon) {
    Extent extent{polygon.outline.front(), polygon.outline.front()};
    for (Point const corner : polygon.outline) {
        extent.least = {std::min(extent.least.x, corner.x), std::min(extent.least.z, corner.z)};
        extent.most = {std::max(extent.most.x, corner.x), std::max(extent.most.z, corner.z)};
    }
    return extent;
}

/// A random point of the regions' polygons, each piece of area equally likely; it may miss.
Spot random_spot(SimulationState const& run, Place const& place, Random& random) {
    std::vector<double> areas;
    std::vector<std::pair<navigation::RegionIndex, Polygon const*>> parts;
    for (auto const region : place.regions) {
        for (auto const& polygon : run.plan.surfaces[region].walkable) {
            auto const extent = extent_of(polygon);
            areas.push_back((extent.most.x - extent.least.x) * (extent.most.z - extent.least.z));
            parts.emplace_back(region, &polygon);
        }
    }
    auto const [region, polygon] = parts[draw_weighted(areas, random)];
    auto const extent = extent_of(*polygon);
    double const x = extent.least.x + random.uniform() * (extent.most.x - extent.least.x);
    double const z = extent.least.z + random.uniform() * (extent.most.z - extent.least.z);
    return {region, {x, z}};
}

std::optional<Spot> spot_in_area(SimulationState const& run, Place const& place, SpawnRequest const& request,
                                 Occupancy const& occupancy, Random& random) {
    for (int i = 0; i < tries_in_area; ++i) {
        Spot const spot = random_spot(run, place, random);
        if (!run.navigation.contains(spot.region, spot.place)) continue;
        if (distance(run.navigation.nearest_clear(spot.region, spot.place), spot.place) > 1e-6) continue;
        if (occupancy.is_free(spot.region, spot.place, request.radius)) return spot;
    }
    return std::nullopt;
}

}  // namespace

Occupancy::Occupancy(SimulationState const& run) {
    for (auto const& motion : run.motions) add(motion.region, motion.position, run.crowd.radius(motion.body));
}

void Occupancy::add(navigation::RegionIndex region, Point place, double radius) {
    largest_ = std::max(largest_, radius);
    cells_[key_of(region, cell_of(place.x), cell_of(place.z))].push_back({place, radius});
}

bool Occupancy::is_free(navigation::RegionIndex region, Point place, double radius) const {
    double const reach = largest_ + radius + gap;
    for (auto column = cell_of(place.x - reach); column <= cell_of(place.x + reach); ++column) {
        for (auto row = cell_of(place.z - reach); row <= cell_of(place.z + reach); ++row) {
            auto const cell = cells_.find(key_of(region, column, row));
            if (cell == cells_.end()) continue;
            for (auto const& body : cell->second) {
                if (distance(body.place, place) < body.radius + radius + gap) return false;
            }
        }
    }
    return true;
}

std::optional<Spot> spot_for(SimulationState const& run, SpawnRequest const& request, Occupancy const& occupancy) {
    Place const& place = run.places[request.origin];
    Random random(run.seed, streams::of_placement + (static_cast<std::uint64_t>(run.frame) << 32) + request.key);
    return place.is_portal() ? spot_at_portal(run, place.doorway, request, occupancy, random)
                             : spot_in_area(run, place, request, occupancy, random);
}

}  // namespace pedflux::engine
