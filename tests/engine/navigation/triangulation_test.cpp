#include "engine/navigation/triangulation.h"

#include "tests/engine/navigation/floor_plans.h"

#include <gtest/gtest.h>

namespace pedflux::engine::navigation::testing {
namespace {

double area(Triangulation const& triangulation) {
    double sum = 0;
    for (Triangle const& triangle : triangulation.triangles) {
        auto const [a, b, c] = triangle.corner;
        sum += orientation(triangulation.vertices[a], triangulation.vertices[b], triangulation.vertices[c]) / 2;
    }
    return sum;
}

/// Triangles run counter-clockwise, neighbours name each other across the same edge, and edges are Delaunay.
void expect_sound(Triangulation const& triangulation) {
    auto const& vertices = triangulation.vertices;
    auto const& triangles = triangulation.triangles;
    for (std::uint32_t t = 0; t < triangles.size(); ++t) {
        auto const [a, b, c] = triangles[t].corner;
        ASSERT_GT(orientation(vertices[a], vertices[b], vertices[c]), 0);
        for (std::size_t i = 0; i < 3; ++i) {
            std::uint32_t const u = triangles[t].neighbour[i];
            if (u == none) continue;
            bool found = false;
            for (std::size_t j = 0; j < 3; ++j) {
                if (triangles[u].neighbour[j] != t) continue;
                found = true;
                ASSERT_EQ(triangles[u].corner[after(j)], triangles[t].corner[before(i)]);
                ASSERT_EQ(triangles[u].corner[before(j)], triangles[t].corner[after(i)]);
                // The angles opposite to a shared edge sum to half a turn at most.
                auto const angle = [&](Triangle const& triangle, std::size_t at) {
                    Point const corner = vertices[triangle.corner[at]];
                    Point const right = vertices[triangle.corner[after(at)]] - corner;
                    Point const left = vertices[triangle.corner[before(at)]] - corner;
                    return std::atan2(cross(right, left), dot(right, left));
                };
                ASSERT_LT(angle(triangles[t], i) + angle(triangles[u], j), std::numbers::pi + 1e-5);
            }
            ASSERT_TRUE(found);
        }
    }
}

TEST(Triangulation, CoversRandomHallsExactly) {
    for (std::uint64_t seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        Polygons const hall = random_hall(seed, static_cast<int>(seed % 60));
        Triangulation const triangulation = triangulated(hall);
        expect_sound(triangulation);
        EXPECT_NEAR(area(triangulation), pedflux::engine::area(hall), 1e-3);
    }
}

struct Case {
    char const* name;
    Polygons polygons;
    std::size_t vertices;
    std::size_t triangles;
};

TEST(Triangulation, CountsTrianglesOfAwkwardPlans) {
    Case const cases[] = {
        {"nothing", {}, 0, 0},
        {"square", {{rectangle({0, 0}, {1, 1}), {}}}, 4, 2},
        {"column of points in line first", {{{{0, 0}, {5, 1}, {0, 3}, {0, 2}, {0, 1}}, {}}}, 5, 3},
        {"hole touches the outline in a corner", {{rectangle({0, 0}, {4, 4}), {{{0, 0}, {1, 2}, {2, 1}}}}}, 6, 5},
        {"two holes touch", {{rectangle({0, 0}, {6, 6}), {{{1, 1}, {1, 3}, {3, 3}}, {{3, 3}, {3, 5}, {5, 5}}}}}, 9, 10},
        {"edge through a corner of a hole", {{rectangle({0, 0}, {4, 4}), {{{2, 0}, {1, 1}, {3, 1}}}}}, 7, 6},
        {"two polygons", {{rectangle({0, 0}, {1, 1}), {}}, {rectangle({2, 0}, {3, 1}), {}}}, 8, 4},
        {"far from the zero point", {{rectangle({530000, 180000}, {530010, 180010}), {}}}, 4, 2},
    };
    for (Case const& plan : cases) {
        SCOPED_TRACE(plan.name);
        Triangulation const triangulation = triangulated(plan.polygons);
        expect_sound(triangulation);
        EXPECT_EQ(triangulation.vertices.size(), plan.vertices);
        EXPECT_EQ(triangulation.triangles.size(), plan.triangles);
        EXPECT_NEAR(area(triangulation), pedflux::engine::area(plan.polygons), 1e-6);
    }
}

}  // namespace
}  // namespace pedflux::engine::navigation::testing
