#pragma once

#include "engine/analysis/places.h"
#include "engine/analysis/proximity.h"
#include "engine/analysis/trips.h"
#include "engine/analysis/visits.h"
#include "engine/behaviour/filters/filter_program.h"
#include "engine/results/run_reader.h"

#include <cstdint>
#include <optional>
#include <set>
#include <utility>
#include <vector>

/// What filters ask of a stored run.
namespace pedflux::engine {

class Document;

/// A stored run while a filter is prepared for it.
class RunTimes {
  public:
    RunTimes(Document const& document, RunReader& run) : reader(run), places(document, run) {}

    /// Reads the whole run when it is first asked.
    Visits const& visits() {
        if (!visits_) visits_ = visits_of(reader);
        return *visits_;
    }

    RunReader& reader;
    RunPlaces const places;

  private:
    std::optional<Visits> visits_;
};

/// A filter with what it needs of the run, by the numbers of its program.
struct RunFilter {
    /// Throws Exception for a filter that asks for what a stored run does not tell.
    RunFilter(FilterProgram compiled, RunTimes& times);

    FilterProgram const program;
    RunReader const& reader;
    std::vector<Area> areas;                                           ///< by the number of the object
    std::vector<std::vector<Episode>> episodes;                        ///< of each agent
    std::vector<std::vector<std::vector<TripMade>>> trips;             ///< of each trip, those of each agent
    std::vector<std::set<std::pair<int, std::uint32_t>>> transitions;  ///< frames and agents
    std::vector<Proximity> proximities;
    std::vector<std::vector<bool>> ever;  ///< of each filter, whether each agent ever passes
};

/// The agents of one frame, as a filter asks about them.
class RunSituation final : public FilterSituation {
  public:
    RunSituation(RunFilter const& filter, int frame, std::vector<AgentFrame> const& persons)
        : filter_(filter), frame_(frame), persons_(persons), close_(filter.proximities.size()) {}

    /// Whether the filter selects a person, by its position in the frame.
    bool is_selected(std::size_t person);

    bool was_created_by(SymbolIndex event) const override { return is(record().event, event); }
    bool entered_at(SymbolIndex place) const override { return is(record().origin, place); }
    bool has_profile(SymbolIndex profile) const override { return is(record().profile, profile); }
    bool is_in(SymbolIndex area) const override { return filter_.areas[area].has(state().surface); }
    bool holds(SymbolIndex token) const override { return is_in_episode(EpisodeKind::HELD_TOKEN, token); }

    bool exited_at(SymbolIndex place) const override { return record().arrived && is(record().destination, place); }
    bool is_at_server(SymbolIndex server) const override { return is_in_episode(EpisodeKind::AT_SERVER, server); }
    bool is_on_trip(SymbolIndex trip) const override;
    bool makes_transition(SymbolIndex transition) const override;
    bool is_close_to_others(SymbolIndex proximity) const override;
    bool ever_passes(SymbolIndex filter) const override { return filter_.ever[filter][state().agent]; }
    AgentActivity activity() const override { return static_cast<AgentActivity>(state().activity); }
    AgentStateAtSimulationEnd end_state() const override;
    double density() const override { return static_cast<double>(state().density); }
    double speed() const override { return static_cast<double>(state().speed); }

  private:
    AgentFrame const& state() const { return persons_[person_]; }
    AgentRecord const& record() const { return filter_.reader.agents()[state().agent]; }
    bool is(GlobalId const& id, SymbolIndex object) const {
        return id.InternalEquals(filter_.program.symbols.objects[object]);
    }
    bool is_in_episode(EpisodeKind kind, SymbolIndex object) const;

    RunFilter const& filter_;
    int frame_;
    std::vector<AgentFrame> const& persons_;
    std::size_t person_ = 0;
    mutable std::vector<std::vector<int>> close_;  ///< of each proximity, the others close to each person; once asked
};

}  // namespace pedflux::engine
