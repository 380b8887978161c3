#include "engine/simulation/events/event_engine.h"

#include "engine/base/checks.h"
#include "engine/behaviour/events/event_states.h"
#include "engine/behaviour/tallies/tally_object_states.h"
#include "engine/model/document.h"
#include "engine/simulation/events/gate_access.h"
#include "engine/simulation/events/server_access.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

/// Calls compile(), and names the object in what it throws.
template <class Compile>
auto compiled(ObjectState const& object, Compile const& compile) try {
    return compile();
} catch (Exception const& exception) {
    refuse(fmt::format("{}: {}", title_of(object), exception.GetMessage()));
}

std::size_t passageway_of(World const& world, GlobalId const& id) {
    auto const region = world.places.region_of(id);
    bool const is_connection = region != navigation::none && region >= world.plan.floor_count;
    return is_connection ? region - world.plan.floor_count : no_passageway;
}

}  // namespace

std::unique_ptr<EventEngine> event_engine_of(Document const& document, World& world, BehaviourProgram const& program,
                                             SymbolTable& symbols) {
    EventEngineProgram events;
    TriggerCompiler triggers(document, symbols);
    for (auto const* const event : document.objects<EventState>()) {
        if (!event->enabled) continue;
        events.sources.push_back(compiled(*event, [&] { return triggers.add_event(event->id); }));
    }
    for (auto const* const broadcast : document.objects<BroadcastState>()) {
        if (broadcast->enabled) compiled(*broadcast, [&] { return triggers.add_event(broadcast->id); });
    }
    auto gate_rules = gate_rules_of(document, world.plan, program, triggers);
    auto server_rules = server_rules_of(document, world.plan, triggers);
    for (auto const* const change : document.objects<TallyChangeState>()) {
        if (!change->enabled) continue;
        events.change_ranges.push_back(compiled(*change, [&] { return triggers.add(*change->range); }));
    }
    events.triggers = triggers.take();
    for (auto const& event : events.triggers.events) {
        events.events.emplace(event.id, static_cast<EventIndex>(events.events.size()));
    }
    events.tallies = compile_tallies(document, symbols);
    for (auto const& measure : events.tallies.measures) {
        events.measures.push_back(compiled_measure_of(measure, document, world, symbols));
    }
    for (auto const& object : symbols.objects) {
        events.passageways.push_back(passageway_of(world, object));
        events.servers.push_back(server_of(world.plan, object));
    }
    TransitionCounter transitions(document, world, symbols.transitions);
    return std::make_unique<EventEngine>(std::move(events), std::move(transitions),
                                         access_control_of(std::move(gate_rules), world.plan.passageways.size()),
                                         access_control_of(std::move(server_rules), world.plan.servers.size()),
                                         world.seed);
}

EventEngine::EventEngine(EventEngineProgram compiled, TransitionCounter counter, AccessControl gate_access,
                         AccessControl server_access, std::uint64_t seed)
    : program(std::move(compiled)),
      triggers(program.triggers),
      tallies(program.tallies, seed),
      transitions(std::move(counter)),
      gates(std::move(gate_access)),
      servers(std::move(server_access)) {}

bool EventFacts::has_people(EventIndex event) const {
    for (std::size_t i = 0; i < engine_.program.sources.size(); ++i) {
        if (engine_.program.sources[i] == event && spawning_.sources[i].here_or_coming > 0) return true;
    }
    return false;
}

bool EventFacts::is_gate_open(SymbolIndex gate, GateStateDirection way) const {
    auto const passageway = engine_.program.passageways[gate];
    if (passageway == no_passageway) return false;
    auto const& state = gates_.states[passageway];
    return way == GateStateDirection::BALL_TO_BOX ? state.ball_to_box : state.box_to_ball;
}

bool EventFacts::is_server_open(SymbolIndex server, ServerAccessPoint point) const {
    return is_open(servers_, engine_.program.servers[server], point);
}

std::optional<EventIndex> EventFacts::event_of(GlobalId const& id) const {
    auto const found = engine_.program.events.find(id);
    if (found == engine_.program.events.end()) return std::nullopt;
    return found->second;
}

bool EventFacts::is_active(GlobalId const& id) const {
    auto const event = event_of(id);
    return event && engine_.triggers.is_active(*event, *this);
}

std::optional<double> EventFacts::last_start(GlobalId const& id) const {
    auto const event = event_of(id);
    if (!event || engine_.triggers.starts(*event).empty()) return std::nullopt;
    return static_cast<double>(engine_.triggers.starts(*event).back()) / engine_.program.tallies.frame_rate;
}

std::size_t EventFacts::start_count(GlobalId const& id) const {
    auto const event = event_of(id);
    return event ? engine_.triggers.starts(*event).size() : 0;
}

void assign_requests_to_events(Spawning& spawning, std::size_t source_count) {
    spawning.sources.resize(source_count);
    for (auto& waiting : spawning.requests.by_origin) {
        for (auto& request : waiting) spawning.sources[request.source].planned.push_back(std::move(request));
        waiting.clear();
    }
    for (auto& source : spawning.sources) {
        source.brings_agents = !source.planned.empty();
        std::ranges::sort(source.planned, {}, &SpawnRequest::key);
    }
}

namespace {

void announce(Spawning& spawning, World& world, Clock const& clock, std::uint32_t number) {
    auto& source = spawning.sources[number];
    if (!source.brings_agents) return;
    auto requests = source.starts == 0 ? std::move(source.planned)
                                       : people_of_start(spawning.program, world.places, world.seed, number,
                                                         source.starts, spawning.requests.count);
    if (source.starts > 0) spawning.requests.count += requests.size();
    ++source.starts;
    source.here_or_coming += requests.size();
    spawning.waiting_to_enter += requests.size();
    for (auto& request : requests) {
        request.due += clock.seconds();
        auto& waiting = spawning.requests.by_origin[request.origin];
        auto const next = waiting.begin() + static_cast<std::ptrdiff_t>(spawning.next_request[request.origin]);
        // Who is due at the same time comes in the order of the starts.
        auto const later = std::ranges::upper_bound(next, waiting.end(), request.due, {}, &SpawnRequest::due);
        waiting.insert(later, std::move(request));
    }
}

}  // namespace

void start_events(EventEngine const& engine, Spawning& spawning, World& world, Clock const& clock) {
    auto const& program = engine.program;
    for (std::uint32_t source = 0; source < program.sources.size(); ++source) {
        auto const start = program.triggers.events[program.sources[source]].start;
        if (engine.triggers[start].fires) announce(spawning, world, clock, source);
    }
}

bool may_start(EventEngine const& engine, Spawning const& spawning) {
    auto const& program = engine.program;
    for (std::size_t source = 0; source < program.sources.size(); ++source) {
        auto const start = program.triggers.events[program.sources[source]].start;
        if (spawning.sources[source].brings_agents && engine.triggers.may_fire_again(start)) return true;
    }
    return false;
}

void step_tallies(EventEngine& engine, World const& world, Agents const& agents, ServerQueues const& servers) {
    auto const measures = measured(engine.program.measures, world, agents, servers, engine.transitions);
    std::vector<RangeInFrame> ranges;
    for (auto const range : engine.program.change_ranges) {
        ranges.push_back({engine.triggers[range].holds, engine.triggers[range].fires});
    }
    engine.tallies.step(measures, ranges);
}

}  // namespace pedflux::engine
