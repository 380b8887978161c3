#include "engine/geometry/uniform_grid.h"

#include "tests/engine/geometry/expect.h"

#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace pedflux::engine {
namespace {

UniformGrid const grid = grid_over({{1, 10}, {4.5, 11}}, 0.5);

TEST(UniformGrid, CoversItsBounds) {
    EXPECT_EQ(grid.columns, 8U);
    EXPECT_EQ(grid.rows, 3U);
    EXPECT_EQ(grid.cell_count(), 24U);
    EXPECT_EQ(grid.centre(7, 2), (Point{4.75, 11.25}));
    EXPECT_EQ(grid_over({{3, 3}, {3, 3}}, 0.5).cell_count(), 1U);
}

TEST(UniformGrid, NumbersCellsAndTakesPointsBesideForTheNearest) {
    struct Case {
        Point point;
        std::uint32_t column;
        std::uint32_t row;
    };
    for (auto const& [point, column, row] : std::vector<Case>{{{1, 10}, 0, 0},
                                                              {{1.49, 10.5}, 0, 1},
                                                              {{4.5, 11}, 7, 2},
                                                              {{-9, 10.7}, 0, 1},
                                                              {{9, 99}, 7, 2},
                                                              {{2.2, -1e9}, 2, 0}}) {
        EXPECT_EQ(grid.column_of(point.x), column);
        EXPECT_EQ(grid.row_of(point.z), row);
        EXPECT_EQ(grid.cell_of(point), column + 8 * row);
    }
}

TEST(UniformGrid, VisitsTheCellsOfBoundsRowByRow) {
    std::vector<std::pair<std::uint32_t, std::uint32_t>> visited;
    grid.for_cells({{1.6, 10.6}, {2.1, 55}}, [&](auto column, auto row) { visited.emplace_back(column, row); });
    EXPECT_EQ(visited, (std::vector<std::pair<std::uint32_t, std::uint32_t>>{{1, 1}, {2, 1}, {1, 2}, {2, 2}}));
}

TEST(SparseGrid, FindsEverythingWithinReach) {
    test::Random random(11);
    SparseGrid<Point> items(1);
    std::vector<Point> points;
    auto const random_point = [&] { return Point{random.between(-20, 20), random.between(-20, 20)}; };
    for (int i = 0; i < 300; ++i) {
        points.push_back(random_point());
        items.add(points.back(), points.back());
    }
    int found = 0;
    for (int i = 0; i < 500; ++i) {
        Point const place = random_point();
        double const reach = random.between(0, 2.5);
        auto const is_near = [&](Point point) { return distance(point, place) <= reach; };
        bool const expected = std::any_of(points.begin(), points.end(), is_near);
        EXPECT_EQ(items.any_near(place, reach, is_near), expected);
        found += expected ? 1 : 0;
    }
    EXPECT_GT(found, 100);
    EXPECT_LT(found, 400);
}

}  // namespace
}  // namespace pedflux::engine
