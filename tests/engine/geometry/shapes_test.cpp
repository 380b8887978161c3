#include "engine/geometry/smallest_sphere.h"
#include "tests/engine/geometry/expect.h"

#include <pedflux/geometry.h>

#include <limits>
#include <vector>

namespace pedflux {
namespace {

using test::expect_near;

TEST(Polylines, AreEditedAndMovedAsTheirVertices) {
    PolylineGeometry line({{0, 0, 0}, {3, 0, 0}, {3, 4, 0}});
    expect_near(line.GetStartPoint(), {0, 0, 0}, 0);
    expect_near(line.GetEndPoint(), {3, 4, 0}, 0);
    expect_near(line.VerticesTranslatedBy({2, 2}, {0, 0, 1})->GetEndPoint(), {3, 4, 1}, 0);
    expect_near(line.VerticesScaledAbout({1}, {0, 0, 0}, 2)->GetVertex(1), {6, 0, 0}, 0);
    expect_near(line.VerticesScaledAlong({2}, Axis3d({0, 0, 0}, {0, 1, 0}), 0.5)->GetEndPoint(), {3, 2, 0}, 0);
    expect_near(line.VerticesRotatedAbout({1}, Axis3d({0, 0, 0}, {0, 1, 0}), 90)->GetVertex(1), {0, 0, -3}, 0);
    auto const mirrored = line.MirroredAcross(Axis3d({1, 0, 0}, {1, 0, 0}))->AsPolylineGeometry();
    expect_near(mirrored->GetEndPoint(), {-1, 4, 0}, 1e-12);
    EXPECT_NEAR(line.GetBoundingSphere().GetRadius(), 2.5, 1e-12);
    expect_near(line.GetBoundingBox().GetMax(), {3, 4, 0}, 0);
    EXPECT_EQ(line.GetGeometryTypeId(), static_cast<int>(GeometryType::POLYLINE));
    EXPECT_EQ(line.AsMeshGeometry(), nullptr);
    EXPECT_EQ(PolylineGeometry::Create({{0, 0, 0}, {1, 0, 0}, {0, 0, 0}})->GetVertexCount(), 3);
    EXPECT_REFUSED(PolylineGeometry::Create({{0, 0, 0}}), "polyline has 1 vertices; it must have at least two");
    EXPECT_REFUSED(PolylineGeometry::Create({}), "polyline has 0 vertices");
    EXPECT_REFUSED(PolylineGeometry::Create({{0, 0, 0}, {1, 0, 0}, {1, 0, 0}}),
                   "vertex 2 repeats the one before at (1, 0, 0)");
    EXPECT_REFUSED(PolylineGeometry::Create({{0, 0, 0}, Vec3d::INVALID}),
                   "vertex 1 of the polyline is (nan, nan, nan)");
    EXPECT_REFUSED(line.VerticesTranslatedBy({1}, {-3, 0, 0}), "vertex 1 repeats");
    EXPECT_REFUSED(line.GetVertex(3), "vertex index is 3");
}

/// Right-handed, with corners to match.
void expect_rectangle(RectangleGeometry& rectangle, double length, double width) {
    EXPECT_NEAR(rectangle.GetLength(), length, 1e-9);
    EXPECT_NEAR(rectangle.GetWidth(), width, 1e-9);
    expect_near(rectangle.GetLengthDirection().Cross(rectangle.GetWidthDirection()), rectangle.GetNormalDirection());
    auto corners = rectangle.GetVertices();
    ASSERT_EQ(corners.size(), 4U);
    expect_near(
        LineSeg3d(corners[0], corners[1]).GetMidpoint(),
        LineSeg3d(corners[3], corners[2])
            .TranslatedBy({-width * rectangle.GetWidthDirection().GetX(), -width * rectangle.GetWidthDirection().GetY(),
                           -width * rectangle.GetWidthDirection().GetZ()})
            .GetMidpoint());
    EXPECT_NEAR(LineSeg3d(corners[0], corners[1]).GetLength(), length, 1e-9);
    auto const mesh = rectangle.AsMeshGeometry();
    EXPECT_EQ(mesh->GetFaceCount(), 2);
    for (int const face : {0, 1}) expect_near(mesh->GetNormalForFace(face), rectangle.GetNormalDirection());
    EXPECT_NEAR(rectangle.GetBoundingSphere().GetRadius(), std::hypot(length, width) / 2, 1e-9);
}

TEST(Rectangles, StayRectanglesWhereTheyCan) {
    test::Random random(7);
    for (int round = 0; round < 100; ++round) {
        Axis3d frame(random.point(5), random.point(1));
        double const angle = random.between(0, 360);
        auto const turned = [&](Vec3d const& direction) {
            return LineSeg3d({0, 0, 0}, direction)
                .RotatedAbout(Axis3d({0, 0, 0}, frame.GetDirection()), angle)
                .GetEndPoint();
        };
        RectangleGeometry rectangle(random.point(5), turned({1, 0, 0}), turned({0, 0, -1}), 4, 3);
        expect_rectangle(rectangle, 4, 3);
        auto const stays = [](std::shared_ptr<Geometry> const& moved) { return *moved->AsRectangleGeometry(); };
        RectangleGeometry moved = stays(rectangle.RotatedAbout(frame, 77)->TranslatedBy(random.point(9)));
        expect_rectangle(moved, 4, 3);
        moved = stays(rectangle.ScaledAbout(random.point(3), 2));
        expect_rectangle(moved, 8, 6);
        moved = stays(rectangle.ScaledAlong(Axis3d(random.point(3), rectangle.GetLengthDirection()), 2));
        expect_rectangle(moved, 8, 3);
        moved = stays(rectangle.ScaledAlong(Axis3d(random.point(3), rectangle.GetNormalDirection()), 2));
        expect_rectangle(moved, 4, 3);
        moved = stays(rectangle.MirroredAcross(frame));
        expect_rectangle(moved, 4, 3);
        // The mirror image looks to the mirrored side.
        Vec3d const mirrored_normal =
            LineSeg3d({0, 0, 0}, rectangle.GetNormalDirection()).TranslatedBy({0, 0, 0}).GetEndPoint();
        double const across = Vec3d(mirrored_normal).Dot(frame.GetDirection());
        expect_near(moved.GetNormalDirection(), {mirrored_normal.GetX() - 2 * across * frame.GetDirection().GetX(),
                                                 mirrored_normal.GetY() - 2 * across * frame.GetDirection().GetY(),
                                                 mirrored_normal.GetZ() - 2 * across * frame.GetDirection().GetZ()});
    }
    RectangleGeometry flat({0, 0, 0}, {1, 0, 0}, {0, 0, -1}, 4, 3);
    auto const sheared = flat.ScaledAlong(Axis3d({0, 0, 0}, {1, 0, 1}), 2);
    EXPECT_EQ(sheared->GetGeometryTypeId(), static_cast<int>(GeometryType::MESH));
    EXPECT_EQ(sheared->AsRectangleGeometry(), nullptr);
    double area = 0;
    for (Tri3d face : sheared->AsMeshGeometry()->GetFaces()) area += face.GetArea();
    EXPECT_NEAR(area, 24, 1e-9);
}

TEST(Rectangles, AreRecognisedInTheirTriangles) {
    test::Random random(8);
    for (int round = 0; round < 100; ++round) {
        // A grid of cells, turned anywhere.
        std::vector<Tri3d> triangles;
        Axis3d const axis(random.point(5), random.point(1));
        double const angle = random.between(0, 360);
        for (int i = 0; i < 4; ++i)
            for (int k = 0; k < 3; ++k) {
                double const x = 1.5 * i;
                double const z = -1.0 * k;
                triangles.push_back(Tri3d({x, 0, z}, {x + 1.5, 0, z}, {x + 1.5, 0, z - 1}).RotatedAbout(axis, angle));
                triangles.push_back(Tri3d({x, 0, z}, {x + 1.5, 0, z - 1}, {x, 0, z - 1}).RotatedAbout(axis, angle));
            }
        auto const direction = [&](Vec3d const& d) {
            return LineSeg3d({0, 0, 0}, d)
                .RotatedAbout(Axis3d({0, 0, 0}, Axis3d(axis).GetDirection()), angle)
                .GetEndPoint();
        };
        RectangleGeometry along(triangles, direction({1, 0, 0}));
        expect_rectangle(along, 6, 3);
        expect_near(along.GetVertices()[0], triangles[0].GetFirstVertex());
        RectangleGeometry across(triangles, direction({0, 0, 2}));
        expect_rectangle(across, 3, 6);
        expect_near(across.GetNormalDirection(), along.GetNormalDirection());
    }
}

TEST(Rectangles, AreNotMadeOfOtherThings) {
    Tri3d const lower({0, 0, 0}, {2, 0, 0}, {2, 0, -1});
    Tri3d const upper({0, 0, 0}, {2, 0, -1}, {0, 0, -1});
    Vec3d const along(1, 0, 0);
    EXPECT_NO_THROW(RectangleGeometry({lower, upper}, along));
    struct Case {
        char const* name;
        std::vector<Tri3d> triangles;
        Vec3d direction;
        char const* message;
    };
    for (auto const& [name, triangles, direction, message] : {
             Case{"none", {}, along, "mesh has no faces"},
             Case{"half", {lower}, along, "is on no side"},
             Case{"no direction", {lower, upper}, {0, 0, 0}, "length direction of the rectangle is (0, 0, 0)"},
             Case{"oblique direction", {lower, upper}, {1, 0, -1}, "is on no side"},
             Case{"direction out of the plane", {lower, upper}, {1, 0.1, 0}, "leaves their plane"},
             Case{"one turned over",
                  {lower, {{0, 0, 0}, {0, 0, -1}, {2, 0, -1}}},
                  along,
                  "triangle 1 looks to the other side"},
             Case{"one bent up", {lower, {{0, 0, 0}, {2, 0, -1}, {0, 0.5, -1}}}, along, "is not in the plane"},
             Case{"one twice", {lower, upper, upper}, along, "make up no rectangle"},
             Case{"both twice", {lower, upper, lower, upper}, along, "they have 4 square metres, it has 2"},
             Case{"parallelogram",
                  {{{0, 0, 0}, {2, 0, 0}, {3, 0, -1}}, {{0, 0, 0}, {3, 0, -1}, {1, 0, -1}}},
                  along,
                  "is on no side"},
         }) {
        SCOPED_TRACE(name);
        EXPECT_REFUSED(RectangleGeometry(triangles, direction), message);
    }
    Vec3d const origin;
    Vec3d const across(0, 0, -1);
    EXPECT_REFUSED(RectangleGeometry(origin, along, {1, 0, -1}, 1, 1), "must be perpendicular to the length direction");
    EXPECT_REFUSED(RectangleGeometry(origin, along, across, 0, 1), "length of the rectangle is 0");
    EXPECT_REFUSED(RectangleGeometry(origin, along, across, 1, -2), "width of the rectangle is -2");
    EXPECT_REFUSED(RectangleGeometry(Vec3d::INVALID, along, across, 1, 1), "centre of the rectangle");
}

engine::Sphere badoiu_clarkson(std::vector<engine::Vector> const& points) {
    // Steps towards the farthest point, ever shorter: never below the smallest sphere, and close to it in the end.
    engine::Sphere sphere{points[0], 0};
    for (int step = 1; step < 20000; ++step) {
        engine::Vector farthest = points[0];
        for (auto const point : points)
            if (distance(sphere.center, point) > distance(sphere.center, farthest)) farthest = point;
        sphere.radius = distance(sphere.center, farthest);
        sphere.center = sphere.center + (1.0 / (step + 1)) * (farthest - sphere.center);
    }
    sphere.radius = 0;
    for (auto const point : points) sphere.radius = std::max(sphere.radius, distance(sphere.center, point));
    return sphere;
}

TEST(SmallestSpheres, HoldAllAndAreNoLargerThanNeeded) {
    test::Random random(9);
    for (int round = 0; round < 60; ++round) {
        std::vector<engine::Vector> points;
        for (std::size_t i = 0; i < 1 + random.below(30); ++i) {
            auto point = engine::vector_of(random.point(10));
            if (round % 4 == 1) point.y = 0;
            if (round % 4 == 2) point = {point.x, 2 * point.x, 1};
            if (round % 4 == 3) point = {std::round(point.x / 5), std::round(point.y / 5), std::round(point.z / 5)};
            points.push_back(point);
        }
        auto const sphere = engine::smallest_sphere(points);
        for (auto const point : points) EXPECT_LE(distance(sphere.center, point), sphere.radius);
        auto const approached = badoiu_clarkson(points);
        EXPECT_LE(sphere.radius, approached.radius * (1 + 1e-12) + 1e-12);
        EXPECT_NEAR(sphere.radius, approached.radius, 1e-3 * approached.radius);
    }
    // Many points on one sphere, where four that decide are hard to tell from the others.
    std::vector<engine::Vector> surface;
    for (int i = 0; i < 20000; ++i)
        surface.push_back(engine::Vector{1000, 2000, 3000} +
                          7 * engine::normalized(engine::vector_of(random.point(1))));
    EXPECT_NEAR(engine::smallest_sphere(surface).radius, 7, 1e-6);
    EXPECT_NEAR(MeshGeometry::CreateBox({0, 0, 0}, {2, 4, 4})->GetBoundingSphere().GetRadius(), 3, 1e-12);
    EXPECT_NEAR(MeshGeometry::CreateCylinder(3, {0, 0, 0}, {0, 8, 0}, 1000)->GetBoundingSphere().GetRadius(), 5, 1e-9);
}

}  // namespace
}  // namespace pedflux
