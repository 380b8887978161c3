#include "tests/engine/geometry/expect.h"

#include <pedflux/geometry.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <numbers>
#include <set>
#include <string>

namespace pedflux {
namespace {

using test::expect_near;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

double area_of(MeshGeometry& mesh) {
    double area = 0;
    for (Tri3d face : mesh.GetFaces()) area += face.GetArea();
    return area;
}

/// Positive when the faces look outwards.
double volume_of(MeshGeometry& mesh) {
    Vec3d origin = mesh.GetVertex(0);
    double volume = 0;
    for (Tri3d face : mesh.GetFaces()) {
        Vec3d const offset(-origin.GetX(), -origin.GetY(), -origin.GetZ());
        Tri3d near = face.TranslatedBy(offset);
        volume += near.GetFirstVertex().Dot(near.GetSecondVertex().Cross(near.GetThirdVertex())) / 6;
    }
    return volume;
}

/// The area of a regular polygon with its corners on a circle.
double disc_area(double radius, int sides) {
    return 0.5 * sides * radius * radius * std::sin(2 * std::numbers::pi / sides);
}

struct Solid {
    char const* name;
    std::shared_ptr<MeshGeometry> mesh;
    double volume;
};

std::vector<Solid> solids() {
    return {
        {"box", MeshGeometry::CreateBox({1, 2, 3}, {4, 6, 8}), 60},
        {"box from other corners", MeshGeometry::CreateBox({4, 2, 8}, {1, 6, 3}), 60},
        {"cone", MeshGeometry::CreateCone(2, {1, 0, 0}, {1, 3, 0}), disc_area(2, 24)},
        {"leaning cone of three sides", MeshGeometry::CreateCone(2, {0, 0, 0}, {2, 2, 1}, 3), disc_area(2, 3)},
        {"hanging cone", MeshGeometry::CreateCone(1, {0, 5, 0}, {0, 2, 0}, 7), disc_area(1, 7)},
        {"cylinder", MeshGeometry::CreateCylinder(2, {0, 0, 0}, {0, 5, 0}), 5 * disc_area(2, 24)},
        {"lying cylinder", MeshGeometry::CreateCylinder(2, {0, 0, 0}, {-3, 0, 4}, 100), 5 * disc_area(2, 100)},
        {"slab", MeshGeometry::CreateRamp({0, 0, 0}, {3, 3, 4}, 2, 0.5), 5 * 2 * 0.5},
        {"falling slab", MeshGeometry::CreateRamp({0, 3, 0}, {0, 0, 4}, 2, 0.5), 4 * 2 * 0.5},
    };
}

TEST(Solids, AreClosedAndLookOutwards) {
    for (auto const& [name, mesh, volume] : solids()) {
        SCOPED_TRACE(name);
        EXPECT_EQ(mesh->GetVertexCount() - mesh->GetEdgeCount() + mesh->GetFaceCount(), 2);
        EXPECT_NEAR(volume_of(*mesh), volume, 1e-9);
        for (int edge = 0; edge < mesh->GetEdgeCount(); ++edge) {
            auto const ends = mesh->GetVertexIndicesForEdge(edge);
            auto const faces = mesh->GetFaceIndicesForEdge(edge);
            ASSERT_EQ(faces.size(), 2U);
            int balance = 0;
            for (int const face : faces) {
                auto const edges = mesh->GetEdgeIndicesForFace(face);
                auto const side = static_cast<std::size_t>(std::find(edges.begin(), edges.end(), edge) - edges.begin());
                ASSERT_LT(side, 3U);
                auto const corners = mesh->GetVertexIndicesForFace(face);
                balance += corners[side] == ends[0] && corners[(side + 1) % 3] == ends[1] ? 1 : -1;
            }
            EXPECT_EQ(balance, 0) << "edge " << edge << " is run through twice the same way";
            EXPECT_TRUE(mesh->GetEdge(edge).GetStartPoint().InternalEquals(mesh->GetVertex(ends[0])));
        }
        for (int face = 0; face < mesh->GetFaceCount(); ++face)
            EXPECT_NEAR(mesh->GetNormalForFace(face).GetLength(), 1, 1e-12);
        // Taken apart and welded again it is the same.
        auto const again = MeshGeometry::Create(mesh->GetFaces());
        EXPECT_EQ(again->GetVertexCount(), mesh->GetVertexCount());
        EXPECT_EQ(again->GetEdgeCount(), mesh->GetEdgeCount());
        EXPECT_NEAR(volume_of(*again), volume, 1e-9);
    }
}

TEST(Solids, MovedKeepWhatTheMoveKeeps) {
    test::Random random(2);
    for (auto const& [name, mesh, volume] : solids()) {
        SCOPED_TRACE(name);
        Axis3d const axis(random.point(5), random.point(1));
        struct Case {
            char const* move;
            std::shared_ptr<Geometry> result;
            double volume_factor;
            double area_factor;  ///< nan: not told by the move
        };
        for (auto const& [move, result, volume_factor, area_factor] :
             {Case{"translated", mesh->TranslatedBy(random.point(50)), 1, 1},
              Case{"rotated", mesh->RotatedAbout(axis, random.between(0, 360)), 1, 1},
              Case{"scaled", mesh->ScaledAbout(random.point(5), 3), 27, 9},
              Case{"stretched", mesh->ScaledAlong(axis, 0.25), 0.25, nan},
              Case{"mirrored", mesh->MirroredAcross(axis), 1, 1}}) {
            SCOPED_TRACE(move);
            auto const moved = result->AsMeshGeometry();
            EXPECT_NEAR(volume_of(*moved), volume_factor * volume, 1e-7);
            if (!std::isnan(area_factor)) {
                EXPECT_NEAR(area_of(*moved), area_factor * area_of(*mesh), 1e-7);
            }
            for (Vec3d const& vertex : moved->GetVertices()) EXPECT_TRUE(moved->GetBoundingBox().Contains(vertex));
        }
        auto const back = mesh->MirroredAcross(axis)->MirroredAcross(axis)->AsMeshGeometry();
        expect_near(back->GetVertex(0), mesh->GetVertex(0));
        EXPECT_EQ(back->GetVertexIndicesForFace(0), mesh->GetVertexIndicesForFace(0));
        EXPECT_NEAR(volume_of(*mesh), volume, 1e-9) << "the mesh itself has changed";
    }
}

TEST(Surfaces, LookWhereTheyShould) {
    // To the right of the way from the first corner to the second, whichever of them is higher.
    for (auto const& mesh : {MeshGeometry::CreateVerticalRectangle({0, 0, 0}, {0, 3, -4}),
                             MeshGeometry::CreateVerticalRectangle({0, 3, 0}, {0, 0, -4})}) {
        EXPECT_DOUBLE_EQ(area_of(*mesh), 12);
        expect_near(mesh->GetNormalForFace(0), Vec3d::RIGHT_DIRECTION);
        expect_near(mesh->GetNormalForFace(1), Vec3d::RIGHT_DIRECTION);
    }
    auto const ramp = MeshGeometry::CreateRamp({0, 1, 0}, {0, 4, -4}, 2);
    EXPECT_NEAR(area_of(*ramp), 10, 1e-12);
    expect_near(ramp->GetNormalForFace(0), {0, 0.8, 0.6});
    EXPECT_EQ(ramp->GetFaceCount(), 2);
}

TEST(Solids, RefuseSizesThatLeaveNoShape) {
    Vec3d const origin;
    Vec3d const above(0, 1, 0);
    EXPECT_REFUSED(MeshGeometry::CreateBox(origin, {1, 1, 0}), "box has the size (1, 1, 0)");
    EXPECT_REFUSED(MeshGeometry::CreateBox(origin, {1, nan, 1}), "opposite corner of the box is (1, nan, 1)");
    EXPECT_REFUSED(MeshGeometry::CreateBox(origin, {1, 1, 1e10}), "within 1e9 m");
    EXPECT_REFUSED(MeshGeometry::CreateVerticalRectangle(origin, above), "plan direction of the rectangle");
    EXPECT_REFUSED(MeshGeometry::CreateVerticalRectangle(origin, {1, 0, 0}), "height of the rectangle is 0");
    EXPECT_REFUSED(MeshGeometry::CreateCone(-1, origin, above), "radius of the cone is -1");
    EXPECT_REFUSED(MeshGeometry::CreateCone(1, origin, origin),
                   "direction from the cone's base to its apex is (0, 0, 0)");
    EXPECT_REFUSED(MeshGeometry::CreateCylinder(1, origin, above, 2), "side count is 2; it must be from 3 to 10000");
    EXPECT_REFUSED(MeshGeometry::CreateCylinder(1, origin, above, 2147483647), "side count is 2147483647");
    EXPECT_REFUSED(MeshGeometry::CreateRamp(origin, above, 1), "plan direction of the ramp");
    EXPECT_REFUSED(MeshGeometry::CreateRamp(origin, {1, 1, 1}, 0), "width of the ramp is 0");
    EXPECT_REFUSED(MeshGeometry::CreateRamp(origin, {1, 1, 1}, 1, -1), "thickness of the ramp is -1");
}

TEST(Welding, JoinsCornersWithinTheTolerance) {
    auto const pair_at = [](double gap) {
        return std::vector<Tri3d>{{{0, 0, 0}, {1, 0, 0}, {0, 0, 1}}, {{1 + gap, 0, 0}, {1, 0, 1}, {0, 0, 1 + gap}}};
    };
    struct Case {
        double gap;
        double tolerance;
        int vertices;
        int edges;
    };
    for (auto const& [gap, tolerance, vertices, edges] :
         {Case{0, 0, 4, 5}, Case{1e-9, 0, 6, 6}, Case{0.9e-6, 1e-6, 4, 5}, Case{1.1e-6, 1e-6, 6, 6},
          Case{-0.05, 0.1, 4, 5}, Case{0.2, 0.1, 6, 6}}) {
        SCOPED_TRACE(gap);
        auto const mesh = MeshGeometry::Create(pair_at(gap), tolerance);
        EXPECT_EQ(mesh->GetVertexCount(), vertices);
        EXPECT_EQ(mesh->GetEdgeCount(), edges);
        EXPECT_EQ(mesh->GetFaceCount(), 2);
    }
    EXPECT_EQ(MeshGeometry::Create(pair_at(0.9e-6))->GetVertexCount(), 4) << "a micrometre is the default";
    EXPECT_EQ(MeshGeometry::Create(pair_at(-0.0))->GetVertexCount(), 4);
    // Corners on both sides of a boundary of whatever the search divides space into.
    test::Random random(3);
    for (int round = 0; round < 2000; ++round) {
        double const scale = std::pow(10, random.between(-6, 4));
        Vec3d const a(std::round(random.between(-20, 20)) * scale, 0, 0);
        Vec3d const near(a.GetX() + random.between(-1e-6, 1e-6), 0, 0);
        std::vector<Tri3d> const triangles{{a, {2e5, 0, 0}, {2e5, 0, 1}}, {near, {2e5, 0, 1}, {2e5, 1, 1}}};
        EXPECT_EQ(MeshGeometry::Create(triangles, 1.0001e-6)->GetVertexCount(), 4) << a.GetX() << " " << near.GetX();
    }
}

TEST(Meshes, RefuseWhatIsNoSurface) {
    Tri3d const right({0, 0, 0}, {1, 0, 0}, {0, 0, 1});
    EXPECT_REFUSED(MeshGeometry::Create(std::vector<Tri3d>()), "mesh has no faces");
    EXPECT_REFUSED(MeshGeometry::Create({right, Tri3d()}),
                   "face 1 with the corners (0, 0, 0), (0, 0, 0), (0, 0, 0) has no area");
    EXPECT_REFUSED(MeshGeometry::Create({{{0, 0, 0}, {1, 1, 1}, {3, 3, 3}}}), "face 0");
    // But for rounding.
    EXPECT_REFUSED(MeshGeometry::Create({{{0.1, 0, 0.3}, {0.2, 0, 0.6}, {0.3, 0, 0.9}}}), "has no area");
    EXPECT_REFUSED(MeshGeometry::Create({{{0, 0, 0}, {1, 0, 0}, {0, nan, 1}}}),
                   "corner 2 of triangle 0 is (0, nan, 1)");
    EXPECT_REFUSED(MeshGeometry::Create({right}, -1), "weld tolerance is -1");
    EXPECT_REFUSED(MeshGeometry::Create({right}, 2), "face 0");
    MeshGeometry mesh({right});
    EXPECT_REFUSED(mesh.GetVertex(3), "vertex index is 3; it must be from 0 to 2");
    EXPECT_REFUSED(mesh.GetFace(-1), "face index is -1; it must be from 0 to 0");
    EXPECT_REFUSED(mesh.GetEdge(3), "edge index is 3");
    EXPECT_REFUSED(mesh.GetVertexIndicesForEdge(-1), "edge index is -1");
    EXPECT_REFUSED(mesh.GetFaceIndicesForEdge(7), "edge index is 7");
    EXPECT_REFUSED(mesh.FacesTranslatedBy({0, 1}, {0, 1, 0}), "face index is 1");
    EXPECT_REFUSED(mesh.VerticesTranslatedBy({2}, {0, 0, -1}), "has no area");
    EXPECT_REFUSED(mesh.TranslatedBy({1e9, 0, 0})->TranslatedBy({1e9, 0, 0}), "within 1e9 m");
    EXPECT_REFUSED(mesh.ScaledAbout({0, 0, 0}, 0), "scale factor is 0");
    EXPECT_EQ(mesh.VerticesTranslatedBy({}, {0, 1, 0})->GetVertexCount(), 3);
    EXPECT_EQ(mesh.AsPolylineGeometry(), nullptr);
    EXPECT_EQ(mesh.AsRectangleGeometry(), nullptr);
}

TEST(Meshes, EditedMoveEachChosenVertexOnce) {
    auto const box = MeshGeometry::CreateBox({0, 0, 0}, {1, 1, 1});
    Vec3d const offset(0.25, 0.5, 0.125);
    Axis3d const axis({0, 0, 0}, {0, 1, 0});
    std::vector<int> const chosen{0, 4, 0};
    auto const vertices_of = [&box](std::vector<int> (MeshGeometry::*vertices)(int), std::vector<int> const& indices) {
        std::set<int> found;
        for (int const index : indices)
            for (int const vertex : ((*box).*vertices)(index)) found.insert(vertex);
        return found;
    };
    std::set<int> const vertices(chosen.begin(), chosen.end());
    auto const edge_vertices = vertices_of(&MeshGeometry::GetVertexIndicesForEdge, chosen);
    auto const face_vertices = vertices_of(&MeshGeometry::GetVertexIndicesForFace, chosen);
    auto const translated = [&](Vec3d p) { return LineSeg3d(p, p).TranslatedBy(offset).GetStartPoint(); };
    auto const scaled = [](Vec3d p) { return LineSeg3d(p, p).ScaledAbout({5, 5, 5}, 0.5).GetStartPoint(); };
    auto const stretched = [&](Vec3d p) { return LineSeg3d(p, p).ScaledAlong(axis, 4).GetStartPoint(); };
    auto const rotated = [&](Vec3d p) { return LineSeg3d(p, p).RotatedAbout(axis, 10).GetStartPoint(); };
    struct Case {
        char const* edit;
        std::shared_ptr<MeshGeometry> result;
        std::set<int> moved;
        std::function<Vec3d(Vec3d)> move;
    };
    for (auto const& [edit, result, moved, move] : {
             Case{"vertices translated", box->VerticesTranslatedBy(chosen, offset), vertices, translated},
             Case{"vertices scaled", box->VerticesScaledAbout(chosen, {5, 5, 5}, 0.5), vertices, scaled},
             Case{"vertices stretched", box->VerticesScaledAlong(chosen, axis, 4), vertices, stretched},
             Case{"vertices rotated", box->VerticesRotatedAbout(chosen, axis, 10), vertices, rotated},
             Case{"edges translated", box->EdgesTranslatedBy(chosen, offset), edge_vertices, translated},
             Case{"edges scaled", box->EdgesScaledAbout(chosen, {5, 5, 5}, 0.5), edge_vertices, scaled},
             Case{"edges stretched", box->EdgesScaledAlong(chosen, axis, 4), edge_vertices, stretched},
             Case{"edges rotated", box->EdgesRotatedAbout(chosen, axis, 10), edge_vertices, rotated},
             Case{"faces translated", box->FacesTranslatedBy(chosen, offset), face_vertices, translated},
             Case{"faces scaled", box->FacesScaledAbout(chosen, {5, 5, 5}, 0.5), face_vertices, scaled},
             Case{"faces stretched", box->FacesScaledAlong(chosen, axis, 4), face_vertices, stretched},
             Case{"faces rotated", box->FacesRotatedAbout(chosen, axis, 10), face_vertices, rotated},
         }) {
        SCOPED_TRACE(edit);
        ASSERT_EQ(result->GetVertexCount(), 8);
        EXPECT_EQ(result->GetEdgeCount(), box->GetEdgeCount());
        for (int vertex = 0; vertex < 8; ++vertex)
            expect_near(result->GetVertex(vertex),
                        moved.contains(vertex) ? move(box->GetVertex(vertex)) : box->GetVertex(vertex));
    }
}

TEST(Meshes, WeldManyTrianglesInOrdinaryTime) {
    // Forty thousand quads that all share their x: the search must not degrade to trying each against each.
    std::vector<Tri3d> wall;
    for (int y = 0; y < 200; ++y)
        for (int z = 0; z < 200; ++z) {
            wall.push_back({{5, 1.0 * y, 1.0 * z}, {5, y + 1.0, 1.0 * z}, {5, y + 1.0, z + 1.0}});
            wall.push_back({{5, 1.0 * y, 1.0 * z}, {5, y + 1.0, z + 1.0}, {5, 1.0 * y, z + 1.0}});
        }
    auto const mesh = MeshGeometry::Create(wall);
    EXPECT_EQ(mesh->GetVertexCount(), 201 * 201);
    EXPECT_EQ(mesh->GetVertexCount() - mesh->GetEdgeCount() + mesh->GetFaceCount(), 1);
}

}  // namespace
}  // namespace pedflux
