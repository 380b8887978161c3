#pragma once

#include <pedflux/api.h>

/// Small geometric values. Lengths are metres. The axes are right-handed and y points up; the plan, as seen from above,
/// has x to the right and z towards its lower edge, so that "forward" (heading 0) is -z, "right" is +x, "left" is -x.
///
/// Angles are degrees. A heading is counted clockwise as seen from above: 0 forward, 90 right, 180 back, 270 left.
/// A rotation is right-handed about its axis: about the upward axis it turns counterclockwise as seen from above, so a
/// rotation by a takes the heading h to h - a.
///
/// Vectors hold any components, infinities and NaN included, since arithmetic can give them; what takes a vector checks
/// it. Equality of values is exact equality of components, where 0 equals -0 and NaN equals NaN.
namespace pedflux {

class BoundingBox3d;
class Vec3d;

/// A point or direction in the plan.
class PEDFLUX_API Vec2d {
  public:
    static Vec2d const ZERO;
    /// Stands for "no vector": both components are NaN.
    static Vec2d const INVALID;
    static Vec2d const X_DIRECTION;
    static Vec2d const Z_DIRECTION;
    /// (0, -1)
    static Vec2d const FORWARD_DIRECTION;
    /// (-1, 0)
    static Vec2d const LEFT_DIRECTION;
    /// (1, 0)
    static Vec2d const RIGHT_DIRECTION;

    /// The zero vector.
    constexpr Vec2d() = default;
    constexpr Vec2d(double x, double z) : x_(x), z_(z) {}

    double GetX() const;
    double GetZ() const;
    void SetX(double x);
    void SetZ(double z);

    double GetLength();
    double GetSquaredLength();
    /// The heading in degrees, in [0, 360); NaN for a vector without direction.
    double GetHeading();
    /// The vector of length 1 in the same direction; INVALID for a vector without direction.
    Vec2d GetNormalized();
    /// Whether both components are finite.
    bool IsValid();

    double Dot(Vec2d const& other);
    /// Turned counterclockwise as seen from above, by an angle in degrees.
    Vec2d RotatedBy(double angle);
    /// The box of this point and another, both at the elevation 0.
    BoundingBox3d Hull(Vec2d const& other);

    bool InternalEquals(Vec2d const& other);
    int InternalHashCode();

  private:
    double x_ = 0;
    double z_ = 0;
};

/// A point or direction in space.
class PEDFLUX_API Vec3d {
  public:
    static Vec3d const ZERO;
    /// Stands for "no vector": all components are NaN.
    static Vec3d const INVALID;
    static Vec3d const X_DIRECTION;
    static Vec3d const Y_DIRECTION;
    static Vec3d const Z_DIRECTION;
    /// (0, 1, 0)
    static Vec3d const UP_DIRECTION;
    /// (0, 0, -1)
    static Vec3d const FORWARD_DIRECTION;
    /// (-1, 0, 0)
    static Vec3d const LEFT_DIRECTION;
    /// (1, 0, 0)
    static Vec3d const RIGHT_DIRECTION;

    /// The zero vector.
    constexpr Vec3d() = default;
    constexpr Vec3d(double x, double y, double z) : x_(x), y_(y), z_(z) {}

    double GetX() const;
    double GetY() const;
    double GetZ() const;
    void SetX(double x);
    void SetY(double y);
    void SetZ(double z);

    double GetLength();
    double GetSquaredLength();
    /// The heading of the vector's plan in degrees, in [0, 360); NaN for a vertical vector and for one without
    /// direction.
    double GetHeading();
    /// The vector of length 1 in the same direction; INVALID for a vector without direction.
    Vec3d GetNormalized();
    /// Whether all components are finite.
    bool IsValid();

    double Dot(Vec3d const& other);
    Vec3d Cross(Vec3d const& other);
    /// Turned about the upward axis, counterclockwise as seen from above, by an angle in degrees.
    Vec3d RotatedBy(double angle);
    /// The box of this point and another.
    BoundingBox3d Hull(Vec3d const& other);

    bool InternalEquals(Vec3d const& other);
    int InternalHashCode();

  private:
    double x_ = 0;
    double y_ = 0;
    double z_ = 0;
};

/// A directed straight line through a point: what things turn about, stretch along and mirror across.
class PEDFLUX_API Axis3d {
  public:
    /// Throws Exception when a component is not finite or the direction has no length.
    Axis3d(Vec3d const& originPoint, Vec3d const& direction);

    Vec3d GetOriginPoint();
    /// The direction, of length 1.
    Vec3d GetDirection();

  private:
    Vec3d originPoint_;
    Vec3d direction_;
};

/// A straight line from one point to another.
class PEDFLUX_API LineSeg3d {
  public:
    /// From the zero point to the zero point.
    constexpr LineSeg3d() = default;
    LineSeg3d(Vec3d const& startPoint, Vec3d const& endPoint);

    double GetLength();
    double GetSquaredLength();
    Vec3d GetStartPoint();
    Vec3d GetEndPoint();
    Vec3d GetMidpoint();
    /// Throws Exception when a component is NaN or infinite.
    BoundingBox3d GetBoundingBox();
    void SetStartPoint(Vec3d const& point);
    void SetEndPoint(Vec3d const& point);

    LineSeg3d TranslatedBy(Vec3d const& offset);
    /// Turned right-handed about the axis by an angle in degrees. Throws Exception when the angle is not finite.
    LineSeg3d RotatedAbout(Axis3d const& axis, double angle);
    /// Scaled in all directions; the given point stays. Throws Exception when the factor is not greater than 0.
    LineSeg3d ScaledAbout(Vec3d const& point, double factor);
    /// Stretched in the axis' direction only; the plane across the axis at its origin stays. Throws Exception when the
    /// factor is not greater than 0.
    LineSeg3d ScaledAlong(Axis3d const& axis, double factor);

  private:
    Vec3d startPoint_;
    Vec3d endPoint_;
};

/// A triangle. Seen from the side that its normal points to, its vertices run counterclockwise.
class PEDFLUX_API Tri3d {
  public:
    /// All vertices at the zero point; a geometry refuses such a triangle, as it has no area.
    constexpr Tri3d() = default;
    Tri3d(Vec3d const& first, Vec3d const& second, Vec3d const& third);

    /// Square metres.
    double GetArea();
    Vec3d GetFirstVertex();
    Vec3d GetSecondVertex();
    Vec3d GetThirdVertex();
    Vec3d GetCentroid();
    /// The direction across the triangle, of length 1; INVALID for a triangle without area.
    Vec3d GetNormal();
    /// Throws Exception when a component is NaN or infinite.
    BoundingBox3d GetBoundingBox();
    void SetFirstVertex(Vec3d const& vertex);
    void SetSecondVertex(Vec3d const& vertex);
    void SetThirdVertex(Vec3d const& vertex);

    Tri3d TranslatedBy(Vec3d const& offset);
    /// Turned right-handed about the axis by an angle in degrees. Throws Exception when the angle is not finite.
    Tri3d RotatedAbout(Axis3d const& axis, double angle);
    /// Scaled in all directions; the given point stays. Throws Exception when the factor is not greater than 0.
    Tri3d ScaledAbout(Vec3d const& point, double factor);
    /// Stretched in the axis' direction only; the plane across the axis at its origin stays. Throws Exception when the
    /// factor is not greater than 0.
    Tri3d ScaledAlong(Axis3d const& axis, double factor);

  private:
    Vec3d first_;
    Vec3d second_;
    Vec3d third_;
};

/// A box along the axes, its faces included. A box may be flat, or a point, or empty.
class PEDFLUX_API BoundingBox3d {
  public:
    /// The empty box, which holds no point: its minimum is +infinity, its maximum -infinity, its centre INVALID, and
    /// its hull with anything is the box of that thing.
    BoundingBox3d();
    /// Throws Exception when a component is not finite or one of the minimum exceeds that of the maximum.
    BoundingBox3d(Vec3d const& min, Vec3d const& max);

    double GetXMin();
    double GetXMax();
    double GetYMin();
    double GetYMax();
    double GetZMin();
    double GetZMax();
    Vec3d GetMin();
    Vec3d GetMax();
    Vec3d GetCenter();

    bool Contains(Vec3d const& point);
    /// Whether the point lies in the box after all its faces moved outwards by the tolerance (metres, negative:
    /// inwards).
    bool Contains(Vec3d const& point, double tolerance);
    /// Whether the other box lies in this one; the empty box lies in every box.
    bool Contains(BoundingBox3d const& other);
    bool Contains(BoundingBox3d const& other, double tolerance);
    /// Whether the boxes have a point in common; boxes that touch do.
    bool Overlaps(BoundingBox3d const& other);
    /// Whether the boxes have a point in common after this one's faces moved outwards by the tolerance (metres,
    /// negative: inwards).
    bool Overlaps(BoundingBox3d const& other, double tolerance);
    /// The smallest box that holds this box and the point. Throws Exception when the point is not finite.
    BoundingBox3d Hull(Vec3d const& point);
    /// The smallest box that holds both boxes.
    BoundingBox3d Hull(BoundingBox3d const& other);

  private:
    Vec3d min_;
    Vec3d max_;
};

/// A ball, its surface included.
class PEDFLUX_API BoundingSphere3d {
  public:
    /// The empty sphere, which holds no point: its centre is INVALID and its radius 0.
    BoundingSphere3d();
    /// Throws Exception when a component is not finite or the radius (metres) is negative.
    BoundingSphere3d(Vec3d const& center, double radius);

    double GetRadius();
    Vec3d GetCenter();
    bool Contains(Vec3d const& point);
    /// Whether the spheres have a point in common; spheres that touch do.
    bool Intersects(BoundingSphere3d const& other);

  private:
    Vec3d center_;
    double radius_ = 0;
};

}  // namespace pedflux
