#include "engine/geometry/access.h"
#include "engine/geometry/checks.h"
#include "engine/geometry/polygons.h"
#include "engine/project/export_geometry.h"
#include "engine/scene/goal_lines.h"
#include "engine/scene/scene_states.h"

#include <array>

namespace pedflux::engine {

namespace {

/// Elements in brackets, or the word for none.
template <class Elements, class Text>
std::string list_of(Elements const& elements, Text const& text_of_element) {
    if (elements.empty()) return "EMPTY";
    std::string text;
    for (auto const& element : elements) text += (text.empty() ? "(" : ", ") + text_of_element(element);
    return text + ")";
}

std::string points_text(std::vector<Point> const& points) {
    return list_of(points, [](Point point) { return text_of(point.x) + " " + text_of(point.z); });
}

std::string line_text(std::vector<Vector> const& vertices) {
    std::vector<Point> points;
    for (Vector const vertex : vertices) {
        Point const point{vertex.x, vertex.z};
        if (points.empty() || !(points.back() == point)) points.push_back(point);
    }
    return (points.size() == 1 ? "POINT " : "LINESTRING ") + points_text(points);
}

std::string polygon_text(Polygon const& polygon) {
    auto rings = polygon.holes;
    rings.insert(rings.begin(), polygon.outline);
    return list_of(rings, [](Ring ring) {
        ring.push_back(ring.front());
        return points_text(ring);
    });
}

std::string element_of(Geometry& geometry) {
    if (auto const line = geometry.AsPolylineGeometry()) return line_text(polyline_of(*line).vertices);
    auto const surface = geometry.AsMeshGeometry();
    Mesh const& mesh = mesh_of(*surface);
    std::vector<std::array<Point, 3>> triangles;
    for (auto const& face : mesh.faces) {
        auto& triangle = triangles.emplace_back();
        for (std::size_t corner = 0; corner < triangle.size(); ++corner) {
            Vector const vertex = mesh.vertices[static_cast<std::size_t>(face[corner])];
            triangle[corner] = {vertex.x, vertex.z};
        }
    }
    auto const area = united(triangles);
    if (!area.empty()) return "MULTIPOLYGON " + list_of(area, polygon_text);
    auto line = centre_goal_line(geometry);
    return line_text({vector_of(line.GetStartPoint()), vector_of(line.GetEndPoint())});
}

}  // namespace

std::string to_wkt(SceneObjects const& objects) {
    return "GEOMETRYCOLLECTION " +
           list_of(objects, [](SceneState const* object) { return element_of(*object->geometry); }) + "\n";
}

}  // namespace pedflux::engine
