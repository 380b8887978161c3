#pragma once

#include <pedflux/api.h>
#include <pedflux/vectors.h>

#include <memory>
#include <vector>

/// The shapes of scene objects. A geometry never changes: each operation that moves or edits returns a new one.
///
/// Coordinates are finite and within 1e9 m of the zero point, faces have an area and lines a length; whatever breaks
/// this, whether given or the outcome of an operation, is refused with an Exception. So are indices out of range, which
/// count from 0, angles that are not finite, and scale factors that are not greater than 0.
namespace pedflux {

namespace engine {
struct AffineMap;
struct GeometryAccess;
struct Mesh;
struct Polyline;
struct Rectangle;
}  // namespace engine

class MeshGeometry;
class PolylineGeometry;
class RectangleGeometry;

/// What `Geometry::GetGeometryTypeId` returns.
enum class GeometryType : int {
    MESH = 1,
    RECTANGLE = 2,
    POLYLINE = 3,
};

/// A shape of any kind.
class PEDFLUX_API Geometry {
  public:
    virtual ~Geometry();

    /// The kind of shape, a `GeometryType`.
    virtual int GetGeometryTypeId() = 0;
    /// The smallest box along the axes that holds the shape.
    virtual BoundingBox3d GetBoundingBox() = 0;
    /// The smallest sphere that holds the shape, by Welzl's algorithm ("Smallest enclosing disks (balls and
    /// ellipsoids)", 1991); its radius is never too small, and too large only by rounding.
    virtual BoundingSphere3d GetBoundingSphere() = 0;
    /// Scaled in all directions; the given point stays.
    virtual std::shared_ptr<Geometry> ScaledAbout(Vec3d const& point, double factor);
    /// Stretched in the axis' direction only; the plane across the axis at its origin stays. A rectangle that is
    /// stretched obliquely to its sides becomes a mesh.
    virtual std::shared_ptr<Geometry> ScaledAlong(Axis3d const& axis, double factor);
    /// Turned right-handed about the axis by an angle in degrees.
    virtual std::shared_ptr<Geometry> RotatedAbout(Axis3d const& axis, double angle);
    virtual std::shared_ptr<Geometry> TranslatedBy(Vec3d const& offset);
    /// Mirrored across the plane that stands across the axis at its origin. Faces that looked outwards still do: the
    /// order of their vertices is reversed.
    virtual std::shared_ptr<Geometry> MirroredAcross(Axis3d const& axis);
    /// The shape as a mesh: itself, or the two triangles of a rectangle; empty for a polyline.
    virtual std::shared_ptr<MeshGeometry> AsMeshGeometry();
    /// The shape itself; empty when it is no rectangle.
    virtual std::shared_ptr<RectangleGeometry> AsRectangleGeometry();
    /// The shape itself; empty when it is no polyline.
    virtual std::shared_ptr<PolylineGeometry> AsPolylineGeometry();

  protected:
    Geometry() = default;
    Geometry(Geometry const&) = default;
    Geometry& operator=(Geometry const&) = default;

  private:
    /// The shape after an affine map of space, which all the operations that move it come down to.
    virtual std::shared_ptr<Geometry> Mapped(engine::AffineMap const& map) = 0;
};

/// A surface of triangles, the faces. Faces share vertices and edges, and each face keeps the direction in which its
/// vertices were given. A face has three edges: from its first vertex to its second, on to its third, and back.
class PEDFLUX_API MeshGeometry : public Geometry {
  public:
    /// A mesh of at least one triangle whose corners are one vertex where they are at most 1e-6 m apart.
    explicit MeshGeometry(std::vector<Tri3d> const& triangles);
    /// A mesh of at least one triangle; a corner at most `tolerance` metres from a vertex made before becomes that
    /// vertex. The tolerance is finite and not negative.
    MeshGeometry(std::vector<Tri3d> const& triangles, double tolerance);
    MeshGeometry(MeshGeometry const&) = default;
    MeshGeometry& operator=(MeshGeometry const&) = default;
    ~MeshGeometry() override;

    static std::shared_ptr<MeshGeometry> Create(std::vector<Tri3d> const& triangles);
    static std::shared_ptr<MeshGeometry> Create(std::vector<Tri3d> const& triangles, double tolerance);
    /// A box along the axes, between two opposite corners that differ in x, y and z. Its faces look outwards.
    static std::shared_ptr<MeshGeometry> CreateBox(Vec3d const& corner, Vec3d const& oppositeCorner);
    /// An upright rectangle between two opposite corners that differ in the plan and in y. It looks to the right as
    /// seen by one who goes from the first corner to the second.
    static std::shared_ptr<MeshGeometry> CreateVerticalRectangle(Vec3d const& corner, Vec3d const& oppositeCorner);
    /// A closed cone with 24 sides.
    static std::shared_ptr<MeshGeometry> CreateCone(double radius, Vec3d const& baseCenter, Vec3d const& apex);
    /// A closed cone whose base is a regular polygon of 3 to 10,000 sides with its corners at the radius (metres).
    static std::shared_ptr<MeshGeometry> CreateCone(double radius, Vec3d const& baseCenter, Vec3d const& apex,
                                                    int sideCount);
    /// A closed cylinder with 24 sides.
    static std::shared_ptr<MeshGeometry> CreateCylinder(double radius, Vec3d const& baseCenter, Vec3d const& topCenter);
    /// A closed cylinder whose ends are regular polygons of 3 to 10,000 sides with their corners at the radius
    /// (metres).
    static std::shared_ptr<MeshGeometry> CreateCylinder(double radius, Vec3d const& baseCenter, Vec3d const& topCenter,
                                                        int sideCount);
    /// A rectangle to walk on, level across, from the middle of one end to the middle of the other; the ends differ in
    /// the plan. It looks upwards. The width is in metres.
    static std::shared_ptr<MeshGeometry> CreateRamp(Vec3d const& start, Vec3d const& end, double width);
    /// The same rectangle as the top of a closed slab; the thickness (metres) is measured downwards.
    static std::shared_ptr<MeshGeometry> CreateRamp(Vec3d const& start, Vec3d const& end, double width,
                                                    double thickness);
    /// The inside of a polygon at the elevation y (metres), as triangles that look upwards: the constrained Delaunay
    /// triangulation. The vertices run either way round, at least three; the first may be repeated as the last. The
    /// mesh has the polygon's vertices in their order. Throws Exception when the boundary meets itself, and names
    /// where.
    static std::shared_ptr<MeshGeometry> CreateFlatPolygon(double y, std::vector<Vec2d> const& vertices);

    int GetVertexCount() const;
    int GetEdgeCount() const;
    int GetFaceCount() const;
    Vec3d GetVertex(int index);
    /// The direction that a face looks to, of length 1.
    Vec3d GetNormalForFace(int index);
    LineSeg3d GetEdge(int index);
    Tri3d GetFace(int index);
    std::vector<Vec3d> GetVertices();
    std::vector<LineSeg3d> GetEdges();
    std::vector<Tri3d> GetFaces();
    std::vector<int> GetVertexIndicesForEdge(int index);
    std::vector<int> GetVertexIndicesForFace(int index);
    std::vector<int> GetEdgeIndicesForFace(int index);
    /// The faces on both sides of an edge; one at the rim of the mesh, more where several sheets meet.
    std::vector<int> GetFaceIndicesForEdge(int index);
    /// The points where the segment between two points meets the mesh, from the first point on, each once however many
    /// faces meet there. Where the segment runs along a face, these are the ends of its way along that face. A face is
    /// met within 1e-6 m.
    std::vector<Vec3d> GetIntersections(Vec3d const& from, Vec3d const& to);

    /// The same mesh with some vertices moved. Each vertex moves once, also when its index is repeated or several of
    /// the edges or faces share it.
    std::shared_ptr<MeshGeometry> VerticesTranslatedBy(std::vector<int> const& vertices, Vec3d const& offset);
    std::shared_ptr<MeshGeometry> VerticesScaledAbout(std::vector<int> const& vertices, Vec3d const& point,
                                                      double factor);
    std::shared_ptr<MeshGeometry> VerticesScaledAlong(std::vector<int> const& vertices, Axis3d const& axis,
                                                      double factor);
    std::shared_ptr<MeshGeometry> VerticesRotatedAbout(std::vector<int> const& vertices, Axis3d const& axis,
                                                       double angle);
    std::shared_ptr<MeshGeometry> EdgesTranslatedBy(std::vector<int> const& edges, Vec3d const& offset);
    std::shared_ptr<MeshGeometry> EdgesScaledAbout(std::vector<int> const& edges, Vec3d const& point, double factor);
    std::shared_ptr<MeshGeometry> EdgesScaledAlong(std::vector<int> const& edges, Axis3d const& axis, double factor);
    std::shared_ptr<MeshGeometry> EdgesRotatedAbout(std::vector<int> const& edges, Axis3d const& axis, double angle);
    std::shared_ptr<MeshGeometry> FacesTranslatedBy(std::vector<int> const& faces, Vec3d const& offset);
    std::shared_ptr<MeshGeometry> FacesScaledAbout(std::vector<int> const& faces, Vec3d const& point, double factor);
    std::shared_ptr<MeshGeometry> FacesScaledAlong(std::vector<int> const& faces, Axis3d const& axis, double factor);
    std::shared_ptr<MeshGeometry> FacesRotatedAbout(std::vector<int> const& faces, Axis3d const& axis, double angle);

    int GetGeometryTypeId() override;
    BoundingBox3d GetBoundingBox() override;
    BoundingSphere3d GetBoundingSphere() override;
    std::shared_ptr<MeshGeometry> AsMeshGeometry() override;

  private:
    friend struct engine::GeometryAccess;
    explicit MeshGeometry(std::shared_ptr<engine::Mesh const> mesh);
    std::shared_ptr<Geometry> Mapped(engine::AffineMap const& map) override;

    std::shared_ptr<engine::Mesh const> mesh_;
};

/// A line through two or more vertices, each apart from the one before. It is closed when it ends where it starts.
class PEDFLUX_API PolylineGeometry : public Geometry {
  public:
    explicit PolylineGeometry(std::vector<Vec3d> const& vertices);
    PolylineGeometry(PolylineGeometry const&) = default;
    PolylineGeometry& operator=(PolylineGeometry const&) = default;
    ~PolylineGeometry() override;

    static std::shared_ptr<PolylineGeometry> Create(std::vector<Vec3d> const& vertices);

    int GetVertexCount();
    Vec3d GetVertex(int index);
    Vec3d GetStartPoint();
    Vec3d GetEndPoint();
    std::vector<Vec3d> GetVertices();

    /// The same line with some vertices moved, each once also when its index is repeated.
    std::shared_ptr<PolylineGeometry> VerticesTranslatedBy(std::vector<int> const& vertices, Vec3d const& offset);
    std::shared_ptr<PolylineGeometry> VerticesScaledAbout(std::vector<int> const& vertices, Vec3d const& point,
                                                          double factor);
    std::shared_ptr<PolylineGeometry> VerticesScaledAlong(std::vector<int> const& vertices, Axis3d const& axis,
                                                          double factor);
    std::shared_ptr<PolylineGeometry> VerticesRotatedAbout(std::vector<int> const& vertices, Axis3d const& axis,
                                                           double angle);

    int GetGeometryTypeId() override;
    BoundingBox3d GetBoundingBox() override;
    BoundingSphere3d GetBoundingSphere() override;
    std::shared_ptr<PolylineGeometry> AsPolylineGeometry() override;

  private:
    friend struct engine::GeometryAccess;
    explicit PolylineGeometry(std::shared_ptr<engine::Polyline const> polyline);
    std::shared_ptr<Geometry> Mapped(engine::AffineMap const& map) override;

    std::shared_ptr<engine::Polyline const> polyline_;
};

/// A rectangle anywhere in space. Its length, width and normal directions are right-handed: seen from the side that the
/// normal points to, the width is a quarter turn counterclockwise from the length.
class PEDFLUX_API RectangleGeometry : public Geometry {
  public:
    /// The rectangle that triangles make up, all looking to the side of its normal and sharing whole edges, with its
    /// length in the given direction, which is parallel to two of its sides.
    RectangleGeometry(std::vector<Tri3d> const& triangles, Vec3d const& lengthDirection);
    /// The rectangle about a centre, with its length and width in metres along two directions that are perpendicular.
    RectangleGeometry(Vec3d const& center, Vec3d const& lengthDirection, Vec3d const& widthDirection, double length,
                      double width);
    RectangleGeometry(RectangleGeometry const&) = default;
    RectangleGeometry& operator=(RectangleGeometry const&) = default;
    ~RectangleGeometry() override;

    double GetLength();
    double GetWidth();
    /// The directions have length 1.
    Vec3d GetLengthDirection();
    Vec3d GetWidthDirection();
    Vec3d GetNormalDirection();
    /// The four corners, counterclockwise as seen from the side that the normal points to. The first is the one that
    /// both directions lead away from; the second lies a length further.
    std::vector<Vec3d> GetVertices();

    int GetGeometryTypeId() override;
    BoundingBox3d GetBoundingBox() override;
    BoundingSphere3d GetBoundingSphere() override;
    std::shared_ptr<MeshGeometry> AsMeshGeometry() override;
    std::shared_ptr<RectangleGeometry> AsRectangleGeometry() override;

  private:
    friend struct engine::GeometryAccess;
    explicit RectangleGeometry(std::shared_ptr<engine::Rectangle const> rectangle);
    std::shared_ptr<Geometry> Mapped(engine::AffineMap const& map) override;

    std::shared_ptr<engine::Rectangle const> rectangle_;
};

}  // namespace pedflux
