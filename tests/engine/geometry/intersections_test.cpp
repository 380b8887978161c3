#include "tests/engine/geometry/expect.h"

#include <pedflux/geometry.h>

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace pedflux {
namespace {

using test::expect_near;

void expect_points(std::vector<Vec3d> const& actual, std::vector<Vec3d> const& expected) {
    ASSERT_EQ(actual.size(), expected.size()) << testing::PrintToString(actual);
    for (std::size_t i = 0; i < actual.size(); ++i) expect_near(actual[i], expected[i], 3e-6);
}

TEST(Intersections, AreOrderedAndSingleWhereFacesMeet) {
    auto const box = MeshGeometry::CreateBox({0, 0, 0}, {2, 2, 2});
    struct Case {
        char const* name;
        Vec3d from;
        Vec3d to;
        std::vector<Vec3d> points;
    };
    for (auto const& [name, from, to, points] : {
             Case{"through two faces", {-1, 0.5, 0.7}, {3, 0.5, 0.7}, {{0, 0.5, 0.7}, {2, 0.5, 0.7}}},
             Case{"backwards", {3, 0.5, 0.7}, {-1, 0.5, 0.7}, {{2, 0.5, 0.7}, {0, 0.5, 0.7}}},
             Case{"through the diagonals of two sides", {1, -1, 1}, {1, 3, 1}, {{1, 0, 1}, {1, 2, 1}}},
             Case{"through two corners", {-1, -1, -1}, {3, 3, 3}, {{0, 0, 0}, {2, 2, 2}}},
             Case{"through two edges", {-1, -1, 1}, {3, 3, 1}, {{0, 0, 1}, {2, 2, 1}}},
             Case{"touching an edge", {-1, 1, 1}, {1, -1, 1}, {{0, 0, 1}}},
             Case{"touching a corner", {-1, 1, 0}, {1, -1, 0}, {{0, 0, 0}}},
             Case{"along an edge", {-1, 0, 0}, {3, 0, 0}, {{0, 0, 0}, {2, 0, 0}}},
             Case{
                 "along a side and its diagonal", {-1, 2, 0.5}, {3, 2, 0.5}, {{0, 2, 0.5}, {1.5, 2, 0.5}, {2, 2, 0.5}}},
             Case{"ending in a side", {1, 1, 1}, {1, 2, 1.25}, {{1, 2, 1.25}}},
             Case{"ending before a side", {1, 1, 1}, {1, 1.9, 1}, {}},
             Case{"inside", {0.5, 0.5, 0.5}, {1.5, 1.5, 1}, {}},
             Case{"outside", {3, 0, 0}, {3, 2, 2}, {}},
             Case{"a point on a side", {1, 2, 0.3}, {1, 2, 0.3}, {{1, 2, 0.3}}},
             Case{"a point inside", {1, 1, 1}, {1, 1, 1}, {}},
         }) {
        SCOPED_TRACE(name);
        expect_points(box->GetIntersections(from, to), points);
    }
    // However widely its corners were welded.
    auto const welded = MeshGeometry::Create(box->GetFaces(), 1.9);
    expect_points(welded->GetIntersections({-1, 0.5, 0.7}, {3, 0.5, 0.7}), {{0, 0.5, 0.7}, {2, 0.5, 0.7}});
    EXPECT_REFUSED(box->GetIntersections({0, 0, 0}, Vec3d::INVALID), "end of the segment is (nan, nan, nan)");
}

/// Where a segment meets the surface of a box along the axes, by the slabs of the three axes.
std::vector<Vec3d> box_surface(std::array<double, 3> from, std::array<double, 3> to, double size) {
    double first = -1e300;
    double last = 1e300;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        double const in = (0 - from[axis]) / (to[axis] - from[axis]);
        double const out = (size - from[axis]) / (to[axis] - from[axis]);
        first = std::max(first, std::min(in, out));
        last = std::min(last, std::max(in, out));
    }
    std::vector<Vec3d> points;
    if (first > last) return points;
    for (double const fraction : {first, last})
        if (fraction >= 0 && fraction <= 1)
            points.emplace_back(from[0] + fraction * (to[0] - from[0]), from[1] + fraction * (to[1] - from[1]),
                                from[2] + fraction * (to[2] - from[2]));
    return points;
}

TEST(Intersections, AgreeWithTheSlabsOfABox) {
    auto const box = MeshGeometry::CreateBox({0, 0, 0}, {2, 2, 2});
    test::Random random(4);
    std::array<int, 3> cases{};
    for (int round = 0; round < 5000; ++round) {
        auto const coordinates = [&random] {
            return std::array<double, 3>{random.between(-2, 4), random.between(-2, 4), random.between(-2, 4)};
        };
        auto const from = coordinates();
        auto const to = coordinates();
        auto const expected = box_surface(from, to, 2);
        ++cases[expected.size()];
        expect_points(box->GetIntersections({from[0], from[1], from[2]}, {to[0], to[1], to[2]}), expected);
    }
    for (int const count : cases) EXPECT_GT(count, 300) << "the segments try too little";
}

}  // namespace
}  // namespace pedflux
