#pragma once

#include "engine/behaviour/agent_situation.h"
#include "engine/simulation/live_run.h"

#include <optional>

/// What tests ask about an agent of a simulation.
namespace pedflux::engine {

/// So near to the line of a portal (metres, besides its radius) an agent is at it. Closed lines keep bodies off.
inline constexpr double beside_line = 0.2;

/// Whether an agent is at a portal's line or in an area.
bool is_at(LiveRun const& run, Walker const& walker, PlaceIndex place);

/// The point of space that decides in which volumes an agent is.
Vector point_in_space(LiveRun const& run, Walker const& walker);

/// Seconds since midnight; none while it is not known.
std::optional<double> clock_time(LiveRun const& run, TimeInFrame const& time);

class LiveSituation : public TestSituation {
  public:
    /// @param draw tells the times apart at which tests are put to the agent
    LiveSituation(LiveRun const& run, Walker const& walker, std::uint64_t draw)
        : run_(run), person_(run.persons[walker.agent]), walker_(walker), draw_(draw) {}

    bool was_created_by(MentionIndex event) const override { return person_.origin.event.InternalEquals(id(event)); }
    bool entered_at(MentionIndex place) const override;
    bool has_profile(MentionIndex profile) const override { return person_.origin.profile.InternalEquals(id(profile)); }
    bool is_in(MentionIndex area) const override;
    bool holds(MentionIndex token) const override;
    double age() const override;
    bool initial_exit_is(MentionIndex portal) const override;
    ChanceKey chance_key() const override { return {run_.seed, person_.origin.key, draw_}; }
    bool is_active(MentionIndex event) const override;
    bool is_gate_open(MentionIndex gate, GateStateDirection way) const override;
    bool is_server_open(MentionIndex server, ServerAccessPoint point) const override;
    double tally(MentionIndex tally) const override;
    double clock() const override { return run_.start_time + run_.seconds(); }
    double time(MentionIndex time) const override;

  private:
    GlobalId const& id(MentionIndex object) const { return run_.rules.mentions.objects[object]; }

    LiveRun const& run_;
    Person const& person_;
    Walker const& walker_;
    std::uint64_t draw_;
};

}  // namespace pedflux::engine
