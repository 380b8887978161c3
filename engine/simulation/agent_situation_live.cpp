#include "engine/simulation/agent_situation_live.h"

#include "engine/geometry/checks.h"
#include "engine/simulation/rules_run.h"
#include "engine/simulation/rules_servers.h"

#include <algorithm>
#include <limits>

namespace pedflux::engine {

bool is_at(LiveRun const& run, Walker const& walker, PlaceIndex number) {
    Place const& place = run.places[number];
    if (!place.is_portal()) return std::ranges::find(place.regions, walker.region) != place.regions.end();
    auto const& line = run.plan.doorways[place.doorway].line;
    double const reach = run.persons[walker.agent].origin.radius + beside_line;
    return line.region == walker.region && distance(line.line, walker.position) < reach;
}

Vector point_in_space(LiveRun const& run, Walker const& walker) {
    auto const [x, z] = walker.position;
    return {x, height_at(run, walker.region, walker.position) + above_ground, z};
}

std::optional<double> clock_time(LiveRun const& run, TimeInFrame const& time) {
    switch (time.frame) {
        case TimeReferenceFrame::ABSOLUTE:
            return time.seconds;
        case TimeReferenceFrame::AFTER_SIMULATION_START:
            return run.start_time + time.seconds;
        case TimeReferenceFrame::BEFORE_SIMULATION_END:
            return run.start_time + run.duration - time.seconds;
        case TimeReferenceFrame::AFTER_EVENT_START:
            if (auto const start = run.timed->last_start(*time.event)) return run.start_time + *start + time.seconds;
            break;
    }
    return std::nullopt;
}

bool LiveSituation::entered_at(MentionIndex place) const {
    auto const origin = person_.origin.origin;
    return origin != no_place && run_.places[origin].id.InternalEquals(id(place));
}

bool LiveSituation::is_in(MentionIndex area) const {
    auto const& object = run_.rules.mentioned[area];
    if (object.volume != no_volume) return contains(run_.rules.volumes[object.volume], point_in_space(run_, walker_));
    return object.place != no_place && is_at(run_, walker_, object.place);
}

bool LiveSituation::holds(MentionIndex token) const {
    return std::ranges::any_of(person_.tokens, [&](GlobalId const& held) { return held.InternalEquals(id(token)); });
}

double LiveSituation::age() const { return (run_.frame - (person_.first_frame - 1)) * run_.frame_length(); }

bool LiveSituation::initial_exit_is(MentionIndex portal) const {
    auto const exit = person_.origin.destination;
    return exit != no_place && exit == run_.rules.mentioned[portal].place;
}

bool LiveSituation::is_gate_open(MentionIndex gate, GateStateDirection way) const {
    auto const passageway = run_.rules.mentioned[gate].passageway;
    if (passageway == no_gate) return false;
    GateState const& state = run_.gates[passageway];
    return way == GateStateDirection::BALL_TO_BOX ? state.ball_to_box : state.box_to_ball;
}

bool LiveSituation::is_active(MentionIndex event) const { return run_.timed->is_active(id(event)); }
double LiveSituation::tally(MentionIndex tally) const { return run_.timed->tally(tally); }

bool LiveSituation::is_server_open(MentionIndex server, ServerAccessPoint point) const {
    return is_open(run_, run_.rules.mentioned[server].server, point);
}

double LiveSituation::time(MentionIndex time) const {
    return clock_time(run_, run_.rules.mentions.times[time]).value_or(std::numeric_limits<double>::infinity());
}

}  // namespace pedflux::engine
