#include "engine/crowd/surfaces.h"

#include "engine/base/checks.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include <fmt/format.h>

namespace pedflux::engine::crowd {

namespace {

/// Larger floor plans (about 65 square kilometres) result from a mistaken unit.
constexpr double most_cells = 25e6;

struct Bounds {
    Point low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Point high{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

    void include(Point point) {
        low = {std::min(low.x, point.x), std::min(low.z, point.z)};
        high = {std::max(high.x, point.x), std::max(high.z, point.z)};
    }
    void include(Point from, Point to) {
        include(from);
        include(to);
    }
};

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
            result[region].include(walls[wall].from, walls[wall].to);
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
        result[crossing.left].include(crossing.from, crossing.to);
        result[crossing.right].include(crossing.from, crossing.to);
    }
    return result;
}

std::uint32_t cells_along(double from, double to, double side) {
    return static_cast<std::uint32_t>(std::floor((to - from) / side)) + 1;
}

/// Pairs of cell and item, gathered in the order of items, turned into lists in the order of cells.
class ListBuilder {
  public:
    void add(std::uint32_t cell, std::uint32_t item) { pairs_.emplace_back(cell, item); }

    CellLists finish(std::uint32_t cell_count) {
        std::sort(pairs_.begin(), pairs_.end());
        pairs_.erase(std::unique(pairs_.begin(), pairs_.end()), pairs_.end());
        CellLists result;
        result.start.assign(cell_count + 1, 0);
        for (auto const& [cell, item] : pairs_) {
            ++result.start[cell + 1];
            result.items.push_back(item);
        }
        for (std::uint32_t cell = 0; cell < cell_count; ++cell) result.start[cell + 1] += result.start[cell];
        return result;
    }

  private:
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs_;
};

/// Adds the item to every cell of the grid that may contain a point within reach of the segment.
void list_near(CellGrid const& grid, double side, Segment segment, std::uint32_t item, ListBuilder& lists) {
    // Half a cell's diagonal plus the reach.
    double const enough = side * (1 + std::sqrt(0.5)) + 1e-6;
    Bounds box;
    box.include(segment.from, segment.to);
    auto const index = [&](double value, std::uint32_t count) {
        return static_cast<std::uint32_t>(std::clamp(std::floor(value / side), 0.0, static_cast<double>(count - 1)));
    };
    std::uint32_t const last_row = index(box.high.z - grid.corner.z + 2 * side, grid.rows);
    std::uint32_t const last_column = index(box.high.x - grid.corner.x + 2 * side, grid.columns);
    std::uint32_t const first_column = index(box.low.x - grid.corner.x - 2 * side, grid.columns);
    for (std::uint32_t row = index(box.low.z - grid.corner.z - 2 * side, grid.rows); row <= last_row; ++row)
        for (std::uint32_t column = first_column; column <= last_column; ++column) {
            Point const centre = grid.corner + Point{(column + 0.5) * side, (row + 0.5) * side};
            if (distance(segment, centre) <= enough) lists.add(grid.first_cell + row * grid.columns + column, item);
        }
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
    for (Bounds const& box : bounds) all.include(box.low, box.high);
    if (!bounds.empty()) origin = 0.5 * (all.low + all.high);

    double cells = 0;
    for (Bounds const& box : bounds) {
        CellGrid grid;
        grid.corner = box.low - origin;
        cells += (box.high.x - box.low.x + reach) * (box.high.z - box.low.z + reach) / (reach * reach);
        if (cells > most_cells)
            refuse(fmt::format(
                "The plan is {} by {} m, its regions together must not cover more than 60 square kilometres",
                text_of(all.high.x - all.low.x), text_of(all.high.z - all.low.z)));
        grid.columns = cells_along(box.low.x, box.high.x, reach);
        grid.rows = cells_along(box.low.z, box.high.z, reach);
        grid.first_cell = grids.empty() ? 0 : grids.back().first_cell + grids.back().columns * grids.back().rows;
        grids.push_back(grid);
    }
    std::uint32_t const count = grids.empty() ? 0 : grids.back().first_cell + grids.back().columns * grids.back().rows;

    ListBuilder wall_lists;
    ListBuilder crossing_lists;
    ListBuilder neighbour_lists;
    for (std::size_t region = 0; region < plan.regions.size(); ++region) {
        first_wall.push_back(static_cast<std::uint32_t>(walls.size()));
        for (Wall const& wall : plan.regions[region].walls) {
            Segment const line = relative(wall.from, wall.to, origin);
            list_near(grids[region], reach, line, static_cast<std::uint32_t>(walls.size()), wall_lists);
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
            list_near(grids[here], reach, line, number, crossing_lists);
            list_near(grids[here], reach, line, there, neighbour_lists);
            for (std::uint32_t wall = first_wall[there]; wall < first_wall[there + 1]; ++wall)
                if (rough_distance(line, walls[wall]) <= 2 * reach && !closes(walls[wall], line))
                    list_near(grids[here], reach, walls[wall], wall, wall_lists);
        }
    }
    walls_of = wall_lists.finish(count);
    crossings_of = crossing_lists.finish(count);
    neighbours_of = neighbour_lists.finish(count);
}

std::uint32_t Surfaces::cell_of(std::uint32_t region, double x, double z) const {
    CellGrid const& grid = grids[region];
    auto const index = [this](double value, std::uint32_t count) {
        return static_cast<std::uint32_t>(std::clamp(value / reach, 0.0, static_cast<double>(count - 1)));
    };
    return grid.first_cell + index(z - grid.corner.z, grid.rows) * grid.columns +
           index(x - grid.corner.x, grid.columns);
}

std::uint32_t Surfaces::wall_number(std::uint32_t region, std::size_t wall) const {
    std::size_t const number = first_wall[region] + wall;
    if (number >= first_wall[region + 1])
        refuse(fmt::format("Region {} has no wall {}, it has {}", region, wall,
                           first_wall[region + 1] - first_wall[region]));
    return static_cast<std::uint32_t>(number);
}

}  // namespace pedflux::engine::crowd
