#include "engine/behaviour/population/population.h"

#include "engine/base/list_checks.h"
#include "engine/scene/scene_states.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <string>

#include <fmt/format.h>

namespace pedflux::engine {
namespace {

double seconds_of(InstantArrival const& /*arrival*/) { return 0; }
double seconds_of(EvenArrival const& arrival) { return arrival.seconds; }
double seconds_of(RandomArrival const& arrival) { return maximum(arrival.delay); }
double seconds_of(CurveArrival const& arrival) {
    return std::accumulate(arrival.periods.begin(), arrival.periods.end(), 0.0,
                           [](double sum, Period const& period) { return sum + period.duration; });
}

double sum(std::vector<double> const& values) { return std::accumulate(values.begin(), values.end(), 0.0); }

void require_whole_seconds(std::string_view name, double seconds) {
    constexpr auto longest = std::numeric_limits<int>::max();
    if (seconds <= longest) return;
    refuse(fmt::format("{}: the arrival lasts {} s; it may last {} s", name, text_of(seconds), longest));
}

std::vector<double> values_of(std::vector<Period> const& periods) {
    std::vector<double> values;
    std::ranges::transform(periods, std::back_inserter(values), &Period::value);
    return values;
}

void require_valid_periods(std::string_view name, std::vector<Period> const& periods) {
    for (std::size_t index = 0; index < periods.size(); ++index) {
        auto const subject = fmt::format("{}: period {}", name, index);
        require_not_negative(fmt::format("{}, duration", subject), periods[index].duration);
        require_not_negative(fmt::format("{}, value", subject), periods[index].value);
    }
    require_whole_seconds(name, seconds_of(CurveArrival{periods}));
}

void check(InstantArrival const& /*arrival*/) {}
void check(EvenArrival const& arrival) {
    if (arrival.seconds < 1) {
        refuse(
            fmt::format("PopulationArrival: an even arrival lasts {} s; it must last at least 1 s", arrival.seconds));
    }
}
void check(RandomArrival const& arrival) {
    require_valid(arrival.delay);
    require_not_negative("PopulationArrival: the least delay", minimum(arrival.delay));
    require_whole_seconds("PopulationArrival", maximum(arrival.delay));
}
void check(CurveArrival const& arrival) {
    if (arrival.periods.empty()) refuse("PopulationArrival: the curve has no periods; it must have at least one");
    require_valid_periods("PopulationArrival", arrival.periods);
    require_weights("PopulationArrival: period value", values_of(arrival.periods));
}

std::size_t amount_count(Population const& population) {
    switch (traits_of(population.type).amounts) {
        case Amounts::NONE:
            return 0;
        case Amounts::PER_ORIGIN:
            return population.origins.size();
        case Amounts::PER_DESTINATION:
            return population.destinations.size();
        case Amounts::PER_PAIR:
            return population.origins.size() * population.destinations.size();
    }
    return 0;
}

void require_fitting_destinations(Population const& population, PopulationTraits const& traits) {
    auto const name = std::string(traits.name);
    bool const chosen = population.assignment != DestinationAssignment::BY_COUNT;
    bool const weighted = population.assignment == DestinationAssignment::WEIGHTED_BY_CHANCE;
    if (chosen != traits.chooses_destinations)
        refuse(fmt::format("{}: the destination assignment must {}be BY_COUNT", name, chosen ? "" : "not "));
    if (population.assignment == DestinationAssignment::IN_SEQUENCE)
        refuse(
            fmt::format("{}: the destination assignment must not be IN_SEQUENCE, a person has one destination", name));
    if (weighted) {
        require_equal_lengths(fmt::format("{}: destinations", name), population.destinations.size(), "their weights",
                              population.destination_weights.size());
        require_weights(fmt::format("{}: destination weight", name), population.destination_weights);
    } else if (!population.destination_weights.empty()) {
        refuse(fmt::format("{}: there are destination weights; there must be none unless they are used", name));
    }
}

void require_fitting_origin_weights(Population const& population, PopulationTraits const& traits) {
    if (population.origin_weights.empty()) return;
    auto const name = std::string(traits.name);
    if (!traits.has_origin_weights) refuse(fmt::format("{}: there are origin weights; there must be none", name));
    require_equal_lengths(fmt::format("{}: origins", name), population.origins.size(), "their weights",
                          population.origin_weights.size());
    require_weights(fmt::format("{}: origin weight", name), population.origin_weights);
}

}  // namespace

int duration_of(Arrival const& arrival) {
    return static_cast<int>(std::ceil(std::visit([](auto const& kind) { return seconds_of(kind); }, arrival)));
}

void require_valid(Arrival const& arrival) {
    std::visit([](auto const& kind) { check(kind); }, arrival);
}

bool Population::is_place(ObjectState const& object) {
    return dynamic_cast<NetworkObjectState const*>(&object) != nullptr || object.kind->type == ObjectType::ZONE;
}

PopulationTraits const& traits_of(PopulationSourceTypeId type) {
    static constexpr std::array<PopulationTraits, 7> traits{{
        {"CountPopulationSource", true, true, Amounts::NONE},
        {"CountPerOriginPopulationSource", false, true, Amounts::NONE},
        {"CountPerDestinationPopulationSource", true, false, Amounts::NONE},
        {"OriginTablePopulationSource", false, true, Amounts::PER_ORIGIN},
        {"DestinationTablePopulationSource", true, false, Amounts::PER_DESTINATION},
        {"SchedulePopulationSource", true, true, Amounts::NONE},
        {"ODMatrixPopulationSource", false, false, Amounts::PER_PAIR},
    }};
    return traits.at(static_cast<std::size_t>(type));
}

Population empty_population(PopulationSourceTypeId type) {
    Population population;
    population.type = type;
    if (!traits_of(type).chooses_destinations) population.assignment = DestinationAssignment::BY_COUNT;
    if (type == PopulationSourceTypeId::SCHEDULE) population.arrival = CurveArrival{};
    return population;
}

void require_valid(Population const& population) {
    auto const& traits = traits_of(population.type);
    auto const name = std::string(traits.name);
    require_equal_lengths(fmt::format("{}: numbers of persons", name), population.amounts.size(),
                          "places or pairs of them", amount_count(population));
    require_fitting_origin_weights(population, traits);
    require_fitting_destinations(population, traits);
    require_distinct(fmt::format("{}: origin", name), population.origins);
    require_distinct(fmt::format("{}: destination", name), population.destinations);
    require_not_negative(fmt::format("{}: population count", name), population.count);
    require_none_negative(fmt::format("{}: number of persons", name), population.amounts);
    if (population.type != PopulationSourceTypeId::SCHEDULE) {
        require_valid(population.arrival);
    } else if (auto const* const curve = std::get_if<CurveArrival>(&population.arrival)) {
        require_valid_periods(name, curve->periods);
    } else {
        refuse(fmt::format("{}: the arrival must be a curve", name));
    }
}

double total_of(Population const& population) {
    switch (population.type) {
        case PopulationSourceTypeId::COUNT:
            return population.count;
        case PopulationSourceTypeId::COUNT_PER_ORIGIN:
            return population.count * static_cast<double>(population.origins.size());
        case PopulationSourceTypeId::COUNT_PER_DESTINATION:
            return population.count * static_cast<double>(population.destinations.size());
        case PopulationSourceTypeId::SCHEDULE:
            return sum(values_of(std::get<CurveArrival>(population.arrival).periods));
        case PopulationSourceTypeId::ORIGIN_TABLE:
        case PopulationSourceTypeId::DESTINATION_TABLE:
        case PopulationSourceTypeId::OD_MATRIX:
            return sum(population.amounts);
    }
    return 0;
}

}  // namespace pedflux::engine
