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

Bounds bounds_of(Polygon const& polygon) {
    Bounds bounds;
    for (Point const corner : polygon.outline) bounds.cover(corner);
    return bounds;
}

/// A random point of the regions' polygons, each piece of area equally likely; it may miss.
Spot random_spot(SimulationState const& run, Place const& place, Random& random) {
    std::vector<double> areas;
    std::vector<std::pair<navigation::RegionIndex, Polygon const*>> parts;
    for (auto const region : place.regions) {
        for (auto const& polygon : run.plan.surfaces[region].walkable) {
            auto const bounds = bounds_of(polygon);
            areas.push_back((bounds.high.x - bounds.low.x) * (bounds.high.z - bounds.low.z));
            parts.emplace_back(region, &polygon);
        }
    }
    auto const [region, polygon] = parts[draw_weighted(areas, random)];
    auto const bounds = bounds_of(*polygon);
    double const x = bounds.low.x + random.uniform() * (bounds.high.x - bounds.low.x);
    double const z = bounds.low.z + random.uniform() * (bounds.high.z - bounds.low.z);
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

Occupancy::Occupancy(SimulationState const& run) : bodies_(run.plan.surfaces.size(), SparseGrid<Body>(cell_size)) {
    for (auto const& motion : run.motions) add(motion.region, motion.position, run.crowd.radius(motion.body));
}

void Occupancy::add(navigation::RegionIndex region, Point place, double radius) {
    largest_ = std::max(largest_, radius);
    bodies_[region].add(place, {place, radius});
}

bool Occupancy::is_free(navigation::RegionIndex region, Point place, double radius) const {
    return !bodies_[region].any_near(place, largest_ + radius + gap, [&](Body const& body) {
        return distance(body.place, place) < body.radius + radius + gap;
    });
}

std::optional<Spot> spot_for(SimulationState const& run, SpawnRequest const& request, Occupancy const& occupancy) {
    Place const& place = run.places[request.origin];
    Random random(run.seed, streams::of_placement + (static_cast<std::uint64_t>(run.frame) << 32) + request.key);
    return place.is_portal() ? spot_at_portal(run, place.doorway, request, occupancy, random)
                             : spot_in_area(run, place, request, occupancy, random);
}

}  // namespace pedflux::engine
