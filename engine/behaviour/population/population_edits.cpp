#include "engine/behaviour/population/population_edits.h"

#include "engine/base/checks.h"
#include "engine/behaviour/population/population_handle.h"

#include <algorithm>
#include <string>

#include <fmt/format.h>

namespace pedflux::engine {

void set_arrival(Population& population, std::shared_ptr<PopulationArrival> const& arrival) {
    if (!arrival) refuse(fmt::format("{}: the arrival is empty; it must be given", traits_of(population.type).name));
    edit(population, [&](Population& changed) { changed.arrival = PopulationAccess::arrival(*arrival); });
}

std::size_t position_of(std::vector<GlobalId> const& places, GlobalId const& place) {
    auto const found = std::ranges::find_if(places, [&](GlobalId const& other) { return other.InternalEquals(place); });
    return static_cast<std::size_t>(found - places.begin());
}

std::size_t require_position(Population const& population, std::string_view what, std::vector<GlobalId> const& places,
                             GlobalId place) {
    auto const position = position_of(places, place);
    if (position == places.size()) {
        refuse(std::string(traits_of(population.type).name) + ": " +
               (place.IsValid() ? place.GetString() : "the invalid identifier") + " is none of its " +
               std::string(what) + "s");
    }
    return position;
}

}  // namespace pedflux::engine
