#include "engine/simulation/world/volumes.h"

#include "engine/geometry/access.h"
#include "engine/model/document.h"
#include "engine/scene/scene_states.h"

#include <pedflux/geometry.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pedflux::engine {

namespace {

/// Positive where the face's corners run counter-clockwise as seen from the origin.
double solid_angle(Vector a, Vector b, Vector c) {
    double const la = length(a);
    double const lb = length(b);
    double const lc = length(c);
    double const product = la * lb * lc + dot(a, b) * lc + dot(b, c) * la + dot(c, a) * lb;
    return 2 * std::atan2(dot(a, cross(b, c)), product);
}

}  // namespace

std::vector<VolumeMesh> volumes_of(Document const& document) {
    std::vector<VolumeMesh> volumes;
    for (auto const* const object : document.objects<VolumeState>()) {
        if (!object->enabled) continue;
        auto const& mesh = mesh_of(*object->geometry->AsMeshGeometry());
        VolumeMesh volume{object->id, {}, mesh.vertices.front(), mesh.vertices.front()};
        for (std::size_t face = 0; face < mesh.faces.size(); ++face) volume.triangles.push_back(corners_of(mesh, face));
        for (auto const& vertex : mesh.vertices) {
            volume.low = smaller(volume.low, vertex);
            volume.high = larger(volume.high, vertex);
        }
        volumes.push_back(std::move(volume));
    }
    return volumes;
}

std::size_t volume_number(std::span<VolumeMesh const> volumes, GlobalId const& id) {
    auto const found =
        std::ranges::find_if(volumes, [&](VolumeMesh const& each) { return each.id.InternalEquals(id); });
    return found == volumes.end() ? no_volume : static_cast<std::size_t>(found - volumes.begin());
}

bool contains(VolumeMesh const& volume, Vector point) {
    if (smaller(volume.low, point) != volume.low || larger(volume.high, point) != volume.high) return false;
    double seen = 0;
    for (auto const& [a, b, c] : volume.triangles) seen += solid_angle(a - point, b - point, c - point);
    return std::abs(seen) > 2 * std::numbers::pi;
}

}  // namespace pedflux::engine
