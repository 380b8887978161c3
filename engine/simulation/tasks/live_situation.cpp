#include "engine/simulation/tasks/live_situation.h"

#include "engine/base/checks.h"
#include "engine/simulation/events/event_engine.h"
#include "engine/simulation/events/server_access.h"

#include <algorithm>
#include <limits>

namespace pedflux::engine {

bool is_at(SimulationState const& run, AgentMotion const& motion, PlaceIndex number) {
    Place const& place = run.places[number];
    if (!place.is_portal()) return std::ranges::find(place.regions, motion.region) != place.regions.end();
    auto const& line = run.plan.doorways[place.doorway].line;
    double const reach = run.infos[motion.agent].origin.radius + beside_line;
    return line.region == motion.region && distance(line.line, motion.position) < reach;
}

Vector point_in_space(SimulationState const& run, AgentMotion const& motion) {
    auto const [x, z] = motion.position;
    return {x, height_at(run, motion.region, motion.position) + above_ground, z};
}

std::optional<double> clock_time(SimulationState const& run, TimeInFrame const& time) {
    switch (time.frame) {
        case TimeReferenceFrame::ABSOLUTE:
            return time.seconds;
        case TimeReferenceFrame::AFTER_SIMULATION_START:
            return run.start_time + time.seconds;
        case TimeReferenceFrame::BEFORE_SIMULATION_END:
            return run.start_time + run.duration - time.seconds;
        case TimeReferenceFrame::AFTER_EVENT_START:
            if (auto const start = run.events->last_start(*time.event)) return run.start_time + *start + time.seconds;
            break;
    }
    return std::nullopt;
}

bool LiveSituation::entered_at(SymbolIndex place) const {
    auto const origin = person_.origin.origin;
    return origin != no_place && run_.places[origin].id.InternalEquals(id(place));
}

bool LiveSituation::is_in(SymbolIndex area) const {
    auto const& object = run_.rules.symbol_targets[area];
    if (object.volume != no_volume) return contains(run_.rules.volumes[object.volume], point_in_space(run_, walker_));
    return object.place != no_place && is_at(run_, walker_, object.place);
}

bool LiveSituation::holds(SymbolIndex token) const {
    return std::ranges::any_of(person_.tokens, [&](GlobalId const& held) { return held.InternalEquals(id(token)); });
}

double LiveSituation::age() const { return (run_.frame - (person_.first_frame - 1)) * run_.frame_length(); }

bool LiveSituation::initial_exit_is(SymbolIndex portal) const {
    auto const exit = person_.origin.destination;
    return exit != no_place && exit == run_.rules.symbol_targets[portal].place;
}

bool LiveSituation::is_gate_open(SymbolIndex gate, GateStateDirection way) const {
    auto const passageway = run_.rules.symbol_targets[gate].passageway;
    if (passageway == no_gate) return false;
    GateState const& state = run_.gates[passageway];
    return way == GateStateDirection::BALL_TO_BOX ? state.ball_to_box : state.box_to_ball;
}

bool LiveSituation::is_active(SymbolIndex event) const { return run_.events->is_active(id(event)); }
double LiveSituation::tally(SymbolIndex tally) const { return run_.events->tally(tally); }

bool LiveSituation::is_server_open(SymbolIndex server, ServerAccessPoint point) const {
    return is_open(run_, run_.rules.symbol_targets[server].server, point);
}

double LiveSituation::time(SymbolIndex time) const {
    return clock_time(run_, run_.rules.symbols.times[time]).value_or(std::numeric_limits<double>::infinity());
}

}  // namespace pedflux::engine
