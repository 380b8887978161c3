#include "engine/base/checks.h"
#include "engine/base/list_checks.h"
#include "engine/transport/vehicle_edit.h"

#include <pedflux/vehicles.h>

#include <cmath>
#include <limits>
#include <string>

#include <fmt/format.h>

// Arrivals of vehicles, and the numbers of people that they bring.
namespace pedflux {

using engine::copy_of;
using engine::CountBySchedule;
using engine::CountByTable;
using engine::edit;
using engine::get;
using engine::HeadwayArrivals;
using engine::held_in;
using engine::ScheduledArrivals;
using engine::state_of;
using engine::VehicleState;

namespace {

/// Times and persons as two lists of equal length.
struct WholePairs {
    std::vector<int> seconds;
    std::vector<int> persons;
};

int whole(std::string const& what, double value) {
    bool const fits = std::abs(value) <= std::numeric_limits<int>::max();
    if (!fits || value != std::floor(value)) {
        engine::refuse(fmt::format("{} must be a whole number, not {}", what, engine::text_of(value)));
    }
    return static_cast<int>(value);
}

WholePairs lists_of(Vehicle& vehicle, std::vector<DurationValuePair> const& pairs) {
    auto const title = title_of(state_of<VehicleState>(vehicle));
    WholePairs lists;
    for (std::size_t index = 0; index < pairs.size(); ++index) {
        auto const pair = title + ": pair " + std::to_string(index);
        lists.seconds.push_back(whole(pair + ": the seconds", pairs[index].GetDurationInSeconds()));
        lists.persons.push_back(whole(pair + ": the persons", pairs[index].GetValue()));
    }
    return lists;
}

/// A pair for each number of persons.
std::vector<DurationValuePair> pairs_of(std::vector<int> const& seconds, std::vector<int> const& persons) {
    std::vector<DurationValuePair> pairs;
    for (std::size_t index = 0; index < persons.size(); ++index) pairs.emplace_back(seconds[index], persons[index]);
    return pairs;
}

template <class Held, class Counts>
std::vector<int> persons_by(std::optional<Counts> const& count) {
    auto const* const held = held_in<Held>(count);
    return held == nullptr ? std::vector<int>() : held->persons;
}

/// Drops populations given by a schedule or lookup table that no longer applies.
template <class Held>
void end_counts(VehicleState& state) {
    if (held_in<Held>(state.alighting.count) != nullptr) state.alighting.count.reset();
    if (held_in<Held>(state.through.count) != nullptr) state.through.count.reset();
}

/// New arrivals drop the numbers of the previous schedule.
void set_arrivals(Vehicle& vehicle, engine::VehicleArrivals const& arrivals) {
    edit(vehicle, [&](VehicleState& state) {
        end_counts<CountBySchedule>(state);
        state.arrivals = arrivals;
    });
}

/// A new schedule or table with the numbers of the populations that it gives.
template <class Held>
void set_times(Vehicle& vehicle, std::vector<int> const& seconds, std::vector<int> const* alighting,
               std::vector<int> const* through) {
    edit(vehicle, [&](VehicleState& state) {
        end_counts<Held>(state);
        if constexpr (std::is_same_v<Held, CountBySchedule>) {
            state.arrivals = ScheduledArrivals{seconds};
        } else {
            state.table_intervals = seconds;
        }
        if (alighting != nullptr) state.alighting.count = Held{*alighting};
        if (through != nullptr) state.through.count = Held{*through};
    });
}

HeadwayArrivals const& require_headway(Vehicle& vehicle, std::string_view property) {
    auto& state = state_of<VehicleState>(vehicle);
    auto const* const arrivals = std::get_if<HeadwayArrivals>(&state.arrivals);
    if (arrivals == nullptr) engine::refuse_unset(owner_of(state), property);
    return *arrivals;
}

}  // namespace

bool Vehicle::IsArrivalByHeadway() {
    return std::holds_alternative<HeadwayArrivals>(get(*this, &VehicleState::arrivals));
}
bool Vehicle::IsArrivalBySchedule() { return !IsArrivalByHeadway(); }
void Vehicle::SetArrivalByHeadway(std::shared_ptr<Distribution> const& headway) {
    set_arrivals(*this, HeadwayArrivals{copy_of(headway), {}});
}
void Vehicle::SetArrivalByHeadwayWithFixedCount(int count, std::shared_ptr<Distribution> const& headway) {
    set_arrivals(*this, HeadwayArrivals{copy_of(headway), count});
}
std::shared_ptr<Distribution> Vehicle::GetArrivalByHeadwayDistribution() {
    return copy_of(require_headway(*this, "arrival.headway").headway);
}
bool Vehicle::HasArrivalByHeadwayFixedCount() {
    return IsArrivalByHeadway() && require_headway(*this, "arrival.fixedCount").count.has_value();
}
int Vehicle::GetArrivalByHeadwayFixedCount() {
    auto const& count = require_headway(*this, "arrival.fixedCount").count;
    if (!count) engine::refuse_unset(owner_of(*state_), "arrival.fixedCount");
    return *count;
}
void Vehicle::SetArrivalBySchedule(std::vector<int> const& offsets) { set_arrivals(*this, ScheduledArrivals{offsets}); }
std::vector<int> Vehicle::GetArrivalByScheduleTimeOffsetsInSeconds() {
    auto const* const schedule = std::get_if<ScheduledArrivals>(&get(*this, &VehicleState::arrivals));
    return schedule == nullptr ? std::vector<int>() : schedule->offsets;
}

std::shared_ptr<TimeReference> Vehicle::GetStartTimeReference() { return get_copy(*this, &VehicleState::start); }
void Vehicle::SetStartTimeReference(std::shared_ptr<TimeReference> const& start) {
    set_copy(*this, &VehicleState::start, start);
}
std::shared_ptr<Distribution> Vehicle::GetDwellDurationDistribution() { return get_copy(*this, &VehicleState::dwell); }
void Vehicle::SetDwellDurationDistribution(std::shared_ptr<Distribution> const& duration) {
    set_copy(*this, &VehicleState::dwell, duration);
}
int Vehicle::GetBoardingTimeOffsetInSeconds() { return get(*this, &VehicleState::boarding_offset); }
void Vehicle::SetBoardingTimeOffsetInSeconds(int offset) { set(*this, &VehicleState::boarding_offset, offset); }

std::vector<int> Vehicle::GetLookupTableIntervalDurationsInSeconds() {
    auto& state = state_of<VehicleState>(*this);
    bool const used = held_in<CountByTable>(state.alighting.count) != nullptr ||
                      held_in<CountByTable>(state.through.count) != nullptr;
    return used ? state.table_intervals : std::vector<int>();
}

// The operations on a schedule or table: the member that holds its numbers, and its times.
#define NUMBERS(Setter, Getter, PairsGetter, Times, Held)                                                        \
    void Vehicle::Setter##AlightingPopulations(std::vector<int> const& times, std::vector<int> const& persons) { \
        set_times<Held>(*this, times, &persons, nullptr);                                                        \
    }                                                                                                            \
    void Vehicle::Setter##AlightingPopulations(std::vector<DurationValuePair> const& pairs) {                    \
        auto const lists = lists_of(*this, pairs);                                                               \
        Setter##AlightingPopulations(lists.seconds, lists.persons);                                              \
    }                                                                                                            \
    void Vehicle::Setter##ThroughPopulations(std::vector<int> const& times, std::vector<int> const& persons) {   \
        set_times<Held>(*this, times, nullptr, &persons);                                                        \
    }                                                                                                            \
    void Vehicle::Setter##ThroughPopulations(std::vector<DurationValuePair> const& pairs) {                      \
        auto const lists = lists_of(*this, pairs);                                                               \
        Setter##ThroughPopulations(lists.seconds, lists.persons);                                                \
    }                                                                                                            \
    void Vehicle::Setter##AlightingAndThroughPopulations(                                                        \
        std::vector<int> const& times, std::vector<int> const& alighting, std::vector<int> const& through) {     \
        set_times<Held>(*this, times, &alighting, &through);                                                     \
    }                                                                                                            \
    std::vector<int> Vehicle::Getter##AlightingPopulations() {                                                   \
        return persons_by<Held>(get(*this, &VehicleState::alighting).count);                                     \
    }                                                                                                            \
    std::vector<int> Vehicle::Getter##ThroughPopulations() {                                                     \
        return persons_by<Held>(get(*this, &VehicleState::through).count);                                       \
    }                                                                                                            \
    std::vector<DurationValuePair> Vehicle::PairsGetter##AndAlightingPopulationPairs() {                         \
        return pairs_of(Times(), Getter##AlightingPopulations());                                                \
    }                                                                                                            \
    std::vector<DurationValuePair> Vehicle::PairsGetter##AndThroughPopulationPairs() {                           \
        return pairs_of(Times(), Getter##ThroughPopulations());                                                  \
    }

NUMBERS(SetArrivalByScheduleWith, GetArrivalBySchedule, GetArrivalByScheduleTime,
        GetArrivalByScheduleTimeOffsetsInSeconds, CountBySchedule)
NUMBERS(SetLookupTable, GetLookupTable, GetLookupTableDuration, GetLookupTableIntervalDurationsInSeconds, CountByTable)

}  // namespace pedflux
