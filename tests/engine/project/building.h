#pragma once

#include "tests/engine/files.h"
#include "tests/engine/geometry/expect.h"

#include <pedflux/distributions.h>
#include <pedflux/events.h>
#include <pedflux/geometry.h>
#include <pedflux/graph_queries.h>
#include <pedflux/issue.h>
#include <pedflux/map_queries.h>
#include <pedflux/population_sources.h>
#include <pedflux/profiles.h>
#include <pedflux/project.h>
#include <pedflux/scene.h>
#include <pedflux/selection.h>
#include <pedflux/simulation_run.h>
#include <pedflux/time_range.h>
#include <pedflux/transform.h>

#include <memory>
#include <string>
#include <vector>

namespace pedflux::engine {

/// A floor's mesh: a level rectangle of the plan.
inline std::shared_ptr<MeshGeometry> slab(double x, double z, double width, double depth, double y = 0) {
    return MeshGeometry::CreateFlatPolygon(y, {{x, z}, {x + width, z}, {x + width, z + depth}, {x, z + depth}});
}

/// A project with an object of every kind, in which every property has a value that it does not have by itself.
std::shared_ptr<Project> full_project();

}  // namespace pedflux::engine
