#include "engine/project/export_geometry.h"

#include "engine/geometry/checks.h"
#include "engine/model/document.h"
#include "engine/model/scene_states.h"

#include <pedflux/exception.h>
#include <pedflux/geometry.h>

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace pedflux::engine {

namespace {

/// The format ends a group's name at a space, so spaces become underscores.
std::string group_name(std::string name) {
    std::ranges::replace(name, ' ', '_');
    return name;
}

/// A file in the making; the format counts vertices through the whole file, from 1.
class ObjFile {
  public:
    void add(SceneState const& object) {
        text_ += "g " + group_name(object.name) + "\n";
        if (auto const mesh = object.geometry->AsMeshGeometry()) {
            add_vertices(mesh->GetVertices());
            for (int face = 0; face < mesh->GetFaceCount(); ++face) {
                auto const corners = mesh->GetVertexIndicesForFace(face);
                add_element("f", {corners.begin(), corners.end()});
            }
            first_ += static_cast<std::size_t>(mesh->GetVertexCount());
        } else if (auto const line = object.geometry->AsPolylineGeometry()) {
            add_vertices(line->GetVertices());
            std::vector<std::size_t> all(static_cast<std::size_t>(line->GetVertexCount()));
            for (std::size_t i = 0; i < all.size(); ++i) all[i] = i;
            add_element("l", all);
            first_ += all.size();
        }
    }
    std::string const& text() const { return text_; }

  private:
    void add_vertices(std::vector<Vec3d> const& vertices) {
        for (auto const& vertex : vertices) {
            text_ += "v " + text_of(vertex.GetX()) + " " + text_of(vertex.GetY()) + " " + text_of(vertex.GetZ()) + "\n";
        }
    }
    void add_element(std::string const& keyword, std::vector<std::size_t> const& vertices) {
        text_ += keyword;
        for (std::size_t const vertex : vertices) text_ += " " + std::to_string(first_ + vertex);
        text_ += "\n";
    }

    std::string text_ = "# pedflux geometry: metres, y up\n";
    std::size_t first_ = 1;
};

}  // namespace

std::string to_obj(Document const& document, std::vector<std::shared_ptr<SimObject>> const& objects) {
    ObjFile file;
    if (objects.empty()) {
        for (auto const* const object : document.objects<SceneState>()) file.add(*object);
    }
    for (auto const& face : objects) {
        if (!face) throw Exception("the list of objects to export has an empty pointer");
        auto const& state = state_of<ObjectState>(*face);
        if (state.document != &document) throw Exception(title_of(state) + " is not an object of this project");
        if (auto const* const object = dynamic_cast<SceneState const*>(&state)) file.add(*object);
    }
    return file.text();
}

}  // namespace pedflux::engine
