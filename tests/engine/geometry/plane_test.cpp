#include "engine/geometry/plane.h"

#include <gtest/gtest.h>

namespace pedflux::engine {
namespace {

TEST(Plane, SegmentsCrossAsTouchingCounts) {
    Segment const line{{0, 0}, {0, 4}};
    struct Case {
        char const* name;
        Segment segment;
        bool when_counted;
        bool when_counted_once;
        bool when_not_counted;
    };
    Case const cases[] = {
        {"from side to side", {{-1, 1}, {1, 1}}, true, true, true},
        {"past the end", {{-1, 5}, {1, 5}}, false, false, false},
        {"beside it", {{1, 0}, {1, 4}}, false, false, false},
        {"up to it from the left", {{-1, 2}, {0, 2}}, true, true, false},
        {"away from it to the right", {{0, 2}, {1, 2}}, true, false, false},
        {"up to it from the right", {{1, 2}, {0, 2}}, true, false, false},
        {"away from it to the left", {{0, 2}, {-1, 2}}, true, true, false},
        {"along it", {{0, 1}, {0, 3}}, true, false, false},
    };
    for (auto const& [name, segment, counted, counted_once, not_counted] : cases) {
        for (Segment const way : {segment, Segment{segment.to, segment.from}}) {
            EXPECT_EQ(cross_each_other(line, way, Touching::COUNTS), counted) << name;
            EXPECT_EQ(cross_each_other(line, way), counted_once) << name;
            EXPECT_EQ(cross_each_other(line, way, Touching::COUNTS_NOT), not_counted) << name;
        }
    }
}

TEST(Plane, AWayOverTwoLinesThatJoinCrossesOneOfThem) {
    Segment const below{{0, -4}, {0, 0}};
    Segment const above{{0, 0}, {0, 4}};
    for (Segment const way : {Segment{{-1, 0}, {1, 0}}, {{-1, 1}, {1, -1}}, {{1, 0}, {-1, 0}}})
        EXPECT_EQ(cross_each_other(below, way) + cross_each_other(above, way), 1);
}

TEST(Plane, LinesCrossWhereBothFractionsSay) {
    Segment const segment{{2, -1}, {2, 3}};
    auto const crossing = line_crossing({0, 0}, {4, 4}, segment);
    ASSERT_TRUE(crossing);
    EXPECT_DOUBLE_EQ(crossing->on_ray, 0.5);
    EXPECT_DOUBLE_EQ(crossing->on_segment, 0.75);
    EXPECT_FALSE(line_crossing({0, 0}, {0, 1}, segment));
    EXPECT_EQ(crossing_of_row({0, 0}, {4, 2}, 1), 2);
    EXPECT_FALSE(crossing_of_row({0, 0}, {4, 1}, 1));
    EXPECT_TRUE(crossing_of_row({0, 1}, {4, 2}, 1));
}

}  // namespace
}  // namespace pedflux::engine
