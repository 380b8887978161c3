#include "engine/simulation/events/event_engine.h"

#include "engine/base/checks.h"
#include "engine/behaviour/events/event_states.h"
#include "engine/behaviour/tallies/tally_object_states.h"
#include "engine/model/document.h"
#include "engine/simulation/tasks/live_situation.h"

#include <algorithm>
#include <iterator>

namespace pedflux::engine {

namespace {

/// Calls compile(), and names the object in what it throws.
template <class Compile>
auto compiled(ObjectState const& object, Compile const& compile) try {
    return compile();
} catch (Exception const& exception) {
    refuse(title_of(object) + ": " + exception.GetMessage());
}

RuleMeasure measure_of(TallyMeasure const& measure, Document const& document, SimulationState& run,
                       SymbolTable const& symbols) {
    RuleMeasure made;
    std::vector<bool> counted(run.plan.surfaces.size());
    auto const add_area = [&](GlobalId const& id) {
        auto const area = rule_area_of(document, run.plan, run.places, id);
        for (std::size_t i = 0; i < counted.size(); ++i) counted[i] = counted[i] || area.regions[i];
        if (area.volume != no_volume) made.volumes.push_back(area.volume);
    };
    if (auto const* const transition = std::get_if<TransitionMeasure>(&measure.kind)) {
        made.transition = transition->transition;
        return made;
    }
    if (auto const* const of_servers = std::get_if<ServerMeasure>(&measure.kind)) {
        made.of_servers = *of_servers;
        for (auto const object : measure.objects) {
            auto const server = server_of(run.plan, symbols.objects[object]);
            if (server != no_server) made.servers.push_back(server);
        }
        return made;
    }
    for (auto const object : measure.objects) add_area(symbols.objects[object]);
    for (navigation::RegionIndex region = 0; region < counted.size(); ++region) {
        if (!counted[region]) continue;
        switch (std::get<PlaceMeasure>(measure.kind)) {
            case PlaceMeasure::AREA_POPULATION:
                made.regions.push_back(region);
                break;
            case PlaceMeasure::SURFACE_AREA:
                made.constant += area(run.plan.surfaces[region].walkable) * run.plan.inclines[region].length_factor;
                break;
        }
    }
    return made;
}

std::size_t passageway_of(SimulationState const& run, GlobalId const& id) {
    auto const region = run.places.region_of(id);
    bool const is_connection = region != navigation::none && region >= run.plan.floor_count;
    return is_connection ? region - run.plan.floor_count : no_passageway;
}

}  // namespace

std::unique_ptr<EventEngine> event_engine_of(SimulationState& run, Document const& document, SymbolTable& symbols) {
    EventProgram plan;
    TriggerCompiler triggers(document, symbols);
    for (auto const* const event : document.objects<EventState>()) {
        if (!event->enabled) continue;
        plan.sources.push_back(compiled(*event, [&] { return triggers.add_event(event->id); }));
    }
    for (auto const* const broadcast : document.objects<BroadcastState>()) {
        if (broadcast->enabled) compiled(*broadcast, [&] { return triggers.add_event(broadcast->id); });
    }
    auto gates = gate_rules_of(document, run.plan, run.rules, triggers);
    auto servers = server_rules_of(document, run.plan, triggers);
    for (auto const* const change : document.objects<TallyChangeState>()) {
        if (!change->enabled) continue;
        plan.change_ranges.push_back(compiled(*change, [&] { return triggers.add(*change->range); }));
    }
    plan.triggers = triggers.take();
    plan.tallies = compile_tallies(document, symbols);
    for (auto const& measure : plan.tallies.measures) {
        plan.measures.push_back(measure_of(measure, document, run, symbols));
    }
    for (auto const& object : symbols.objects) {
        plan.passageways.push_back(passageway_of(run, object));
        plan.servers.push_back(server_of(run.plan, object));
    }
    Crossings crossings(document, run.plan, run.places, symbols.transitions);
    return std::make_unique<EventEngine>(run, std::move(plan), std::move(crossings), std::move(gates),
                                         std::move(servers));
}

EventEngine::EventEngine(SimulationState& run, EventProgram plan, Crossings made_crossings, AccessRules made_gates,
                         AccessRules made_servers)
    : run_(run),
      plan_(std::move(plan)),
      triggers_(plan_.triggers),
      tallies(plan_.tallies, run.seed),
      crossings(std::move(made_crossings)),
      gates(std::move(made_gates)),
      servers(std::move(made_servers)) {
    for (auto const& event : plan_.triggers.events) events_.emplace(event.id, static_cast<EventIndex>(events_.size()));
    for (auto const event : plan_.sources) sources_.push_back({event});
    for (auto& waiting : run.requests.by_origin) {
        for (auto& info : waiting) sources_[info.source].planned.push_back(std::move(info));
        waiting.clear();
    }
    for (auto& source : sources_) {
        source.brings_people = !source.planned.empty();
        std::ranges::sort(source.planned, {}, &SpawnRequest::key);
    }
}

void EventEngine::step() {
    crossings.end_frame();
    triggers_.step(*this);
    for (std::uint32_t i = 0; i < sources_.size(); ++i) {
        if (moment(plan_.triggers.events[sources_[i].event].start).fires) start(i);
    }
    obey_gate_rules(run_);
    obey_server_rules(run_);
    step_tallies();
}

void EventEngine::step_tallies() {
    std::vector<int> population(run_.plan.surfaces.size());
    if (!plan_.measures.empty()) {
        for (auto const& motion : run_.motions) ++population[motion.region];
    }
    std::vector<double> measures;
    for (auto const& measure : plan_.measures) {
        double value = measure.constant;
        if (measure.transition) value += static_cast<double>(crossings.count(*measure.transition));
        value += count_in(measure, population);
        for (auto const server : measure.servers) value += server_number(run_, server, measure.of_servers);
        measures.push_back(value);
    }
    std::vector<RangeInFrame> ranges;
    for (auto const range : plan_.change_ranges) ranges.push_back({moment(range).holds, moment(range).fires});
    tallies.step(measures, ranges);
}

int EventEngine::count_in(RuleMeasure const& measure, std::vector<int> const& population) const {
    int count = 0;
    for (auto const region : measure.regions) count += population[region];
    if (measure.volumes.empty()) return count;
    for (auto const& motion : run_.motions) {
        auto const point = point_in_space(run_, motion);
        bool const is_counted = std::ranges::binary_search(measure.regions, motion.region);
        bool const is_inside = std::ranges::any_of(
            measure.volumes, [&](std::size_t volume) { return contains(run_.rules.volumes[volume], point); });
        if (is_inside && !is_counted) ++count;
    }
    return count;
}

Whereabouts EventEngine::whereabouts_of(AgentMotion const& motion) const {
    Whereabouts now{motion.region, motion.position};
    if (!crossings.needs_space()) return now;
    auto const point = point_in_space(run_, motion);
    now.height = point.y - above_ground;
    now.volumes = crossings.volumes_around(point);
    return now;
}

void EventEngine::start(std::uint32_t number) {
    auto& source = sources_[number];
    if (!source.brings_people) return;
    auto const& id = plan_.triggers.events[source.event].id;
    auto people = source.starts == 0 ? std::move(source.planned)
                                     : people_of_start(*run_.project, run_.places, run_.seed, id, number, source.starts,
                                                       run_.requests.count);
    if (source.starts > 0) run_.requests.count += people.size();
    ++source.starts;
    source.here_or_coming += people.size();
    run_.waiting_to_enter += people.size();
    for (auto& info : people) {
        info.due += run_.seconds();
        auto& waiting = run_.requests.by_origin[info.origin];
        // Who is due at the same time comes in the order of the starts.
        auto const later =
            std::ranges::upper_bound(waiting.begin() + static_cast<std::ptrdiff_t>(run_.next_request[info.origin]),
                                     waiting.end(), info.due, {}, &SpawnRequest::due);
        waiting.insert(later, std::move(info));
    }
}

bool EventEngine::has_people(EventIndex event) const {
    return std::ranges::any_of(
        sources_, [&](Source const& source) { return source.event == event && source.here_or_coming > 0; });
}

bool EventEngine::is_gate_open(SymbolIndex gate, GateStateDirection way) const {
    auto const passageway = plan_.passageways[gate];
    if (passageway == no_passageway) return false;
    auto const& state = run_.gates[passageway];
    return way == GateStateDirection::BALL_TO_BOX ? state.ball_to_box : state.box_to_ball;
}

bool EventEngine::is_server_open(SymbolIndex server, ServerAccessPoint point) const {
    return is_open(run_, plan_.servers[server], point);
}

std::optional<EventIndex> EventEngine::event_of(GlobalId const& id) const {
    auto const found = events_.find(id);
    if (found == events_.end()) return std::nullopt;
    return found->second;
}

bool EventEngine::is_active(GlobalId const& id) const {
    auto const event = event_of(id);
    return event && triggers_.is_active(*event, *this);
}

std::optional<double> EventEngine::last_start(GlobalId const& id) const {
    auto const event = event_of(id);
    if (!event || triggers_.starts(*event).empty()) return std::nullopt;
    return static_cast<double>(triggers_.starts(*event).back()) / run_.frame_rate;
}

std::size_t EventEngine::start_count(GlobalId const& id) const {
    auto const event = event_of(id);
    return event ? triggers_.starts(*event).size() : 0;
}

bool EventEngine::may_start() const {
    return std::ranges::any_of(sources_, [&](Source const& source) {
        return source.brings_people && triggers_.may_fire_again(plan_.triggers.events[source.event].start);
    });
}

void EventEngine::came_in(AgentMotion const& motion, std::uint32_t doorway) {
    if (crossings.is_any()) crossings.came_in(motion.agent, whereabouts_of(motion), doorway);
}

void EventEngine::went_out(std::uint32_t agent, std::uint32_t doorway) {
    crossings.went_out(agent, doorway);
    auto const source = run_.infos[agent].origin.source;
    if (source != no_source) --sources_[source].here_or_coming;
}

}  // namespace pedflux::engine
