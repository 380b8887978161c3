#pragma once

#include "engine/model/reading.h"

#include <pedflux/geometry.h>

#include <memory>

namespace pedflux::engine {

Json write_geometry(std::shared_ptr<Geometry> const& geometry);
void read_geometry(std::shared_ptr<Geometry>& geometry, Json const& json, Reading& reading);

}  // namespace pedflux::engine
