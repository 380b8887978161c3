#include "engine/simulation/routing/local_targets.h"

#include "engine/crowd/speed_law.h"
#include "engine/simulation/frame/simulation_state.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pedflux::engine {

using navigation::RouteStep;

namespace {

/// Side of the squares that people are counted in, in metres.
constexpr double square = 1;
/// How much of a wide opening people share who come from one side, in metres.
constexpr double widest_spread = 3;
/// How far from the ends of an opening people aim, in metres: a body and a hand's breadth.
constexpr double beside_post = 0.3;
/// From so far (metres) people see where an opening is free.
constexpr double sight = 8;
/// The breadth of a lane, in metres.
constexpr double lane_breadth = 0.6;
/// People look out for another lane when a throng makes their way so much longer.
constexpr double patience = 1.25;
/// And keep to it for so many seconds.
constexpr double resolve = 1;
/// No throng slows people down to less than this share of their speed, as far as others can tell.
constexpr double least_share = 0.05;

/// How far somebody would get on a free way in the time that this one takes, in metres.
double length_through(DensityGrid const& density_grid, navigation::RegionIndex region, Point from, Point to) {
    static crowd::SpeedLaw const law{crowd::Locomotion{}};
    double const whole = distance(from, to);
    auto const pieces = static_cast<int>(std::ceil(whole / square));
    double length = 0;
    for (int piece = 0; piece < pieces; ++piece) {
        double const density = density_grid.density(region, from + ((piece + 0.5) / pieces) * (to - from));
        length += whole / pieces / std::max(static_cast<double>(law.share(static_cast<float>(density))), least_share);
    }
    return length;
}

/// How far from the post somebody walks of a breadth that people share. Shares of people who come one after the other
/// lie far apart: they are the multiples of the golden ratio.
double share_of(std::uint32_t key, double breadth) {
    double const tickets = key * (std::numbers::phi - 1);
    return std::max((tickets - std::floor(tickets)) * breadth, beside_post);
}

}  // namespace

DensityGrid::DensityGrid(FloorPlan const& plan) {
    std::size_t first = 0;
    for (auto const& surface : plan.surfaces) {
        Bounds bounds;
        for (auto const& face : surface.faces) {
            for (auto const& corner : face) bounds.cover({corner.x, corner.z});
        }
        SurfaceGrid grid{grid_over(bounds, square), first};
        grid.corner = grid.corner - Point{square, square};
        grid.columns += 2;
        grid.rows += 2;
        first += grid.cell_count();
        grids_.push_back(grid);
    }
    counts_.resize(first);
}

void DensityGrid::count(std::span<AgentMotion const> motions) {
    for (auto const place : counted_) counts_[place] = 0;
    counted_.clear();
    for (auto const& motion : motions) {
        // Somebody whom a program leads may be off the floor: it counts at the edge.
        auto const& grid = grids_[motion.region];
        auto const place = grid.first + grid.cell_of(motion.position);
        ++counts_[place];
        counted_.push_back(place);
    }
}

double DensityGrid::density(navigation::RegionIndex region, Point point) const {
    auto const& grid = grids_[region];
    // Between the middles of four squares.
    Point const first_middle = grid.centre(0, 0);
    double const x = std::clamp((point.x - first_middle.x) / square, 0.0, grid.columns - 2.0);
    double const z = std::clamp((point.z - first_middle.z) / square, 0.0, grid.rows - 2.0);
    auto const column = static_cast<std::uint32_t>(x);
    auto const row = static_cast<std::uint32_t>(z);
    double const right = x - column;
    double const down = z - row;
    auto const* const here = &counts_[grid.first + grid.cell(column, row)];
    auto const* const below = here + grid.columns;
    double const people =
        (1 - down) * ((1 - right) * here[0] + right * here[1]) + down * ((1 - right) * below[0] + right * below[1]);
    return people / (square * square);
}

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
    LocalTarget& lane = motion.lane;
    bool const is_chosen = lane.of == step.kind && lane.number == number && now < lane.until;
    if (is_chosen && away <= sight) return lane.straight ? nearest : nearest_point(opening, lane.aim);

    double const from_start = distance(opening.from, nearest);
    auto const inwards = [&](double metres) {
        return at(opening, (from_start < length / 2 ? metres : length - metres) / length);
    };
    bool const straight = std::min(from_start, length - from_start) > 0;
    Point const alone =
        straight ? nearest : inwards(share_of(key, std::min({length - beside_post, widest_spread, away / 2})));
    if (away > sight) return alone;

    lane = {step.kind, number, straight, alone, now + resolve};
    auto const rest = [&](Point aim) { return step.kind == RouteStep::Kind::CORNER ? distance(aim, step.onward) : 0; };
    double const way_alone = length_through(density_grid, motion.region, motion.position, alone);
    if (way_alone <= patience * distance(motion.position, alone)) return alone;
    double least = way_alone + rest(alone);
    auto const lanes = static_cast<int>((length - 2 * beside_post) / lane_breadth);
    for (int i = 0; i <= lanes; ++i) {
        double const along = beside_post + i * lane_breadth;
        if (std::abs(along - from_start) > sight) continue;
        Point const aim = at(opening, along / length);
        double const way = length_through(density_grid, motion.region, motion.position, aim) + rest(aim);
        if (way >= least) continue;
        least = way;
        lane.straight = false;
        lane.aim = aim;
    }
    return lane.aim;
}

}  // namespace pedflux::engine
