#include "engine/simulation/routing/local_targets.h"

#include "engine/crowd/speed_law.h"
#include "engine/simulation/agents/agent_motion.h"
#include "engine/simulation/routing/density_grid.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pedflux::engine {

using navigation::RouteStep;

namespace {

/// How much of a wide opening agents from one side spread over (metres).
constexpr double widest_spread = 3;
/// The least distance of targets from the ends of an opening (metres): a body and a hand's breadth.
constexpr double beside_post = 0.3;
/// The distance (metres) from which agents see where an opening is free.
constexpr double sight = 8;
/// Distance of the targets that are compared (metres).
constexpr double target_spacing = 0.6;
/// Agents look for another target when density makes their way longer by this factor.
constexpr double patience = 1.25;
/// Seconds for which an agent keeps its target.
constexpr double resolve = 1;
/// The least share of their speed that agents are assumed to walk at in a crowd.
constexpr double least_share = 0.05;

/// The length of a free way that takes as long as this one (metres).
double length_through(DensityGrid const& density_grid, navigation::RegionIndex region, Point from, Point to) {
    static crowd::SpeedLaw const law{crowd::Locomotion{}};
    double const whole = distance(from, to);
    auto const pieces = static_cast<int>(std::ceil(whole / DensityGrid::cell_size));
    double length = 0;
    for (int piece = 0; piece < pieces; ++piece) {
        double const density = density_grid.density(region, from + ((piece + 0.5) / pieces) * (to - from));
        length += whole / pieces / std::max(static_cast<double>(law.share(static_cast<float>(density))), least_share);
    }
    return length;
}

/// An agent's distance from the post where agents spread over a width (metres). The fractional parts of the multiples
/// of the golden ratio are spread evenly, so agents that follow each other are far apart.
double distance_from_post(std::uint32_t key, double width) {
    double const multiple = key * (std::numbers::phi - 1);
    return std::max((multiple - std::floor(multiple)) * width, beside_post);
}

}  // namespace

Point aim_on(RouteStep const& step, AgentMotion& motion, std::uint32_t key, DensityGrid const& density_grid,
             double now) {
    Segment const opening = step.target;
    Point const nearest = nearest_point(opening, motion.position);
    double const length = distance(opening.from, opening.to);
    if (length < 3 * beside_post) return nearest;
    double const away = distance(nearest, motion.position);
    auto const number = step.kind == RouteStep::Kind::CORNER ? motion.hint.aimed
                        : step.kind == RouteStep::Kind::GOAL ? motion.hint.destination
                                                             : step.connection;
    auto& target = motion.local_target;
    bool const is_chosen = target.of == step.kind && target.number == number && now < target.until;
    if (is_chosen && away <= sight) return target.straight ? nearest : nearest_point(opening, target.aim);

    double const from_start = distance(opening.from, nearest);
    auto const inwards = [&](double metres) {
        return at(opening, (from_start < length / 2 ? metres : length - metres) / length);
    };
    bool const straight = std::min(from_start, length - from_start) > 0;
    Point const alone =
        straight ? nearest
                 : inwards(distance_from_post(key, std::min({length - beside_post, widest_spread, away / 2})));
    if (away > sight) return alone;

    target = {step.kind, number, straight, alone, now + resolve};
    auto const rest = [&](Point aim) { return step.kind == RouteStep::Kind::CORNER ? distance(aim, step.onward) : 0; };
    double const way_alone = length_through(density_grid, motion.region, motion.position, alone);
    if (way_alone <= patience * distance(motion.position, alone)) return alone;
    double least = way_alone + rest(alone);
    auto const last = static_cast<int>((length - 2 * beside_post) / target_spacing);
    for (int i = 0; i <= last; ++i) {
        double const along = beside_post + i * target_spacing;
        if (std::abs(along - from_start) > sight) continue;
        Point const aim = at(opening, along / length);
        double const way = length_through(density_grid, motion.region, motion.position, aim) + rest(aim);
        if (way >= least) continue;
        least = way;
        target.straight = false;
        target.aim = aim;
    }
    return target.aim;
}

}  // namespace pedflux::engine
