#include "engine/behaviour/population/schedule.h"

#include "engine/base/checks.h"
#include "engine/behaviour/population/population_handle.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace pedflux::engine {
namespace {

// People who start at the same origin and, where the source says so, go to the same destination.
struct Cell {
    int origin;
    int destination;
    double amount;
};

constexpr int DESTINATION_OPEN = -3;

int persons_of(Population const& population, double multiplier) {
    constexpr double most = 1e7;
    auto const persons = std::round(require_not_negative("population multiplier", multiplier) * total_of(population));
    if (!(persons <= most)) {
        refuse(fmt::format("{}: the total population is {}; it must be at most {}", traits_of(population.type).name,
                           text_of(persons), text_of(most)));
    }
    return static_cast<int>(persons);
}

void require_places(Population const& population) {
    auto const& traits = traits_of(population.type);
    if (population.origins.empty())
        refuse(fmt::format("{} has a population but no origin; it must have at least one", traits.name));
    if (population.destinations.empty() && !traits.chooses_destinations)
        refuse(fmt::format("{} has a population but no destination; it must have at least one", traits.name));
}

double amount_at(Population const& population, std::size_t origin) {
    if (traits_of(population.type).amounts == Amounts::PER_ORIGIN) return population.amounts[origin];
    return population.origin_weights.empty() ? 1 : population.origin_weights[origin];
}

std::vector<Cell> cells_of(Population const& population) {
    std::vector<Cell> cells;
    bool const by_pair = traits_of(population.type).amounts == Amounts::PER_PAIR;
    for (std::size_t origin = 0; origin < population.origins.size(); ++origin) {
        auto const from = static_cast<int>(origin);
        if (!by_pair) {
            cells.push_back({from, DESTINATION_OPEN, amount_at(population, origin)});
            continue;
        }
        for (std::size_t destination = 0; destination < population.destinations.size(); ++destination) {
            auto const index = origin * population.destinations.size() + destination;
            cells.push_back({from, static_cast<int>(destination), population.amounts[index]});
        }
    }
    return cells;
}

// The cells in the order in which their people come, each spread evenly over the whole: the k-th of n people stands at
// (k + 1/2) / n.
std::vector<Cell> spread(std::vector<Cell> const& cells, int persons) {
    std::vector<double> amounts;
    std::ranges::transform(cells, std::back_inserter(amounts), &Cell::amount);
    auto const counts = apportion(amounts, persons);
    std::vector<std::pair<double, std::size_t>> places;
    places.reserve(static_cast<std::size_t>(persons));
    for (std::size_t cell = 0; cell < cells.size(); ++cell) {
        for (int k = 0; k < counts[cell]; ++k) places.emplace_back((k + 0.5) / counts[cell], cell);
    }
    std::ranges::sort(places);
    std::vector<Cell> sequence;
    sequence.reserve(places.size());
    for (auto const& place : places) sequence.push_back(cells[place.second]);
    return sequence;
}

std::vector<double> times_of(InstantArrival const& /*arrival*/, int persons, Random& /*random*/) {
    std::vector<double> times(static_cast<std::size_t>(persons), 0.0);
    return times;
}

void append_evenly(std::vector<double>& times, double start, double duration, int persons) {
    for (int k = 0; k < persons; ++k) times.push_back(start + duration * k / persons);
}

std::vector<double> times_of(EvenArrival const& arrival, int persons, Random& /*random*/) {
    std::vector<double> times;
    append_evenly(times, 0, arrival.seconds, persons);
    return times;
}

std::vector<double> times_of(RandomArrival const& arrival, int persons, Random& random) {
    std::vector<double> times(static_cast<std::size_t>(persons));
    std::ranges::generate(times, [&] { return sample(arrival.delay, random); });
    std::ranges::sort(times);
    return times;
}

std::vector<double> times_of(CurveArrival const& arrival, int persons, Random& /*random*/) {
    std::vector<double> values;
    std::ranges::transform(arrival.periods, std::back_inserter(values), &Period::value);
    auto const counts = apportion(values, persons);
    std::vector<double> times;
    double start = 0;
    for (std::size_t period = 0; period < counts.size(); ++period) {
        append_evenly(times, start, arrival.periods[period].duration, counts[period]);
        start += arrival.periods[period].duration;
    }
    return times;
}

// The destination of each person where the source counts by destination, in random order.
std::vector<int> counted_destinations(Population const& population, int persons, Random& random) {
    auto const amounts =
        population.amounts.empty() ? std::vector<double>(population.destinations.size(), 1.0) : population.amounts;
    auto const counts = apportion(amounts, persons);
    std::vector<int> destinations;
    for (std::size_t index = 0; index < counts.size(); ++index)
        destinations.insert(destinations.end(), static_cast<std::size_t>(counts[index]), static_cast<int>(index));
    shuffle(destinations, random);
    return destinations;
}

int chosen_destination(Population const& population, Random& random) {
    if (population.destinations.empty()) return NO_DESTINATION;
    switch (population.assignment) {
        case DestinationAssignment::BY_LOWEST_COST:
            return LOWEST_COST_DESTINATION;
        case DestinationAssignment::WEIGHTED_BY_CHANCE:
            return static_cast<int>(draw_weighted(population.destination_weights, random));
        case DestinationAssignment::BY_CHANCE:
        case DestinationAssignment::BY_COUNT:
        case DestinationAssignment::IN_SEQUENCE:
            break;
    }
    return static_cast<int>(random.below(static_cast<std::uint32_t>(population.destinations.size())));
}

std::vector<int> open_destinations(Population const& population, int persons, Random& random) {
    if (population.assignment == DestinationAssignment::BY_COUNT)
        return counted_destinations(population, persons, random);
    std::vector<int> destinations(static_cast<std::size_t>(persons));
    std::ranges::generate(destinations, [&] { return chosen_destination(population, random); });
    return destinations;
}

}  // namespace

std::vector<int> apportion(std::vector<double> const& amounts, int total) {
    std::vector<int> counts(amounts.size(), 0);
    if (total == 0) return counts;
    auto const sum = std::accumulate(amounts.begin(), amounts.end(), 0.0);
    std::vector<double> remainders;
    for (std::size_t index = 0; index < amounts.size(); ++index) {
        auto const share = amounts[index] / sum * total;
        counts[index] = static_cast<int>(share);
        remainders.push_back(share - counts[index]);
    }
    std::vector<std::size_t> order(amounts.size());
    std::iota(order.begin(), order.end(), 0U);
    std::ranges::stable_sort(order, [&](auto left, auto right) { return remainders[left] > remainders[right]; });
    auto const missing = static_cast<std::size_t>(total - std::accumulate(counts.begin(), counts.end(), 0));
    for (std::size_t k = 0; k < missing; ++k) ++counts[order[k]];
    return counts;
}

Schedule compile_schedule(Population const& population, double multiplier, Random random) {
    require_valid(population);
    auto const persons = persons_of(population, multiplier);
    Schedule schedule{population.origins, population.destinations, {}};
    if (persons == 0) return schedule;
    require_places(population);
    auto const times =
        std::visit([&](auto const& arrival) { return times_of(arrival, persons, random); }, population.arrival);
    auto const sequence = spread(cells_of(population), persons);
    auto const by_pair = traits_of(population.type).amounts == Amounts::PER_PAIR;
    auto const destinations = by_pair ? std::vector<int>() : open_destinations(population, persons, random);
    for (std::size_t index = 0; index < sequence.size(); ++index) {
        schedule.arrivals.push_back(
            {times[index], sequence[index].origin, by_pair ? sequence[index].destination : destinations[index]});
    }
    return schedule;
}

Schedule compile_schedule(PopulationSource const& source, double multiplier, Random random) {
    return compile_schedule(population_of(source), multiplier, random);
}

}  // namespace pedflux::engine
