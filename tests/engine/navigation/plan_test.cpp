#include "engine/geometry/plan_faults.h"
#include "engine/geometry/polygons.h"
#include "tests/engine/navigation/plans.h"

#include <pedflux/exception.h>

#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pedflux::engine::navigation::testing {
namespace {

using ::testing::HasSubstr;

TEST(Plan, UnitesTrianglesIntoWholePolygons) {
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

TEST(Plan, ClosesSeamsWhereACornerMeetsAnEdge) {
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

TEST(Plan, AreasAddUp) {
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

TEST(Plan, RefusesWhatIsNotAPlan) {
    double const not_a_number = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(united(Polygons{{rectangle({0, 0}, {1, not_a_number}), {}}}), Exception);
    EXPECT_THROW(united(Polygons{{rectangle({0, 0}, {20000, 1}), {}}}), Exception);
    EXPECT_THROW(offset({{rectangle({0, 0}, {1, 1}), {}}}, not_a_number), Exception);
}

TEST(Plan, NamesTheFaultAndThePlace) {
    Ring const square = rectangle({0, 0}, {10, 10});
    struct Case {
        Polygon polygon;
        char const* fault;
    };
    Case const cases[] = {
        {{{{0, 0}, {1, 1}}, {}}, "2 corners"},
        {{{{0, 0}, {4, 4}, {4, 0}, {0, 4}}, {}}, "crosses or touches itself at (2, 2)"},
        {{{{0, 0}, {4, 0}, {4, 4}, {2, 0}, {0, 4}}, {}}, "touches itself at (2, 0)"},
        {{{{0, 0}, {4, 0}, {2, 0}}, {}}, "runs back over itself"},
        {{{{0, 0}, {0, 0}, {4, 0}, {2, 3}}, {}}, "(0, 0) twice in a row"},
        {{{{0, 0}, {4, 0}, {std::numeric_limits<double>::infinity(), 3}}, {}}, "corner 2"},
        {{square, {rectangle({11, 1}, {12, 2})}}, "hole 0, which begins at (11, 1), lies outside"},
        {{square, {rectangle({5, 5}, {15, 6})}}, "two boundaries cross at (10,"},
        {{square, {rectangle({1, 1}, {2, 2}), rectangle({10, 3}, {11, 4})}}, "run along each other"},
        {{square, {rectangle({1, 1}, {5, 5}), rectangle({2, 2}, {3, 3})}},
         "hole 1, which begins at (2, 2), lies in hole 0"},
    };
    for (Case const& plan : cases) {
        auto const fault = fault_of(plan.polygon);
        ASSERT_TRUE(fault.has_value()) << plan.fault;
        EXPECT_THAT(*fault, HasSubstr(plan.fault));
    }
    EXPECT_FALSE(fault_of(Polygon{square, {rectangle({1, 1}, {2, 2}), {{2, 2}, {3, 5}, {4, 3}}}}).has_value());
    EXPECT_FALSE(fault_of(Polygon{square, {{{0, 5}, {2, 4}, {2, 6}}}}).has_value());

    EXPECT_EQ(closed_ring({{0, 0}, {1, 0}, {0, 1}, {0, 0}}).size(), 3U);
    EXPECT_THROW(closed_ring({{0, 0}, {1, 0}, {0, 1}, {0, 2}}), Exception);
    EXPECT_THROW(closed_ring({{0, 0}, {1, 0}, {0, 0}}), Exception);
}

}  // namespace
}  // namespace pedflux::engine::navigation::testing
