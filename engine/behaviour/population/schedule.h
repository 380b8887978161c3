#pragma once

#include "engine/base/random.h"
#include "engine/behaviour/population/population.h"

#include <pedflux/identifiers.h>

#include <vector>

namespace pedflux {
class PopulationSource;
}

namespace pedflux::engine {

/// The destination of a person who takes the one with the lowest cost of the schedule.
inline constexpr int LOWEST_COST_DESTINATION = -1;
/// The destination of a person whose source has no destinations.
inline constexpr int NO_DESTINATION = -2;

/// One arriving person.
struct PlannedArrival {
    double time = 0;      ///< seconds after the event's start
    int origin = 0;       ///< index into the schedule's origins
    int destination = 0;  ///< index into the schedule's destinations, or one of the constants above
};

/// All persons of a population, in the order of their arrival.
struct Schedule {
    std::vector<GlobalId> origins;
    std::vector<GlobalId> destinations;
    std::vector<PlannedArrival> arrivals;
};

/// Determines origin, destination and arrival time of each person. The total, times the multiplier, is rounded to whole
/// persons and met exactly; origins, the cells of tables and matrices, and the periods of a curve get their share by
/// largest remainders (Hamilton's method). The people of one origin are spread evenly over the sequence of arrivals.
/// What is left to chance comes from the generator alone. Throws an Exception for people without an origin, for a
/// source that counts by destination and has none, and for more than 10 million persons.
Schedule compile_schedule(Population const& population, double multiplier, Random random);

/// The same for a source of the SDK.
Schedule compile_schedule(PopulationSource const& source, double multiplier, Random random);

/// Whole numbers in proportion to the amounts, with the given total (largest remainders, ties to the first). At least
/// one amount is above 0 unless the total is 0.
std::vector<int> apportion(std::vector<double> const& amounts, int total);

}  // namespace pedflux::engine
