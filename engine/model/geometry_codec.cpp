#include "engine/model/geometry_codec.h"

#include "engine/geometry/access.h"
#include "engine/geometry/mesh.h"
#include "engine/model/codec.h"

#include <pedflux/exception.h>

#include <array>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

/// Geometries in files: their plain data, with all coordinates of a list in one row of numbers.
namespace pedflux::engine {

namespace {

Json numbers_of(std::vector<Vector> const& vectors) {
    Json json = Json::array();
    for (Vector const vector : vectors) {
        for (double const component : {vector.x, vector.y, vector.z}) json.push_back(component);
    }
    return json;
}

/// The elements of a list, in groups of three.
template <class Number, class Group>
void read_groups(std::vector<Group>& groups, Json const& json, std::string const& name, Reading& reading) {
    Step const step(reading, name);
    auto const found = json.find(name);
    if (found == json.end()) reading.refuse("given", Json());
    std::vector<Number> numbers;
    read_json(numbers, *found, reading);
    if (numbers.size() % 3 != 0) reading.refuse("a list whose length is a multiple of 3", numbers.size());
    for (std::size_t i = 0; i < numbers.size(); i += 3) groups.push_back({numbers[i], numbers[i + 1], numbers[i + 2]});
}

Json write_mesh(MeshGeometry const& geometry) {
    Mesh const& mesh = mesh_of(geometry);
    Json faces = Json::array();
    for (auto const& face : mesh.faces) {
        for (int const vertex : face) faces.push_back(vertex);
    }
    return {{"kind", "mesh"},
            {"tolerance", mesh.tolerance},
            {"vertices", numbers_of(mesh.vertices)},
            {"faces", std::move(faces)}};
}

std::shared_ptr<Geometry> read_mesh(Json const& json, Reading& reading) {
    std::vector<Vector> vertices;
    std::vector<std::array<int, 3>> faces;
    double tolerance = default_weld_tolerance;
    read_groups<double>(vertices, json, "vertices", reading);
    read_groups<int>(faces, json, "faces", reading);
    if (auto const found = json.find("tolerance"); found != json.end()) {
        Step const step(reading, "tolerance");
        read_json(tolerance, *found, reading);
    }
    return geometry_of(make_mesh(std::move(vertices), std::move(faces), tolerance));
}

Json write_polyline(PolylineGeometry const& geometry) {
    return {{"kind", "polyline"}, {"vertices", numbers_of(polyline_of(geometry).vertices)}};
}

std::shared_ptr<Geometry> read_polyline(Json const& json, Reading& reading) {
    Polyline polyline;
    read_groups<double>(polyline.vertices, json, "vertices", reading);
    return geometry_of(polyline);
}

Json write_rectangle(RectangleGeometry const& geometry) {
    Rectangle const& rectangle = rectangle_of(geometry);
    return {{"kind", "rectangle"},
            {"frame", numbers_of({rectangle.center, rectangle.length_direction, rectangle.width_direction})},
            {"length", rectangle.length},
            {"width", rectangle.width}};
}

std::shared_ptr<Geometry> read_rectangle(Json const& json, Reading& reading) {
    std::vector<Vector> frame;
    read_groups<double>(frame, json, "frame", reading);
    if (frame.size() != 3) throw Exception(reading.where + ".frame must have a centre and two directions");
    std::array<double, 2> sides{};
    for (std::size_t i = 0; i < sides.size(); ++i) {
        char const* const name = i == 0 ? "length" : "width";
        Step const step(reading, name);
        auto const found = json.find(name);
        if (found == json.end()) reading.refuse("given", Json());
        read_json(sides[i], *found, reading);
    }
    // The directions' rounding is kept as it was written, so that what is opened equals what was saved.
    auto checked = std::make_shared<RectangleGeometry>(value_of(frame[0]), value_of(frame[1]), value_of(frame[2]),
                                                       sides[0], sides[1]);
    Rectangle const& exact = rectangle_of(*checked);
    constexpr double rounding = 1e-12;
    if (distance(exact.length_direction, frame[1]) > rounding || distance(exact.width_direction, frame[2]) > rounding) {
        return checked;
    }
    return geometry_of(Rectangle{frame[0], frame[1], frame[2], sides[0], sides[1]});
}

}  // namespace

Json write_geometry(std::shared_ptr<Geometry> const& geometry) {
    if (!geometry) return {};
    if (auto const rectangle = geometry->AsRectangleGeometry()) return write_rectangle(*rectangle);
    if (auto const polyline = geometry->AsPolylineGeometry()) return write_polyline(*polyline);
    return write_mesh(*geometry->AsMeshGeometry());
}

void read_geometry(std::shared_ptr<Geometry>& geometry, Json const& json, Reading& reading) {
    auto const kind = json.is_object() ? json.value("kind", Json()) : Json();
    try {
        if (kind == "mesh") {
            geometry = read_mesh(json, reading);
        } else if (kind == "polyline") {
            geometry = read_polyline(json, reading);
        } else if (kind == "rectangle") {
            geometry = read_rectangle(json, reading);
        } else {
            reading.refuse("a mesh, polyline or rectangle", json);
        }
    } catch (Exception const& failure) {
        // The rules of geometries do not know where in the file they are broken.
        auto const message = failure.GetMessage();
        throw message.starts_with(reading.where) ? failure : Exception(reading.where + ": " + message);
    }
}

}  // namespace pedflux::engine
