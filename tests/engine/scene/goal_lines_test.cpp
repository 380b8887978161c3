#include "engine/scene/goal_lines.h"

#include "tests/engine/geometry/expect.h"

#include <pedflux/geometry.h>

#include <algorithm>
#include <memory>
#include <numbers>
#include <vector>

namespace pedflux::engine {
namespace {

using Shape = std::shared_ptr<Geometry>;

Shape slab(double width, double depth) {
    return MeshGeometry::CreateFlatPolygon(0, {{0, 0}, {width, 0}, {width, depth}, {0, depth}});
}

/// Steps of 0.3 m by 0.15 m up along x, drawn as boxes.
Shape steps(int count) {
    std::vector<Tri3d> triangles;
    for (int i = 0; i < count; ++i) {
        auto const box = MeshGeometry::CreateBox({0.3 * i, 0, 0}, {0.3 * (i + 1), 0.15 * (i + 1), 2});
        for (auto const& face : box->GetFaces()) triangles.push_back(face);
    }
    return MeshGeometry::Create(triangles);
}

double gap(Vec3d a, Vec3d b) { return LineSeg3d(a, b).GetLength(); }

/// Whether the lines are the same, whichever way they run.
bool same(LineSeg3d a, LineSeg3d b) {
    constexpr double NEARLY = 1e-6;
    auto const ends_meet = [&](Vec3d start, Vec3d end) {
        return gap(a.GetStartPoint(), start) < NEARLY && gap(a.GetEndPoint(), end) < NEARLY;
    };
    return ends_meet(b.GetStartPoint(), b.GetEndPoint()) || ends_meet(b.GetEndPoint(), b.GetStartPoint());
}

TEST(GoalLines, OfPortals) {
    struct {
        char const* what;
        Shape shape;
        LineSeg3d line;
    } const cases[] = {
        {"upright door", MeshGeometry::CreateVerticalRectangle({1, 0.5, 2}, {1, 2.5, 4}), {{1, 0.5, 2}, {1, 0.5, 4}}},
        {"oblique door", MeshGeometry::CreateVerticalRectangle({0, 0, 0}, {3, 2, 4}), {{0, 0, 0}, {3, 0, 4}}},
        {"flat strip", slab(0.2, 3), {{0.1, 0, 0}, {0.1, 0, 3}}},
        {"box", MeshGeometry::CreateBox({0, 1, 0}, {4, 3, 1}), {{0, 1, 0.5}, {4, 1, 0.5}}},
    };
    for (auto const& [what, shape, line] : cases) EXPECT_TRUE(same(centre_goal_line(*shape), line)) << what;
}

TEST(GoalLines, OfConnections) {
    struct {
        char const* what;
        Shape shape;
        LineSeg3d ball, box;
    } const cases[] = {
        {"level, long in x", slab(5, 2), {{0, 0, 0}, {0, 0, 2}}, {{5, 0, 0}, {5, 0, 2}}},
        {"level, long in z", slab(2, 5), {{0, 0, 0}, {2, 0, 0}}, {{0, 0, 5}, {2, 0, 5}}},
        {"slope", MeshGeometry::CreateRamp({0, 0, 1}, {4, 3, 1}, 2), {{0, 0, 0}, {0, 0, 2}}, {{4, 3, 0}, {4, 3, 2}}},
        {"slope down along x",
         MeshGeometry::CreateRamp({0, 3, 1}, {4, 0, 1}, 2),
         {{4, 0, 0}, {4, 0, 2}},
         {{0, 3, 0}, {0, 3, 2}}},
        {"wider than long",
         MeshGeometry::CreateRamp({0, 0, 5}, {2, 1, 5}, 10),
         {{0, 0, 0}, {0, 0, 10}},
         {{2, 1, 0}, {2, 1, 10}}},
        {"slab with sides",
         MeshGeometry::CreateRamp({0, 0, 1}, {4, 3, 1}, 2, 0.3),
         {{0, 0, 0}, {0, 0, 2}},
         {{4, 3, 0}, {4, 3, 2}}},
        {"steps", steps(16), {{0, 0.15, 0}, {0, 0.15, 2}}, {{4.8, 2.4, 0}, {4.8, 2.4, 2}}},
        {"polyline downwards and round a corner",
         PolylineGeometry::Create({{3, 2, 0}, {0, 1, 0}, {0, 0, 4}}),
         {{3, 2, -0.3}, {3, 2, 0.3}},
         {{-0.3, 0, 4}, {0.3, 0, 4}}},
        {"polyline with upright ends",
         PolylineGeometry::Create({{0, 3, 0}, {0, 0, 0}, {3, 0, 4}, {3, 5, 4}}),
         {{0.24, 3, -0.18}, {-0.24, 3, 0.18}},
         {{3.24, 5, 3.82}, {2.76, 5, 4.18}}},
    };
    for (auto const& [what, shape, ball, box] : cases) {
        auto const ends = end_goal_lines(*shape);
        EXPECT_TRUE(same(ends.ball, ball)) << what;
        EXPECT_TRUE(same(ends.box, box)) << what;
    }
}

TEST(GoalLines, MoveAndTurnWithTheShape) {
    Shape const shapes[] = {slab(5, 2), MeshGeometry::CreateRamp({0, 0, 1}, {4, 3, 1}, 2), steps(10)};
    Axis3d const axis({3, 0, -2}, {0, 1, 0});
    for (auto const& shape : shapes) {
        auto const straight = end_goal_lines(*shape);
        for (double angle = 7; angle < 360; angle += 31) {
            auto const turned = end_goal_lines(*shape->RotatedAbout(axis, angle));
            auto expected_ball = LineSeg3d(straight.ball).RotatedAbout(axis, angle);
            auto expected_box = LineSeg3d(straight.box).RotatedAbout(axis, angle);
            // A level shape may swap its ends, as they are told apart by their coordinates.
            bool const level = shape == shapes[0];
            EXPECT_TRUE((same(turned.ball, expected_ball) && same(turned.box, expected_box)) ||
                        (level && same(turned.ball, expected_box) && same(turned.box, expected_ball)))
                << angle;
        }
    }
}

}  // namespace
}  // namespace pedflux::engine
