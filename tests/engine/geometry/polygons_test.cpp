#include "engine/geometry/exact.h"
#include "engine/geometry/simple_ring.h"
#include "tests/engine/geometry/expect.h"

#include <pedflux/geometry.h>

#include <algorithm>
#include <numbers>
#include <string>
#include <vector>

namespace pedflux {
namespace {

using engine::Point;
using engine::Ring;

std::vector<Vec2d> values_of(Ring const& ring) {
    std::vector<Vec2d> values;
    for (Point const corner : ring) values.emplace_back(corner.x, corner.z);
    return values;
}

bool is_simple(Ring const& ring) {
    try {
        engine::require_simple(ring);
        return true;
    } catch (Exception const&) {
        return false;
    }
}

/// The angles across an inner edge sum up to at most two right ones.
void expect_delaunay(MeshGeometry& mesh) {
    for (int edge = 0; edge < mesh.GetEdgeCount(); ++edge) {
        auto const faces = mesh.GetFaceIndicesForEdge(edge);
        if (faces.size() != 2) continue;
        double angles = 0;
        for (int const face : faces) {
            auto const corners = mesh.GetVertexIndicesForFace(face);
            auto const ends = mesh.GetVertexIndicesForEdge(edge);
            auto const tip = *std::find_if(corners.begin(), corners.end(),
                                           [&ends](int corner) { return corner != ends[0] && corner != ends[1]; });
            Vec3d const at = mesh.GetVertex(tip);
            auto const arm = [&](int end) {
                Vec3d const point = mesh.GetVertex(end);
                return Vec3d(point.GetX() - at.GetX(), 0, point.GetZ() - at.GetZ()).GetNormalized();
            };
            angles += std::acos(std::clamp(arm(ends[0]).Dot(arm(ends[1])), -1.0, 1.0));
        }
        EXPECT_LE(angles, std::numbers::pi + 1e-6) << "edge " << edge;
    }
}

/// All corners, no overlap, nothing left out, looking upwards.
void expect_triangulated(Ring const& ring) {
    for (bool const reversed : {false, true}) {
        Ring corners = ring;
        if (reversed) std::reverse(corners.begin(), corners.end());
        auto const mesh = MeshGeometry::CreateFlatPolygon(1.5, values_of(corners));
        ASSERT_EQ(mesh->GetVertexCount(), static_cast<int>(ring.size()));
        ASSERT_EQ(mesh->GetFaceCount(), static_cast<int>(ring.size()) - 2);
        EXPECT_EQ(mesh->GetVertexCount() - mesh->GetEdgeCount() + mesh->GetFaceCount(), 1);
        double area = 0;
        for (int face = 0; face < mesh->GetFaceCount(); ++face) {
            test::expect_near(mesh->GetNormalForFace(face), Vec3d::UP_DIRECTION, 1e-9);
            area += mesh->GetFace(face).GetArea();
        }
        double const expected = std::abs(engine::signed_area(ring));
        EXPECT_NEAR(area, expected, 1e-9 * std::max(1.0, expected));
        for (std::size_t i = 0; i < corners.size(); ++i)
            EXPECT_TRUE(mesh->GetVertex(static_cast<int>(i)).InternalEquals({corners[i].x, 1.5, corners[i].z}));
        expect_delaunay(*mesh);
    }
}

TEST(FlatPolygons, AreTriangulatedWhateverTheirShape) {
    std::vector<Ring> rings{
        {{0, 0}, {1, 0}, {0, 1}},
        {{0, 0}, {4, 0}, {4, 4}, {2, 1}, {0, 4}},
        // Corners in line, as plans have them where walls join.
        {{0, 0}, {1, 0}, {2, 0}, {3, 0}, {3, 1}, {3, 2}, {0, 2}},
        {{0, 0}, {2, 0}, {1, 0.5}, {1, 2}},
    };
    for (int const teeth : {3, 50}) {
        Ring comb;
        for (int tooth = 0; tooth < teeth; ++tooth) {
            comb.push_back({2.0 * tooth, 0});
            comb.push_back({2.0 * tooth, 10});
            comb.push_back({2.0 * tooth + 1, 10});
            comb.push_back({2.0 * tooth + 1, 0});
        }
        comb.push_back({2.0 * teeth, 0});
        comb.push_back({2.0 * teeth, -1});
        comb.push_back({0, -1});
        rings.push_back(comb);
    }
    Ring spiral;
    for (int i = 0; i <= 80; ++i) spiral.push_back({(5 + i) * std::cos(0.3 * i), (5 + i) * std::sin(0.3 * i)});
    for (int i = 80; i >= 0; --i) spiral.push_back({(3 + i) * std::cos(0.3 * i), (3 + i) * std::sin(0.3 * i)});
    rings.push_back(spiral);
    for (auto const& ring : rings) expect_triangulated(ring);
    // Closed explicitly.
    EXPECT_EQ(MeshGeometry::CreateFlatPolygon(0, {{0, 0}, {1, 0}, {0, 1}, {0, 0}})->GetVertexCount(), 3);
}

TEST(FlatPolygons, TakeNearlyStraightWallsAtAnyAngleAndPlace) {
    test::Random random(5);
    for (int round = 0; round < 200; ++round) {
        double const angle = random.between(0, 360) * std::numbers::pi / 180;
        Point const place{random.between(-1e6, 1e6), random.between(-1e6, 1e6)};
        Ring ring;
        // Each side of a rectangle in pieces; after turning, its corners are in line but for rounding.
        auto const add_side = [&](Point from, Point to, int pieces) {
            for (int i = 0; i < pieces; ++i) {
                Point const p = engine::at({from, to}, static_cast<double>(i) / pieces);
                ring.push_back(place + Point{p.x * std::cos(angle) - p.z * std::sin(angle),
                                             p.x * std::sin(angle) + p.z * std::cos(angle)});
            }
        };
        add_side({0, 0}, {30, 0}, 7);
        add_side({30, 0}, {30, 12}, 5);
        add_side({30, 12}, {0, 12}, 3);
        add_side({0, 12}, {0, 0}, 11);
        auto const mesh = MeshGeometry::CreateFlatPolygon(0, values_of(ring));
        ASSERT_EQ(mesh->GetFaceCount(), static_cast<int>(ring.size()) - 2);
        double area = 0;
        for (Tri3d face : mesh->GetFaces()) area += face.GetArea();
        EXPECT_NEAR(area, 360, 1e-6);
    }
}

TEST(FlatPolygons, GrownAtRandomAreTriangulated) {
    test::Random random(6);
    for (int round = 0; round < 60; ++round) {
        Ring ring{{0, 0}, {10, 0}, {5, 8}};
        // A coarse grid brings corners in line and onto each other's extensions.
        double const step = round % 2 == 0 ? 1 : 0.001;
        for (int attempt = 0; attempt < 400; ++attempt) {
            Ring grown = ring;
            Point const added{step * std::round(random.between(-5, 15) / step),
                              step * std::round(random.between(-5, 15) / step)};
            grown.insert(grown.begin() + static_cast<std::ptrdiff_t>(random.below(ring.size()) + 1), added);
            if (is_simple(grown)) ring = grown;
        }
        ASSERT_GT(ring.size(), 10U);
        expect_triangulated(ring);
    }
}

TEST(FlatPolygons, ThatMeetThemselvesAreRefusedWithTheirEdges) {
    struct Case {
        char const* name;
        Ring ring;
        char const* message;
    };
    for (auto const& [name, ring, message] : {
             Case{"two corners", {{0, 0}, {1, 0}}, "polygon has 2 corners; it must have at least three"},
             Case{"two corners, closed", {{0, 0}, {1, 0}, {0, 0}}, "polygon has 2 corners"},
             Case{"nothing", {}, "polygon has 0 corners"},
             Case{"repeated corner", {{0, 0}, {1, 0}, {1, 0}, {0, 1}}, "corner 2 repeats corner 1 at (1, 0)"},
             Case{"bow tie",
                  {{0, 0}, {2, 2}, {2, 0}, {0, 2}},
                  "edge 0 from (0, 0) to (2, 2) meets edge 2 from (2, 0) to (0, 2)"},
             Case{"in line", {{0, 0}, {1, 0}, {2, 0}}, "meets edge"},
             Case{"spike",
                  {{0, 0}, {4, 0}, {2, 0}, {2, 2}},
                  "edge 0 from (0, 0) to (4, 0) meets edge 1 from (4, 0) to (2, 0)"},
             Case{"corner on an edge",
                  {{0, 0}, {4, 0}, {4, 4}, {2, 0}, {0, 4}},
                  "edge 0 from (0, 0) to (4, 0) meets edge 3 from (2, 0)"},
             Case{"corner visited twice", {{0, 0}, {2, 2}, {4, 0}, {4, 4}, {2, 2}, {0, 4}}, "meets edge"},
             Case{"edges that overlap",
                  {{0, 0}, {4, 0}, {4, 2}, {3, 2}, {3, 0}, {1, 0}, {1, 2}, {0, 2}},
                  "edge 0 from (0, 0) to (4, 0) meets"},
             Case{"not finite", {{0, 0}, {1, 0}, {0, std::nan("")}}, "corner 2 of the polygon is (0, 0, nan)"},
         }) {
        SCOPED_TRACE(name);
        EXPECT_REFUSED(MeshGeometry::CreateFlatPolygon(0, values_of(ring)), message);
    }
    EXPECT_REFUSED(MeshGeometry::CreateFlatPolygon(std::nan(""), {{0, 0}, {1, 0}, {0, 1}}), "(0, nan, 0)");
}

TEST(ExactOrientation, AgreesWithWholeNumbers) {
    __extension__ using Whole = __int128;
    // Coordinates near 0.5 and 12 in steps of the smallest difference, where plain arithmetic errs.
    double const step = std::ldexp(1, -53);
    int wrong_when_rounded = 0;
    for (int i = 0; i < 64; ++i)
        for (int k = 0; k < 64; ++k) {
            Point const a{0.5 + i * step, 0.5 + k * step};
            Point const b{12, 12};
            Point const c{24, 24};
            auto const whole = [step](double value) { return static_cast<Whole>(value / step); };
            Whole const exact = (whole(b.x) - whole(a.x)) * (whole(c.z) - whole(a.z)) -
                                (whole(b.z) - whole(a.z)) * (whole(c.x) - whole(a.x));
            int const sign = (exact > 0) - (exact < 0);
            EXPECT_EQ(engine::exact_orientation(a, b, c), sign);
            EXPECT_EQ(engine::exact_orientation(b, c, a), sign);
            EXPECT_EQ(engine::exact_orientation(c, b, a), -sign);
            double const rounded = engine::orientation(a, b, c);
            wrong_when_rounded += ((rounded > 0) - (rounded < 0)) != sign;
        }
    EXPECT_GT(wrong_when_rounded, 100) << "the points try too little";
}

}  // namespace
}  // namespace pedflux
