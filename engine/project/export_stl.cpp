#include "engine/geometry/access.h"
#include "engine/geometry/checks.h"
#include "engine/project/export_geometry.h"
#include "engine/scene/scene_states.h"

#include <array>

namespace pedflux::engine {

namespace {

std::string row_of(Vector vector) { return text_of(vector.x) + " " + text_of(vector.y) + " " + text_of(vector.z); }

std::string facet(std::array<Vector, 3> const& corners) {
    Vector const normal = normalized(cross(corners[1] - corners[0], corners[2] - corners[0]));
    std::string text = "facet normal " + row_of(normal) + "\n  outer loop\n";
    for (Vector const corner : corners) text += "    vertex " + row_of(corner) + "\n";
    return text + "  endloop\nendfacet\n";
}

}  // namespace

std::string to_stl(SceneObjects const& objects) {
    std::string text;
    for (auto const* const object : objects) {
        auto const surface = object->geometry->AsMeshGeometry();
        if (!surface) continue;
        Mesh const& mesh = mesh_of(*surface);
        auto const corner = [&](int vertex) { return mesh.vertices[static_cast<std::size_t>(vertex)]; };
        text += "solid " + object->name + "\n";
        for (auto const& face : mesh.faces) text += facet({corner(face[0]), corner(face[1]), corner(face[2])});
        text += "endsolid " + object->name + "\n";
    }
    return text;
}

}  // namespace pedflux::engine
