#include "engine/results/shape_text.h"

#include "engine/base/checks.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace pedflux::engine {

namespace {

using Json = nlohmann::json;

Json ring_json(Ring const& ring) {
    Json json = Json::array();
    for (Point const point : ring) json.push_back(Json::array({point.x, point.z}));
    return json;
}

Ring ring_of(Json const& json) {
    Ring ring;
    for (auto const& point : json) ring.push_back({point.at(0).get<double>(), point.at(1).get<double>()});
    return ring;
}

}  // namespace

std::string shape_text(Surface const& surface) {
    Json polygons = Json::array();
    for (auto const& polygon : surface.walkable) {
        // Braces around one value mean a list to one compiler and a copy to another.
        Json rings = Json::array();
        rings.push_back(ring_json(polygon.outline));
        for (auto const& hole : polygon.holes) rings.push_back(ring_json(hole));
        polygons.push_back(std::move(rings));
    }
    Json faces = Json::array();
    for (auto const& face : surface.faces) {
        Json corners = Json::array();
        for (Vector const corner : face) corners.push_back(Json::array({corner.x, corner.y, corner.z}));
        faces.push_back(std::move(corners));
    }
    return Json{{"polygons", std::move(polygons)}, {"faces", std::move(faces)}}.dump();
}

void read_shape(std::string const& text, Surface& surface) try {
    Json const json = Json::parse(text);
    for (auto const& rings : json.at("polygons")) {
        Polygon polygon{ring_of(rings.at(0)), {}};
        for (std::size_t i = 1; i < rings.size(); ++i) polygon.holes.push_back(ring_of(rings[i]));
        surface.walkable.push_back(std::move(polygon));
    }
    for (auto const& corners : json.at("faces")) {
        auto& face = surface.faces.emplace_back();
        for (std::size_t i = 0; i < face.size(); ++i) {
            auto const& corner = corners.at(i);
            face[i] = {corner.at(0).get<double>(), corner.at(1).get<double>(), corner.at(2).get<double>()};
        }
    }
} catch (Json::exception const& exception) {
    refuse(fmt::format("The shape of surface '{}' in the database of results is damaged: {}", surface.name,
                       exception.what()));
}

}  // namespace pedflux::engine
