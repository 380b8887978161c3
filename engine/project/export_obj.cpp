#include "engine/geometry/access.h"
#include "engine/geometry/checks.h"
#include "engine/project/export_geometry.h"
#include "engine/scene/scene_states.h"

#include <algorithm>
#include <cstddef>

namespace pedflux::engine {

namespace {

std::string group_name(std::string name) {
    std::ranges::replace(name, ' ', '_');
    return name;
}

void add_vertices(std::string& text, std::vector<Vector> const& vertices) {
    for (Vector const vertex : vertices) {
        text += "v " + text_of(vertex.x) + " " + text_of(vertex.y) + " " + text_of(vertex.z) + "\n";
    }
}

}  // namespace

std::string to_obj(SceneObjects const& objects) {
    std::string text = "# pedflux geometry: metres, y up\n";
    std::size_t first = 1;  // vertices count through the whole file
    auto const number = [&](std::size_t vertex) { return " " + std::to_string(first + vertex); };
    for (auto const* const object : objects) {
        text += "g " + group_name(object->name) + "\n";
        if (auto const line = object->geometry->AsPolylineGeometry()) {
            auto const& vertices = polyline_of(*line).vertices;
            add_vertices(text, vertices);
            text += "l";
            for (std::size_t vertex = 0; vertex < vertices.size(); ++vertex) text += number(vertex);
            text += "\n";
            first += vertices.size();
        } else {
            auto const surface = object->geometry->AsMeshGeometry();
            Mesh const& mesh = mesh_of(*surface);
            add_vertices(text, mesh.vertices);
            for (auto const& face : mesh.faces) {
                text += "f";
                for (int const vertex : face) text += number(static_cast<std::size_t>(vertex));
                text += "\n";
            }
            first += mesh.vertices.size();
        }
    }
    return text;
}

}  // namespace pedflux::engine
