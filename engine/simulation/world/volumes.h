#pragma once

#include "engine/geometry/vector.h"

#include <pedflux/identifiers.h>

#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <vector>

/// The parts of space that rules refer to.
namespace pedflux::engine {

class Document;

struct VolumeMesh {
    GlobalId id;
    std::vector<std::array<Vector, 3>> triangles;
    Vector low;  ///< of the box around it
    Vector high;
};

inline constexpr std::size_t no_volume = std::numeric_limits<std::size_t>::max();

/// The enabled volumes of a project, in its order.
std::vector<VolumeMesh> volumes_of(Document const& document);

/// The number of an object among the volumes; `no_volume` for what is none of them.
std::size_t volume_number(std::span<VolumeMesh const> volumes, GlobalId const& id);

/// Whether a mesh encloses a point: whether its faces take up more than half of the full solid angle as seen from
/// there, which also decides for a mesh that is not quite closed (Jacobson, Kavan and Sorkine-Hornung, "Robust
/// inside-outside segmentation using generalized winding numbers", ACM Transactions on Graphics 32, 2013). The angle of
/// a triangle: Van Oosterom and Strackee, "The solid angle of a plane triangle", IEEE Transactions on Biomedical
/// Engineering 30, 1983.
bool contains(VolumeMesh const& volume, Vector point);

/// The height above the ground (metres) that counts as an agent's position, so that a volume that stands on a floor
/// contains the agents in it.
inline constexpr double above_ground = 0.1;

}  // namespace pedflux::engine
