#include "engine/project/export_geometry.h"

#include "engine/model/document.h"
#include "engine/scene/scene_states.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string_view>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

struct Format {
    std::string_view extension;
    std::string (*write)(SceneObjects const& objects);
};
constexpr Format FORMATS[] = {{".obj", to_obj}, {".stl", to_stl}, {".wkt", to_wkt}};

Format const& format_of(std::string const& path) {
    auto extension = std::filesystem::path(path).extension().string();
    std::ranges::transform(extension, extension.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    auto const* const found = std::ranges::find(FORMATS, extension, &Format::extension);
    if (found == std::end(FORMATS)) {
        throw Exception(fmt::format("cannot export geometry to '{}': its extension must be .obj, .stl or .wkt", path));
    }
    return *found;
}

SceneObjects scene_objects(Document const& document, std::vector<std::shared_ptr<SimObject>> const& objects) {
    if (objects.empty()) return document.objects<SceneState>();
    SceneObjects found;
    for (auto const& face : objects) {
        if (!face) throw Exception("the list of objects to export has an empty pointer");
        auto const& state = state_of<ObjectState>(*face);
        if (state.document != &document) {
            throw Exception(fmt::format("{} is not an object of this project", title_of(state)));
        }
        if (auto const* const object = dynamic_cast<SceneState const*>(&state)) found.push_back(object);
    }
    return found;
}

}  // namespace

std::string exported(Document const& document, std::string const& path,
                     std::vector<std::shared_ptr<SimObject>> const& objects) {
    auto const& format = format_of(path);
    return format.write(scene_objects(document, objects));
}

}  // namespace pedflux::engine
