#include "engine/simulation/tasks/behaviour_program.h"

#include "engine/base/checks.h"
#include "engine/behaviour/access/access_rule_states.h"
#include "engine/behaviour/events/event_states.h"
#include "engine/model/document.h"
#include "engine/scene/profile_state.h"
#include "engine/scene/scene_states.h"
#include "engine/scene/server_states.h"
#include "engine/simulation/world/object_area.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <type_traits>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

/// Throws Exception for an event whose start and activity simulations do not know.
void require_start(Document const& document, GlobalId const& event) {
    auto const* const object = document.find(event);
    if (object == nullptr) {
        refuse(fmt::format("the project has no event with the identifier '{}'", GlobalId(event).GetString()));
    }
    if (object->kind->type == ObjectType::DISPATCH) {
        refuse(fmt::format("{} has no start that other rules could wait for; it acts all the time", title_of(*object)));
    }
}

class Compiler {
  public:
    Compiler(Document const& document, World& world)
        : document_(document), world_(world), plan_(world.plan), places_(world.places) {
        program_.wait_spaces = wait_spaces_of(document, plan_);
    }

    BehaviourProgram take() {
        for (auto const* const event : document_.objects<EventState>()) {
            if (event->enabled) add(*event);
        }
        for (auto const* const profile : document_.objects<ProfileState>()) {
            if (int const action = compiled(*profile, profile->initial_action); action != NONE) {
                program_.profiles[profile->id] = action;
            }
        }
        for (auto const& surface : plan_.surfaces) program_.surfaces.push_back(actions_of(surface));
        for (auto const& doorway : plan_.doorways) {
            auto const& portal = *document_.find<PortalState>(doorway.id);
            program_.doorways.push_back(
                {compiled(portal, portal.enter_action), compiled(portal, portal.waypoint_action)});
        }
        for (auto const* const zone : document_.objects<ZoneState>()) add(*zone);
        for (auto const* const broadcast : document_.objects<BroadcastState>()) {
            if (broadcast->enabled) add(*broadcast);
        }
        for (auto const* const dispatch : document_.objects<DispatchState>()) {
            if (dispatch->enabled) add(*dispatch);
        }
        for (auto const* const access : document_.objects<GateAccessState>()) {
            if (!access->enabled || !access->test) continue;
            on_behalf(*access, [&] { program_.gate_tests[access->id] = compiled_test(*access->test); });
        }
        for (auto const& server : plan_.servers) add(*document_.find<ServerState>(server.id));
        for (auto const& id : program_.symbols.objects) program_.symbol_targets.push_back(target_of(id));
        return std::move(program_);
    }

  private:
    /// Does something for an object, which is named when it is refused.
    template <class Action>
    static void on_behalf(ObjectState const& object, Action const& action) try {
        action();
    } catch (Exception const& exception) {
        refuse(fmt::format("{}: {}", title_of(object), exception.GetMessage()));
    }

    int compiled(ObjectState const& owner, std::shared_ptr<AgentAction> const& action) {
        if (!action) return NONE;
        int root = NONE;
        on_behalf(owner, [&] {
            auto& actions = program_.actions.program;
            auto const first = actions.nodes.size();
            auto const first_time = actions.times.size();
            root = compile(actions, document_, *action);
            for (auto time = first_time; time < actions.times.size(); ++time) require_known(actions.times[time]);
            place_actions(program_.actions, places_, program_.wait_spaces, first);
            while (program_.tests.size() < actions.tests.size()) {
                program_.tests.push_back(compiled_test(*actions.tests[program_.tests.size()]));
            }
        });
        return root;
    }

    TestProgram compiled_test(AgentTest const& test) {
        auto const first_time = program_.symbols.times.size();
        auto compiled = compile(test, document_, program_.symbols);
        for (auto const event : compiled.events) require_start(document_, program_.symbols.objects[event]);
        for (auto time = first_time; time < program_.symbols.times.size(); ++time) {
            require_known(program_.symbols.times[time]);
        }
        return compiled;
    }

    void require_known(TimeInFrame const& time) const {
        if (time.frame == TimeReferenceFrame::AFTER_EVENT_START) {
            require_start(document_, time.event.value_or(GlobalId()));
        }
    }

    void add(EventState const& event) {
        EventInstructions instructions;
        instructions.initial_action = compiled(event, event.initial_action);
        if (event.color_scheme == EventColorSchemeType::RULES) {
            for (auto const& rule : event.color_rules) {
                on_behalf(event, [&] { instructions.colors.push_back({compiled_test(*rule.test), rule.color}); });
            }
        }
        if (auto const* const evacuation = dynamic_cast<EvacuationState const*>(&event)) {
            instructions.is_evacuation = true;
            on_behalf(event, [&] {
                instructions.wait_style = compiled_style(*evacuation->pre_movement_wait_style);
                add_clearance(*evacuation, instructions.wait_style);
            });
        }
        if (auto const* const circulate = dynamic_cast<CirculateState const*>(&event)) {
            on_behalf(event, [&] { instructions.circulation = circulation_of(*circulate); });
        }
        program_.events[event.id] = std::move(instructions);
    }

    int compiled_style(WaitStyle& style) {
        auto& styles = program_.actions.program.styles;
        styles.push_back(style.Clone());
        compile_waits(program_.actions, program_.wait_spaces);
        return static_cast<int>(styles.size()) - 1;
    }

    void add_clearance(EvacuationState const& evacuation, int wait_style) {
        if (evacuation.zones.empty()) return;
        Clearance clearance{evacuation.id, {}, {}, spec_of(*evacuation.pre_movement_wait), wait_style};
        for (auto const& zone : evacuation.zones) clearance.zones.push_back(places_.of(zone));
        for (auto const& exit : evacuation.population.destinations) clearance.exits.push_back(places_.of(exit));
        if (clearance.exits.empty())
            refuse("zones are cleared to the destinations of the population, and there are none");
        program_.clearances.push_back(std::move(clearance));
    }

    std::uint32_t circulation_of(CirculateState const& circulate) {
        CirculationProgram circulation;
        for (auto const& portal : circulate.portals) circulation.portals.push_back(places_.of(portal));
        if (circulation.portals.empty()) refuse("people who circulate need at least one portal to go to");
        std::visit(
            [&]<class Kind>(Kind const& kind) {
                if constexpr (std::is_base_of_v<ForCount, Kind>) circulation.count = spec_of(*kind.count);
                if constexpr (std::is_base_of_v<ForDuration, Kind>) circulation.duration = spec_of(*kind.duration);
                if constexpr (std::is_base_of_v<UntilTime, Kind>) {
                    circulation.time = TimeReferenceAccess::time(*kind.time);
                    require_known(*circulation.time);
                }
                if constexpr (requires { kind.until_both; }) circulation.until_both = kind.until_both;
            },
            circulate.circulation);
        program_.circulations.push_back(std::move(circulation));
        return static_cast<std::uint32_t>(program_.circulations.size() - 1);
    }

    void add(BroadcastState const& broadcast) {
        BroadcastProgram made;
        made.event = broadcast.id;
        made.action = compiled(broadcast, broadcast.action);
        on_behalf(broadcast, [&] {
            if (broadcast.test) made.test = compiled_test(*broadcast.test);
            if (broadcast.zone) {
                made.regions = object_area_of(document_, world_, *broadcast.zone).surfaces;
            }
        });
        program_.broadcasts.push_back(std::move(made));
    }

    void add(DispatchState const& dispatch) {
        DispatchProgram made;
        auto const add_stations = [&](std::vector<GlobalId> const& stations, std::vector<PlaceIndex>& places) {
            for (auto const& id : stations) {
                auto const* const object = document_.find(id);
                if (object == nullptr || !object->enabled) continue;
                bool const is_server = object->kind->type == ObjectType::SERVER;
                places.push_back(is_server ? places_.server(id) : places_.of(id));
            }
        };
        on_behalf(dispatch, [&] {
            add_stations(dispatch.sources, made.sources);
            add_stations(dispatch.sinks, made.sinks);
        });
        made.process = compiled(dispatch, std::make_shared<SeekProcessStartAction>(std::vector{dispatch.id}, false));
        program_.dispatches.push_back(std::move(made));
    }

    SurfaceActions actions_of(Surface const& surface) {
        auto const* const object = document_.find(surface.id);
        SurfaceActions actions;
        if (auto const* const floor = dynamic_cast<FloorState const*>(object)) {
            actions.ball = {compiled(*floor, floor->enter_action), compiled(*floor, floor->exit_action)};
        }
        if (auto const* const connection = dynamic_cast<ConnectionState const*>(object)) {
            actions.ball = {compiled(*connection, connection->ball_enter_action),
                            compiled(*connection, connection->ball_exit_action)};
            actions.box = {compiled(*connection, connection->box_enter_action),
                           compiled(*connection, connection->box_exit_action)};
        }
        for (auto const& end : {actions.ball, actions.box}) {
            if (end.enter != NONE || end.exit != NONE) program_.any_at_surfaces = true;
        }
        return actions;
    }

    void add(ZoneState const& zone) {
        if (!zone.enabled || (!zone.enter_action && !zone.exit_action)) return;
        ZoneActions actions;
        actions.has.resize(plan_.surfaces.size());
        for (auto const region : places_[places_.of(zone.id)].regions) actions.has[region] = true;
        actions.actions = {compiled(zone, zone.enter_action), compiled(zone, zone.exit_action)};
        program_.zones.push_back(std::move(actions));
        program_.any_at_surfaces = true;
    }

    void add(ServerState const& server) {
        ServerProgram made;
        on_behalf(server, [&] {
            if (server.access_required) made.required = compiled_test(*server.access_required);
            if (server.access_preferred) made.preferred = compiled_test(*server.access_preferred);
            for (auto const& rule : server.contact_time_rules) {
                made.contact_times.push_back({compiled_test(*rule.test), spec_of(*rule.duration)});
            }
        });
        if (server.contact_time) made.contact_time = spec_of(*server.contact_time);
        made.processed_action = compiled(server, server.processed_action);
        made.release_action = compiled(server, server.release_action);
        program_.servers.push_back(std::move(made));
    }

    SymbolTarget target_of(GlobalId const& id) {
        SymbolTarget target;
        target.server = server_of(plan_, id);
        auto const* const object = document_.find(id);
        bool const is_place = object != nullptr && object->enabled && Population::is_place(*object);
        if (target.server == no_server && is_place) {
            target.place = places_.of(id);
            auto const region = places_.region_of(id);
            bool const is_connection = region != navigation::none && region >= plan_.floor_count;
            if (is_connection) target.passageway = region - plan_.floor_count;
        }
        target.volume = volume_number(world_.volumes, id);
        return target;
    }

    Document const& document_;
    World& world_;
    FloorPlan const& plan_;
    Places& places_;
    BehaviourProgram program_;
};

}  // namespace

BehaviourProgram behaviour_program_of(Document const& document, World& world) {
    return Compiler(document, world).take();
}

std::vector<PlaceIndex> goals_of(BehaviourProgram const& program, Places const& places) {
    std::vector<PlaceIndex> goals;
    for (auto const place : program.actions.places) {
        if (place != no_place && !places[place].is_dispatch()) goals.push_back(place);
    }
    for (auto const& clearance : program.clearances) {
        goals.insert(goals.end(), clearance.exits.begin(), clearance.exits.end());
    }
    for (auto const& dispatch : program.dispatches) {
        goals.insert(goals.end(), dispatch.sinks.begin(), dispatch.sinks.end());
    }
    return goals;
}

}  // namespace pedflux::engine
