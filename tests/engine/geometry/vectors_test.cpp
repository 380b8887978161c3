#include "tests/engine/geometry/expect.h"

#include <pedflux/geometry.h>
#include <pedflux/vectors.h>

#include <limits>
#include <type_traits>
#include <vector>

namespace pedflux {
namespace {

using test::expect_near;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

template <class... Values>
constexpr bool all_trivially_destructible = (std::is_trivially_destructible_v<Values> && ...);
static_assert(all_trivially_destructible<Vec2d, Vec3d, Axis3d, LineSeg3d, Tri3d, BoundingBox3d, BoundingSphere3d>);

TEST(Vectors, HeadingsRunClockwiseFromForward) {
    struct Case {
        Vec2d direction;
        double heading;
    };
    for (auto [direction, heading] :
         {Case{Vec2d::FORWARD_DIRECTION, 0}, Case{{1, -1}, 45}, Case{Vec2d::RIGHT_DIRECTION, 90},
          Case{Vec2d::Z_DIRECTION, 180}, Case{Vec2d::LEFT_DIRECTION, 270}, Case{{-1, -1}, 315}}) {
        EXPECT_DOUBLE_EQ(direction.GetHeading(), heading);
        EXPECT_DOUBLE_EQ(Vec3d(direction.GetX(), 7, direction.GetZ()).GetHeading(), heading);
        // Turning by its own heading brings every direction forward.
        expect_near(Vec3d(direction.GetX(), 0, direction.GetZ()).GetNormalized().RotatedBy(heading),
                    Vec3d::FORWARD_DIRECTION, 1e-15);
    }
    EXPECT_LT(Vec2d(-1e-300, -1).GetHeading(), 360) << "rounding must not reach the full turn";
    EXPECT_TRUE(std::isnan(Vec2d(Vec2d::ZERO).GetHeading()));
    EXPECT_TRUE(std::isnan(Vec3d(Vec3d::UP_DIRECTION).GetHeading()));
}

TEST(Vectors, QuarterTurnsAreExact) {
    Vec3d vector(1.1, 2.2, 3.3);
    for (int quarter = -9; quarter <= 9; ++quarter) {
        Vec3d turned = vector;
        for (int i = 0; i < ((quarter % 4) + 4) % 4; ++i) turned = Vec3d(turned.GetZ(), 2.2, -turned.GetX());
        EXPECT_TRUE(vector.RotatedBy(90.0 * quarter).InternalEquals(turned)) << quarter << " quarters";
        Vec2d const plan = Vec2d(1.1, 3.3).RotatedBy(90.0 * quarter);
        EXPECT_TRUE(Vec2d(plan).InternalEquals({turned.GetX(), turned.GetZ()})) << quarter << " quarters";
    }
    EXPECT_REFUSED(vector.RotatedBy(nan), "angle is nan");
    // Right-handed about the upward axis: left of forward.
    EXPECT_TRUE(Vec3d(Vec3d::FORWARD_DIRECTION).RotatedBy(90).InternalEquals(Vec3d::LEFT_DIRECTION));
    EXPECT_TRUE(Vec3d(Vec3d::UP_DIRECTION).Cross(Vec3d::FORWARD_DIRECTION).InternalEquals(Vec3d::LEFT_DIRECTION));
}

TEST(Vectors, NormalizedKeepsItsDirectionAtAnySize) {
    for (double const size : {1e-300, 1e-200, 1.0, 1e200, 1e308}) {
        EXPECT_DOUBLE_EQ(Vec3d(0.75 * size, size, 0).GetNormalized().GetX(), 0.6) << size;
        EXPECT_NEAR(Vec3d(size, size, size).GetNormalized().GetLength(), 1, 1e-15) << size;
    }
    for (Vec3d vector : {Vec3d::ZERO, Vec3d::INVALID, Vec3d(infinity, 0, 0), Vec3d(1, infinity, -infinity)})
        EXPECT_TRUE(vector.GetNormalized().InternalEquals(Vec3d::INVALID));
    EXPECT_TRUE(Vec2d(Vec2d::ZERO).GetNormalized().InternalEquals(Vec2d::INVALID));
}

TEST(Vectors, EqualityAndHashAgree) {
    std::vector<double> const components{0.0, -0.0, 1.0, nan, -nan, infinity, std::nextafter(1.0, 2)};
    std::vector<Vec3d> vectors;
    for (double const x : components)
        for (double const y : components) vectors.emplace_back(x, y, 1);
    int collisions = 0;
    for (Vec3d& a : vectors)
        for (Vec3d& b : vectors) {
            auto const same = [](double c, double d) { return c == d || (std::isnan(c) && std::isnan(d)); };
            EXPECT_EQ(a.InternalEquals(b), same(a.GetX(), b.GetX()) && same(a.GetY(), b.GetY()));
            EXPECT_EQ(Vec2d(a.GetX(), a.GetY()).InternalEquals({b.GetX(), b.GetY()}), a.InternalEquals(b));
            if (a.InternalEquals(b)) {
                EXPECT_EQ(a.InternalHashCode(), b.InternalHashCode());
                EXPECT_EQ(Vec2d(a.GetX(), a.GetY()).InternalHashCode(), Vec2d(b.GetX(), b.GetY()).InternalHashCode());
            } else {
                collisions += a.InternalHashCode() == b.InternalHashCode();
            }
        }
    EXPECT_EQ(collisions, 0);
    EXPECT_NE(Vec3d(1, 2, 3).InternalHashCode(), Vec3d(3, 2, 1).InternalHashCode());
    EXPECT_FALSE(Vec3d(Vec3d::INVALID).IsValid());
    EXPECT_FALSE(Vec2d(0, infinity).IsValid());
    EXPECT_TRUE(Vec3d().IsValid());
}

TEST(Axes, HaveADirection) {
    expect_near(Axis3d({1, 2, 3}, {0, 0, -5}).GetDirection(), {0, 0, -1}, 0);
    EXPECT_REFUSED(Axis3d({0, 0, 0}, {0, 0, 0}), "axis direction is (0, 0, 0)");
    EXPECT_REFUSED(Axis3d({0, 0, 0}, {nan, 1, 0}), "axis direction is (nan, 1, 0)");
    EXPECT_REFUSED(Axis3d({0, infinity, 0}, {1, 0, 0}), "axis origin is (0, inf, 0)");
}

TEST(Figures, MoveAsTheirPointsDo) {
    test::Random random(1);
    for (int round = 0; round < 200; ++round) {
        Tri3d triangle(random.point(10), random.point(10), random.point(10));
        LineSeg3d side(triangle.GetFirstVertex(), triangle.GetSecondVertex());
        Axis3d axis(random.point(10), random.point(1));
        double const angle = random.between(-720, 720);
        double const factor = random.between(0.1, 10);
        EXPECT_NEAR(triangle.RotatedAbout(axis, angle).GetArea(), triangle.GetArea(), 1e-9);
        EXPECT_NEAR(triangle.TranslatedBy(random.point(10)).GetArea(), triangle.GetArea(), 1e-9);
        EXPECT_NEAR(triangle.ScaledAbout(random.point(10), factor).GetArea(), factor * factor * triangle.GetArea(),
                    1e-7);
        EXPECT_NEAR(side.RotatedAbout(axis, angle).GetSquaredLength(), side.GetLength() * side.GetLength(), 1e-9);
        expect_near(side.RotatedAbout(axis, angle).RotatedAbout(axis, -angle).GetEndPoint(), side.GetEndPoint());
        expect_near(triangle.RotatedAbout(axis, angle).GetFirstVertex(),
                    side.RotatedAbout(axis, angle).GetStartPoint());
        // Stretching along an axis leaves what is across it.
        Vec3d start = side.GetStartPoint();
        Vec3d stretched = side.ScaledAlong(axis, factor).GetStartPoint();
        Vec3d const moved(stretched.GetX() - start.GetX(), stretched.GetY() - start.GetY(),
                          stretched.GetZ() - start.GetZ());
        EXPECT_NEAR(Vec3d(moved).Cross(axis.GetDirection()).GetLength(), 0, 1e-9);
        expect_near(triangle.ScaledAlong(axis, factor).ScaledAlong(axis, 1 / factor).GetCentroid(),
                    triangle.GetCentroid());
        EXPECT_TRUE(triangle.GetBoundingBox().Contains(triangle.GetCentroid()));
        EXPECT_NEAR(triangle.GetNormal().Dot(Vec3d(side.GetEndPoint().GetX() - start.GetX(),
                                                   side.GetEndPoint().GetY() - start.GetY(),
                                                   side.GetEndPoint().GetZ() - start.GetZ())),
                    0, 1e-9);
    }
    LineSeg3d segment({1, 0, 0}, {3, 0, 0});
    expect_near(segment.RotatedAbout(Axis3d({1, 0, 0}, {0, 1, 0}), 90).GetEndPoint(), {1, 0, -2}, 0);
    expect_near(segment.ScaledAbout({1, 0, 0}, 3).GetEndPoint(), {7, 0, 0}, 0);
    expect_near(segment.GetMidpoint(), {2, 0, 0}, 0);
    EXPECT_FALSE(Tri3d().GetNormal().IsValid());
    EXPECT_REFUSED(segment.ScaledAbout({0, 0, 0}, 0), "scale factor is 0; it must be a finite number above 0");
    EXPECT_REFUSED(segment.ScaledAlong(Axis3d({0, 0, 0}, {1, 0, 0}), -2), "scale factor is -2");
    EXPECT_REFUSED(segment.TranslatedBy({0, nan, 0}), "offset is (0, nan, 0)");
    EXPECT_REFUSED(segment.RotatedAbout(Axis3d({0, 0, 0}, {1, 0, 0}), infinity), "angle is inf");
}

TEST(BoundingBoxes, AreClosedAndGrowByTheTolerance) {
    BoundingBox3d box({0, 0, 0}, {2, 4, 6});
    expect_near(box.GetCenter(), {1, 2, 3}, 0);
    EXPECT_TRUE(box.Contains(Vec3d(2, 4, 6)));
    EXPECT_FALSE(box.Contains(Vec3d(2.5, 4, 6)));
    EXPECT_TRUE(box.Contains(Vec3d(2.5, 4, 6), 0.5));
    EXPECT_FALSE(box.Contains(Vec3d(2, 4, 6), -0.1));
    EXPECT_FALSE(box.Contains(Vec3d(Vec3d::INVALID)));
    BoundingBox3d const touching({2, 4, 6}, {3, 5, 7});
    BoundingBox3d const apart({2.25, 0, 0}, {3, 1, 1});
    EXPECT_TRUE(box.Overlaps(touching));
    EXPECT_FALSE(box.Overlaps(apart));
    EXPECT_TRUE(box.Overlaps(apart, 0.25));
    EXPECT_FALSE(box.Overlaps(touching, -0.25));
    EXPECT_FALSE(box.Contains(touching));
    EXPECT_TRUE(box.Contains(touching, 1));
    BoundingBox3d hull = box.Hull(touching);
    EXPECT_EQ(hull.GetXMax(), 3);
    EXPECT_EQ(hull.GetYMin(), 0);
    EXPECT_EQ(Vec2d(1, 5).Hull({3, 2}).GetZMin(), 2);
}

TEST(BoundingBoxes, OfNothingHoldNothing) {
    BoundingBox3d nothing;
    BoundingBox3d box({0, 0, 0}, {2, 4, 6});
    EXPECT_FALSE(nothing.Contains(Vec3d()));
    EXPECT_FALSE(nothing.Contains(box));
    EXPECT_TRUE(box.Contains(nothing));
    EXPECT_FALSE(box.Overlaps(nothing));
    EXPECT_FALSE(nothing.Overlaps(nothing));
    EXPECT_FALSE(nothing.GetCenter().IsValid());
    EXPECT_TRUE(nothing.Hull(box).GetMax().InternalEquals({2, 4, 6}));
    EXPECT_TRUE(box.Hull(nothing).GetMin().InternalEquals(Vec3d::ZERO));
    EXPECT_REFUSED(nothing.Hull(Vec3d(0, nan, 0)), "it must be finite");
    EXPECT_REFUSED(BoundingBox3d({0, 1, 0}, {1, 0, 1}), "must not exceed the maximum (1, 0, 1)");
    EXPECT_REFUSED(BoundingBox3d({0, 0, 0}, {1, infinity, 1}), "maximum of the bounding box is (1, inf, 1)");
}

TEST(BoundingSpheres, AreClosed) {
    BoundingSphere3d sphere({0, 0, 0}, 2);
    EXPECT_TRUE(sphere.Contains({0, 0, 2}));
    EXPECT_FALSE(sphere.Contains({0, 0.1, 2}));
    EXPECT_TRUE(sphere.Intersects({{5, 0, 0}, 3}));
    EXPECT_FALSE(sphere.Intersects({{5.1, 0, 0}, 3}));
    BoundingSphere3d nothing;
    EXPECT_FALSE(nothing.Contains({0, 0, 0}));
    EXPECT_FALSE(nothing.Intersects(sphere));
    EXPECT_REFUSED(BoundingSphere3d({0, 0, 0}, -1), "radius of the bounding sphere is -1");
    EXPECT_REFUSED(BoundingSphere3d({nan, 0, 0}, 1), "centre of the bounding sphere is (nan, 0, 0)");
}

}  // namespace
}  // namespace pedflux
