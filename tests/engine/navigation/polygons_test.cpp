#include "engine/geometry/polygons.h"

#include "tests/engine/navigation/floor_plans.h"

#include <pedflux/exception.h>

#include <limits>

#include <gtest/gtest.h>

namespace pedflux::engine::navigation::testing {
namespace {

TEST(PolygonOperations, UniteTrianglesIntoWholePolygons) {
    // A floor of 100 by 50 cells of 1 m, two triangles each, a hole of 10 by 10 cells, given in mixed orientation.
    std::vector<std::array<Point, 3>> triangles;
    for (int i = 0; i < 100; ++i)
        for (int j = 0; j < 50; ++j) {
            if (i >= 20 && i < 30 && j >= 20 && j < 30) continue;
            Point const low{static_cast<double>(i) / 3, static_cast<double>(j) / 3};
            Point const high{static_cast<double>(i + 1) / 3, static_cast<double>(j + 1) / 3};
            triangles.push_back({low, {high.x, low.z}, high});
            triangles.push_back({low, {low.x, high.z}, high});
        }
    triangles.push_back({Point{1, 1}, {2, 2}, {3, 3}});
    Polygons const floor = united(triangles);
    ASSERT_EQ(floor.size(), 1U);
    EXPECT_EQ(floor[0].outline.size(), 4U);
    ASSERT_EQ(floor[0].holes.size(), 1U);
    EXPECT_EQ(floor[0].holes[0].size(), 4U);
    EXPECT_NEAR(area(floor), 4900.0 / 9, 1e-2);
}

TEST(PolygonOperations, CloseGapsWhereACornerMeetsAnEdge) {
    // The long edge from (0, 0) to (7, 3) is met from the other side by a corner that cannot lie on it exactly.
    Point const on_edge{7.0 / 3, 1};
    Polygons const floor = united({{Point{0, 0}, {7, 3}, {0, 3}},
                                   {Point{0, 0}, {7, 0}, on_edge},
                                   {Point{7, 0}, {7, 3}, on_edge + Point{0, -4e-4}}});
    ASSERT_EQ(floor.size(), 1U);
    EXPECT_TRUE(floor[0].holes.empty());
    EXPECT_NEAR(area(floor), 21, 1e-2);
    EXPECT_EQ(floor[0].outline.size(), 4U);
}

TEST(PolygonOperations, HaveAreasThatAddUp) {
    for (std::uint64_t seed = 0; seed < 50; ++seed) {
        Dice dice(seed);
        Polygons const a = united(Polygons{{random_star(dice, {0, 0}, 10, 12), {random_star(dice, {0, 0}, 2, 5)}}});
        Polygons const b = united(Polygons{{random_star(dice, {3, 2}, 8, 9), {}}});
        Polygons both = a;
        both.insert(both.end(), b.begin(), b.end());
        EXPECT_NEAR(area(united(both)) + area(intersection(a, b)), area(a) + area(b), 1e-3);
        EXPECT_NEAR(area(difference(a, b)) + area(intersection(a, b)), area(a), 1e-3);
        EXPECT_LT(area(offset(a, -0.2)), area(a));
    }
}

TEST(PolygonOperations, RefuseInvalidCoordinates) {
    double const not_a_number = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(united(Polygons{{rectangle({0, 0}, {1, not_a_number}), {}}}), Exception);
    EXPECT_THROW(united(Polygons{{rectangle({0, 0}, {20000, 1}), {}}}), Exception);
    EXPECT_THROW(offset({{rectangle({0, 0}, {1, 1}), {}}}, not_a_number), Exception);
}

}  // namespace
}  // namespace pedflux::engine::navigation::testing
