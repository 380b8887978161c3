#include "engine/simulation/tasks/live_situation.h"

#include <algorithm>
#include <limits>

namespace pedflux::engine {

bool is_at(World const& world, Agents const& agents, AgentMotion const& motion, PlaceIndex number) {
    Place const& place = world.places[number];
    if (!place.is_portal()) return std::ranges::find(place.regions, motion.region) != place.regions.end();
    auto const& line = world.plan.doorways[place.doorway].line;
    double const reach = agents.infos[motion.agent].origin.radius + beside_line;
    return line.region == motion.region && distance(line.line, motion.position) < reach;
}

Vector point_in_space(FloorPlan const& plan, AgentMotion const& motion) {
    auto const [x, z] = motion.position;
    return {x, height_at(plan, motion.region, motion.position) + above_ground, z};
}

bool put_test(TaskContext& context, AgentMotion const& motion, TestProgram const& test) {
    auto const draw = context.agents.tasks[motion.agent].tests++;
    return passes(test, LiveSituation(context, motion, draw));
}

bool LiveSituation::entered_at(SymbolIndex place) const {
    auto const origin = info_.origin.origin;
    return origin != no_place && context_.world.places[origin].id.InternalEquals(id(place));
}

bool LiveSituation::is_in(SymbolIndex area) const {
    auto const& object = target(area);
    if (object.volume != no_volume) {
        return contains(context_.world.volumes[object.volume], point_in_space(context_.world.plan, motion_));
    }
    return object.place != no_place && is_at(context_.world, context_.agents, motion_, object.place);
}

bool LiveSituation::holds(SymbolIndex token) const {
    return std::ranges::any_of(info_.tokens, [&](GlobalId const& held) { return held.InternalEquals(id(token)); });
}

double LiveSituation::age() const {
    auto const& clock = context_.clock;
    return (clock.frame - (info_.first_frame - 1)) * clock.frame_length();
}

bool LiveSituation::initial_exit_is(SymbolIndex portal) const {
    auto const exit = info_.origin.destination;
    return exit != no_place && exit == target(portal).place;
}

bool LiveSituation::is_gate_open(SymbolIndex gate, GateStateDirection way) const {
    auto const passageway = target(gate).passageway;
    if (passageway == no_gate) return false;
    GateState const& state = context_.gates.states[passageway];
    return way == GateStateDirection::BALL_TO_BOX ? state.ball_to_box : state.box_to_ball;
}

bool LiveSituation::is_active(SymbolIndex event) const { return context_.events.is_active(id(event)); }
double LiveSituation::tally(SymbolIndex tally) const { return context_.events.tally_value(tally); }

bool LiveSituation::is_server_open(SymbolIndex server, ServerAccessPoint point) const {
    return is_open(context_.servers, target(server).server, point);
}

double LiveSituation::time(SymbolIndex time) const {
    auto const& reference = context_.program.symbols.times[time];
    return clock_time(context_.clock, context_.events, reference).value_or(std::numeric_limits<double>::infinity());
}

}  // namespace pedflux::engine
