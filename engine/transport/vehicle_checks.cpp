#include "engine/base/list_checks.h"
#include "engine/model/check.h"
#include "engine/transport/vehicle_states.h"

#include <algorithm>
#include <string>

#include <fmt/format.h>

namespace pedflux::engine {
namespace {

template <class Count, class Counts>
Count const* count_by(std::optional<Counts> const& count) {
    return count ? std::get_if<Count>(&*count) : nullptr;
}

/// The numbers of a population must match the arrivals or intervals that they belong to.
template <class Counts>
void require_fitting(VehicleState const& self, std::string const& population, std::optional<Counts> const& count) {
    if (auto const* const scheduled = count_by<CountBySchedule>(count)) {
        auto const* const schedule = std::get_if<ScheduledArrivals>(&self.arrivals);
        if (schedule == nullptr) {
            Subject{owner_of(self), population + ".count"}.refuse("by schedule only while arrivals are", "by headway");
        }
        require_equal_lengths(title_of(self) + ": arrivals", schedule->offsets.size(), population + " populations",
                              scheduled->persons.size());
    }
    if (auto const* const table = count_by<CountByTable>(count)) {
        require_equal_lengths(title_of(self) + ": lookup table intervals", self.table_intervals.size(),
                              population + " populations", table->persons.size());
    }
}

void require_fitting(VehicleState const& self, std::string const& what, std::vector<GlobalId> const& places,
                     std::vector<double> const& weights) {
    if (weights.empty()) return;
    auto const subject = title_of(self) + ": " + what;
    require_equal_lengths(subject + "s", places.size(), "weights", weights.size());
    require_weights(subject + " weight", weights);
}

}  // namespace

void VehicleState::check(VehicleState const& self) {
    if (auto const* const schedule = std::get_if<ScheduledArrivals>(&self.arrivals)) {
        auto const& offsets = schedule->offsets;
        auto const back = std::ranges::is_sorted_until(offsets);
        if (back != offsets.end()) {
            Subject{owner_of(self), "arrival.timeOffsets." + std::to_string(back - offsets.begin())}.refuse(
                fmt::format("at least the {} s before it", back[-1]), std::to_string(*back));
        }
    }
    require_fitting(self, "alighting", self.alighting.count);
    require_fitting(self, "through", self.through.count);
    require_fitting(self, "alighting origin", self.alighting.origins.places, self.alighting.origins.weights);
    require_fitting(self, "through origin", self.through.origins.places, self.through.origins.weights);

    auto const& destinations = self.alighting.destinations;
    require_fitting(self, "alighting destination", destinations.places, destinations.weights);
    if (destinations.assignment == DestinationAssignment::BY_COUNT) {
        Subject{owner_of(self), "alighting.destinations.assignment"}.refuse("by chance, by weight or by lowest cost",
                                                                            "by count");
    }
    bool const weighted = destinations.assignment == DestinationAssignment::WEIGHTED_BY_CHANCE;
    if (weighted == destinations.weights.empty() && !destinations.places.empty()) {
        Subject{owner_of(self), "alighting.destinations.weights"}.refuse(
            weighted ? "one for each destination" : "none while the assignment is not by weight",
            fmt::format("{} weights", destinations.weights.size()));
    }
    if (self.boarding.source) require_valid(*self.boarding.source);
}

}  // namespace pedflux::engine
