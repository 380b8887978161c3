#pragma once

#include "engine/analysis/map_query_states.h"

#include <memory>
#include <vector>

namespace pedflux::engine {

/// The maps of a query, one for each of its display objects. Throws Exception as `MapQuery::Evaluate` does.
std::vector<std::shared_ptr<Map>> maps_of(Document const& document, MapQueryState const& query, MapQueryType type);

/// The colours in which a density query shows a walkable object. Throws Exception if `object` is not a walkable object.
std::shared_ptr<ColorFunction> density_colors(Document const& document, DensityMapQueryState const& query,
                                              GlobalId const& object);

}  // namespace pedflux::engine
