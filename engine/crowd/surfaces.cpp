#include "engine/crowd/surfaces.h"

#include "engine/base/checks.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace pedflux::engine::crowd {

namespace {

/// Larger floor plans (about 65 square kilometres) result from a mistaken unit.
constexpr double most_cells = 25e6;

void cover(Bounds& bounds, Point from, Point to) {
    bounds.cover(from);
    bounds.cover(to);
}

void require_line(std::string const& what, Point from, Point to) {
    if (!is_finite(from) || !is_finite(to))
        refuse(fmt::format("{} runs from {} to {}, both must be finite", what, engine::text_of(from),
                           engine::text_of(to)));
}

std::vector<Bounds> checked_bounds(FloorPlan const& plan) {
    std::vector<Bounds> result(plan.regions.size());
    for (std::size_t region = 0; region < plan.regions.size(); ++region) {
        auto const& walls = plan.regions[region].walls;
        if (walls.empty())
            refuse(fmt::format("Region {} has no walls, it must be closed by walls and crossings", region));
        for (std::size_t wall = 0; wall < walls.size(); ++wall) {
            require_line(fmt::format("Wall {} of region {}", wall, region), walls[wall].from, walls[wall].to);
            cover(result[region], walls[wall].from, walls[wall].to);
        }
    }
    for (std::size_t i = 0; i < plan.crossings.size(); ++i) {
        Crossing const& crossing = plan.crossings[i];
        std::string const name = fmt::format("Crossing {}", i);
        if (crossing.left >= plan.regions.size() || crossing.right >= plan.regions.size() ||
            crossing.left == crossing.right)
            refuse(fmt::format("{} joins regions {} and {}, they must be two different ones of {}", name, crossing.left,
                               crossing.right, plan.regions.size()));
        require_line(name, crossing.from, crossing.to);
        if (distance(crossing.from, crossing.to) <= 0)
            refuse(
                fmt::format("{} begins and ends at {}, it must have a length", name, engine::text_of(crossing.from)));
        cover(result[crossing.left], crossing.from, crossing.to);
        cover(result[crossing.right], crossing.from, crossing.to);
    }
    return result;
}

/// Cells, each with an item that is listed in it. Items may come several times.
using ListedItems = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

/// The lists of the cells, in ascending order and without repetition.
Lists<std::uint32_t> lists_of(ListedItems items, std::uint32_t cell_count) {
    std::sort(items.begin(), items.end());
    items.erase(std::unique(items.begin(), items.end()), items.end());
    return grouped(cell_count, items);
}

/// Adds the item to every cell of the grid that may contain a point within a cell's width of the segment.
void list_near(RegionGrid const& grid, Segment segment, std::uint32_t item, ListedItems& items) {
    // Half a cell's diagonal plus the reach.
    double const enough = grid.width * (1 + std::sqrt(0.5)) + 1e-6;
    Bounds bounds;
    cover(bounds, segment.from, segment.to);
    Point const margin{2 * grid.width, 2 * grid.width};
    grid.for_cells({bounds.low - margin, bounds.high + margin}, [&](std::uint32_t column, std::uint32_t row) {
        if (distance(segment, grid.centre(column, row)) <= enough)
            items.emplace_back(grid.first_cell + static_cast<std::uint32_t>(grid.cell(column, row)), item);
    });
}

Segment relative(Point from, Point to, Point origin) { return {from - origin, to - origin}; }

/// An upper bound of the distance of two segments: the exact distance unless they cross.
double rough_distance(Segment a, Segment b) {
    return std::min(std::min(distance(a, b.from), distance(a, b.to)), std::min(distance(b, a.from), distance(b, a.to)));
}

/// Whether the wall closes the crossing. It stops those of its own region only, so that a crossing can be closed in one
/// direction; the other region has its own wall there.
bool closes(Segment wall, Segment crossing) {
    constexpr double on_it = 0.02;
    return distance(crossing, wall.from) <= on_it && distance(crossing, wall.to) <= on_it;
}

}  // namespace

Surfaces::Surfaces(FloorPlan const& plan, double cell_side) : reach(cell_side) {
    std::vector<Bounds> const bounds = checked_bounds(plan);
    Bounds all;
    for (Bounds const& box : bounds) cover(all, box.low, box.high);
    if (!bounds.empty()) origin = 0.5 * (all.low + all.high);

    double cells = 0;
    std::uint32_t count = 0;
    for (Bounds const& box : bounds) {
        cells += (box.high.x - box.low.x + reach) * (box.high.z - box.low.z + reach) / (reach * reach);
        if (cells > most_cells)
            refuse(fmt::format(
                "The plan is {} by {} m, its regions together must not cover more than 60 square kilometres",
                text_of(all.high.x - all.low.x), text_of(all.high.z - all.low.z)));
        RegionGrid grid{grid_over(box, reach), count};
        grid.corner = box.low - origin;
        count += static_cast<std::uint32_t>(grid.cell_count());
        grids.push_back(grid);
    }

    ListedItems wall_lists;
    ListedItems crossing_lists;
    ListedItems neighbour_lists;
    for (std::size_t region = 0; region < plan.regions.size(); ++region) {
        first_wall.push_back(static_cast<std::uint32_t>(walls.size()));
        for (Wall const& wall : plan.regions[region].walls) {
            Segment const line = relative(wall.from, wall.to, origin);
            list_near(grids[region], line, static_cast<std::uint32_t>(walls.size()), wall_lists);
            walls.push_back(line);
            wall_open.push_back(wall.open ? 1 : 0);
        }
    }
    first_wall.push_back(static_cast<std::uint32_t>(walls.size()));
    for (Crossing crossing : plan.crossings) {
        auto const number = static_cast<std::uint32_t>(crossings.size());
        Segment const line = relative(crossing.from, crossing.to, origin);
        crossing.from = line.from;
        crossing.to = line.to;
        crossings.push_back(crossing);
        for (auto const& [here, there] : {std::pair{crossing.left, crossing.right}, {crossing.right, crossing.left}}) {
            list_near(grids[here], line, number, crossing_lists);
            list_near(grids[here], line, there, neighbour_lists);
            for (std::uint32_t wall = first_wall[there]; wall < first_wall[there + 1]; ++wall)
                if (rough_distance(line, walls[wall]) <= 2 * reach && !closes(walls[wall], line))
                    list_near(grids[here], walls[wall], wall, wall_lists);
        }
    }
    walls_of = lists_of(std::move(wall_lists), count);
    crossings_of = lists_of(std::move(crossing_lists), count);
    neighbours_of = lists_of(std::move(neighbour_lists), count);
}

std::uint32_t Surfaces::wall_number(std::uint32_t region, std::size_t wall) const {
    std::size_t const number = first_wall[region] + wall;
    if (number >= first_wall[region + 1])
        refuse(fmt::format("Region {} has no wall {}, it has {}", region, wall,
                           first_wall[region + 1] - first_wall[region]));
    return static_cast<std::uint32_t>(number);
}

}  // namespace pedflux::engine::crowd
