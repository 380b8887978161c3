#include "engine/analysis/run_filter.h"

#include "engine/analysis/transitions.h"

#include <algorithm>
#include <string_view>

namespace pedflux::engine {

namespace {

/// Refuses what runs of the first format do not tell.
void require_told(FilterProgram const& program, RunReader const& reader) {
    struct Doing {
        AgentFilterType kind;
        std::string_view what;
    };
    static constexpr Doing doings[] = {{AgentFilterType::CREATED_BY, "which events its agents come from"},
                                       {AgentFilterType::ACTIVITY, "what its agents were doing"},
                                       {AgentFilterType::TOKEN, "the tokens and servers of its agents"},
                                       {AgentFilterType::AT_SERVER, "the tokens and servers of its agents"}};
    for (auto const& doing : doings) {
        if (program.kinds.contains(doing.kind)) require_doings(reader, std::string(doing.what));
    }
}

std::set<std::pair<int, std::uint32_t>> moments_of(Transition const& transition, RunTimes& times) {
    std::set<std::pair<int, std::uint32_t>> moments;
    for (auto const& crossing : crossings_at(transition, times.places, times.visits())) {
        // Who leaves the simulation is seen for the last time in the frame before.
        moments.emplace(crossing.to == no_surface ? crossing.frame - 1 : crossing.frame, crossing.agent);
    }
    return moments;
}

/// For each agent of the run, whether it passes a filter in any frame.
std::vector<bool> ever_passing(FilterProgram const& program, RunTimes& times) {
    RunFilter const filter(program, times);
    std::vector<bool> passing(times.reader.agents().size());
    for (int frame = first_frame; frame <= times.reader.last_frame(); ++frame) {
        auto const persons = times.reader.frame(frame);
        RunSituation situation(filter, frame, persons);
        for (std::size_t i = 0; i < persons.size(); ++i) {
            auto const agent = persons[i].agent;
            passing[agent] = passing[agent] || situation.is_selected(i);
        }
    }
    return passing;
}

}  // namespace

RunFilter::RunFilter(FilterProgram compiled, RunTimes& times)
    : program(std::move(compiled)), reader(times.reader), areas(program.symbols.objects.size()) {
    auto const agent_count = reader.agents().size();
    require_told(program, reader);
    for (auto const area : program.areas) areas[area] = times.places[program.symbols.objects[area]].area;
    if (program.kinds.contains(AgentFilterType::TOKEN) || program.kinds.contains(AgentFilterType::AT_SERVER)) {
        episodes.resize(agent_count);
        for (auto const& episode : reader.episodes()) episodes[episode.agent].push_back(episode);
    }
    for (auto const& trip : program.trips) {
        auto& made = trips.emplace_back(agent_count);
        for (auto const& each : trips_of(TripAccess::path(*trip), times.places, times.visits())) {
            made[each.agent].push_back(each);
        }
    }
    for (auto const& transition : program.symbols.transitions) transitions.push_back(moments_of(*transition, times));
    for (auto const& [distance, ignore_barriers] : program.proximities) {
        proximities.emplace_back(reader, distance, ignore_barriers);
    }
    for (auto const& filter : program.ever) ever.push_back(ever_passing(filter, times));
}

bool RunSituation::is_selected(std::size_t person) {
    person_ = person;
    return passes(filter_.program, *this);
}

bool RunSituation::is_on_trip(SymbolIndex trip) const {
    return std::ranges::any_of(filter_.trips[trip][state().agent],
                               [&](TripMade const& made) { return made.start <= frame_ && frame_ < made.end; });
}

bool RunSituation::makes_transition(SymbolIndex transition) const {
    return filter_.transitions[transition].contains({frame_, state().agent});
}

bool RunSituation::is_close_to_others(SymbolIndex proximity) const {
    auto& counts = close_[proximity];
    if (counts.empty()) counts = filter_.proximities[proximity].counts(persons_);
    return counts[person_] > 0;
}

AgentStateAtSimulationEnd RunSituation::end_state() const {
    if (record().arrived) return AgentStateAtSimulationEnd::EXITED;
    bool const is_inside = record().last_frame == filter_.reader.last_frame();
    return is_inside ? AgentStateAtSimulationEnd::INSIDE : AgentStateAtSimulationEnd::FAILED;
}

bool RunSituation::is_in_episode(EpisodeKind kind, SymbolIndex object) const {
    return std::ranges::any_of(filter_.episodes[state().agent], [&](Episode const& episode) {
        return episode.kind == kind && is(episode.object, object) && episode.first_frame <= frame_ &&
               frame_ <= episode.last_frame;
    });
}

}  // namespace pedflux::engine
