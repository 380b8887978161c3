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
/// The least gap between bodies where agents enter (metres).
constexpr double gap = 0.05;
/// Attempts to place an agent in one frame.
constexpr int tries_at_portal = 6;
constexpr int tries_in_area = 60;
/// Distance of neighbouring slots of an ordered placement (metres).
constexpr double slot_width = 0.55;

/// The fractions of a portal's line to try, in this order.
/// @param entered how many agents entered at the portal before
std::vector<double> fractions_to_try(AgentInitialPlacement placement, double line_length, std::uint32_t entered,
                                     Random& random) {
    auto const slots = std::max(1, static_cast<int>(line_length / slot_width));
    std::vector<double> fractions;
    switch (placement) {
        case AgentInitialPlacement::RANDOM:
            for (int i = 0; i < tries_at_portal; ++i) fractions.push_back(random.uniform());
            break;
        case AgentInitialPlacement::EVEN:
            fractions.push_back((entered % static_cast<unsigned>(slots) + 0.5) / slots);
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

/// @param entered how many agents entered at the doorway before
std::optional<Standpoint> spot_at_portal(World const& world, navigation::Navigation const& navigation,
                                         std::uint32_t doorway_number, std::uint32_t entered, double radius,
                                         Occupancy const& occupancy, Random& random) {
    auto const& doorway = world.plan.doorways[doorway_number];
    auto const& [region, line] = doorway.line;
    for (double const fraction : fractions_to_try(doorway.placement, length(line), entered, random)) {
        // Just inside, as the line itself may be a closed wall.
        Point const inside = at(line, fraction) - radius * world.doorway_outward[doorway_number];
        Point const point = navigation.nearest_clear(region, inside);
        if (occupancy.is_free(region, point, radius)) return Standpoint{region, point};
    }
    return std::nullopt;
}

Bounds bounds_of(Polygon const& polygon) {
    Bounds bounds;
    for (Point const corner : polygon.outline) bounds.cover(corner);
    return bounds;
}

/// A random point of the boxes around the place's polygons, which may lie outside of these. Each piece of area is
/// equally likely.
Standpoint random_spot(FloorPlan const& plan, Place const& place, Random& random) {
    std::vector<double> areas;
    std::vector<std::pair<navigation::RegionIndex, Polygon const*>> parts;
    for (auto const region : place.regions) {
        for (auto const& polygon : plan.surfaces[region].walkable) {
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

std::optional<Standpoint> spot_in_area(FloorPlan const& plan, navigation::Navigation const& navigation,
                                       Place const& place, double radius, Occupancy const& occupancy, Random& random) {
    for (int i = 0; i < tries_in_area; ++i) {
        auto const spot = random_spot(plan, place, random);
        if (!navigation.contains(spot.region, spot.point)) continue;
        if (distance(navigation.nearest_clear(spot.region, spot.point), spot.point) > 1e-6) continue;
        if (occupancy.is_free(spot.region, spot.point, radius)) return spot;
    }
    return std::nullopt;
}

}  // namespace

Occupancy::Occupancy(Agents const& agents, crowd::Crowd const& crowd) {
    for (auto const& motion : agents.motions) add(motion.region, motion.position, crowd.radius(motion.body));
}

void Occupancy::add(navigation::RegionIndex region, Point point, double radius) {
    largest_ = std::max(largest_, radius);
    if (bodies_.size() <= region) bodies_.resize(region + 1, SparseGrid<Body>(cell_size));
    bodies_[region].add(point, {point, radius});
}

bool Occupancy::is_free(navigation::RegionIndex region, Point point, double radius) const {
    if (region >= bodies_.size()) return true;
    return !bodies_[region].any_near(point, largest_ + radius + gap, [&](Body const& body) {
        return distance(body.point, point) < body.radius + radius + gap;
    });
}

std::optional<Standpoint> spot_for(World const& world, navigation::Navigation const& navigation,
                                   Spawning const& spawning, Clock const& clock, SpawnRequest const& request,
                                   Occupancy const& occupancy) {
    auto const& place = world.places[request.origin];
    Random random(world.seed, streams::of_placement + (static_cast<std::uint64_t>(clock.frame) << 32) + request.key);
    if (!place.is_portal()) return spot_in_area(world.plan, navigation, place, request.radius, occupancy, random);
    auto const entered = spawning.entered_at[place.doorway];
    return spot_at_portal(world, navigation, place.doorway, entered, request.radius, occupancy, random);
}

}  // namespace pedflux::engine
