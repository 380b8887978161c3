#include "engine/simulation/tasks/behaviour_program.h"

#include "engine/base/checks.h"
#include "engine/behaviour/access/access_rule_states.h"
#include "engine/behaviour/events/event_states.h"
#include "engine/model/document.h"
#include "engine/scene/profile_state.h"
#include "engine/scene/scene_states.h"
#include "engine/scene/server_states.h"
#include "engine/simulation/events/transition_counter.h"
#include "engine/simulation/tasks/task_orders.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <type_traits>

namespace pedflux::engine {

namespace {

/// Throws Exception for an event whose start and activity simulations do not know.
void require_start(Document const& document, GlobalId const& event) {
    auto const* const object = document.find(event);
    if (object == nullptr) refuse("the project has no event with the identifier '" + GlobalId(event).GetString() + "'");
    if (object->kind->type == ObjectType::DISPATCH) {
        refuse(title_of(*object) + " has no start that other rules could wait for; it acts all the time");
    }
}

class Compiler {
  public:
    Compiler(Document const& document, FloorPlan const& plan, Places& places)
        : document_(document), plan_(plan), places_(places) {
        rules_.waits.spaces = wait_spaces_of(document, plan);
    }

    BehaviourProgram take() {
        for (auto const* const event : document_.objects<EventState>()) {
            if (event->enabled) add(*event);
        }
        for (auto const* const profile : document_.objects<ProfileState>()) {
            if (int const action = compiled(*profile, profile->initial_action); action != NONE) {
                rules_.profiles[profile->id] = action;
            }
        }
        for (auto const& surface : plan_.surfaces) rules_.surfaces.push_back(actions_of(surface));
        for (auto const& doorway : plan_.doorways) {
            auto const& portal = *document_.find<PortalState>(doorway.id);
            rules_.doorways.push_back(
                {compiled(portal, portal.enter_action), compiled(portal, portal.waypoint_action)});
        }
        for (auto const* const zone : document_.objects<ZoneState>()) add(*zone);
        for (auto const* const broadcast : document_.objects<BroadcastState>()) {
            if (broadcast->enabled) add(*broadcast);
        }
        for (auto const* const dispatch : document_.objects<DispatchState>()) {
            if (dispatch->enabled) add(*dispatch);
        }
        rules_.volumes = volumes_of(document_);
        for (auto const* const access : document_.objects<GateAccessState>()) {
            if (!access->enabled || !access->test) continue;
            on_behalf(*access, [&] { rules_.gate_tests[access->id] = compiled_test(*access->test); });
        }
        for (auto const& server : plan_.servers) add(*document_.find<ServerState>(server.id));
        mention_places();
        begin_orders(rules_);
        return std::move(rules_);
    }

  private:
    /// Does something for an object, which is named when it is refused.
    template <class Action>
    static void on_behalf(ObjectState const& object, Action const& action) try {
        action();
    } catch (Exception const& exception) {
        refuse(title_of(object) + ": " + exception.GetMessage());
    }

    int compiled(ObjectState const& owner, std::shared_ptr<AgentAction> const& action) {
        if (!action) return NONE;
        int root = NONE;
        on_behalf(owner, [&] {
            auto const first = rules_.plan.nodes.size();
            auto const first_time = rules_.plan.times.size();
            root = compile(rules_.plan, document_, *action);
            for (auto time = first_time; time < rules_.plan.times.size(); ++time) {
                require_known(rules_.plan.times[time]);
            }
            resolve_places(rules_, places_, first);
            resolve_waits(rules_);
            while (rules_.tests.size() < rules_.plan.tests.size()) {
                rules_.tests.push_back(compiled_test(*rules_.plan.tests[rules_.tests.size()]));
            }
        });
        return root;
    }

    TestProgram compiled_test(AgentTest const& test) {
        auto const first_time = rules_.symbols.times.size();
        auto compiled = compile(test, document_, rules_.symbols);
        for (auto const event : compiled.events) require_start(document_, rules_.symbols.objects[event]);
        for (auto time = first_time; time < rules_.symbols.times.size(); ++time) {
            require_known(rules_.symbols.times[time]);
        }
        return compiled;
    }

    void require_known(TimeInFrame const& time) const {
        if (time.frame == TimeReferenceFrame::AFTER_EVENT_START) {
            require_start(document_, time.event.value_or(GlobalId()));
        }
    }

    void add(EventState const& event) {
        EventRules rules;
        rules.initial_action = compiled(event, event.initial_action);
        if (event.color_scheme == EventColorSchemeType::RULES) {
            for (auto const& rule : event.color_rules) {
                on_behalf(event, [&] { rules.colors.push_back({compiled_test(*rule.test), rule.color}); });
            }
        }
        if (auto const* const evacuation = dynamic_cast<EvacuationState const*>(&event)) {
            rules.is_evacuation = true;
            on_behalf(event, [&] {
                rules.wait_style = compiled_style(*evacuation->pre_movement_wait_style);
                add_clearance(*evacuation, rules.wait_style);
            });
        }
        if (auto const* const circulate = dynamic_cast<CirculateState const*>(&event)) {
            on_behalf(event, [&] { rules.circulation = circulation_of(*circulate); });
        }
        rules_.events[event.id] = std::move(rules);
    }

    int compiled_style(WaitStyle& style) {
        rules_.plan.styles.push_back(style.Clone());
        resolve_waits(rules_);
        return static_cast<int>(rules_.plan.styles.size()) - 1;
    }

    void add_clearance(EvacuationState const& evacuation, int wait_style) {
        if (evacuation.zones.empty()) return;
        Clearance clearance{evacuation.id, {}, {}, {}};
        clearance.wait = spec_of(*evacuation.pre_movement_wait);
        clearance.wait_style = wait_style;
        for (auto const& zone : evacuation.zones) clearance.zones.push_back(places_.of(zone));
        for (auto const& exit : evacuation.population.destinations) {
            auto const place = places_.of(exit);
            clearance.exits.push_back(place);
            places_[place].destination = 0;  // a route is wanted
        }
        if (clearance.exits.empty())
            refuse("zones are cleared to the destinations of the population, and there are none");
        rules_.clearances.push_back(std::move(clearance));
    }

    std::uint32_t circulation_of(CirculateState const& circulate) {
        CirculationRules rules;
        for (auto const& portal : circulate.portals) rules.portals.push_back(places_.of(portal));
        if (rules.portals.empty()) refuse("people who circulate need at least one portal to go to");
        std::visit(
            [&]<class Kind>(Kind const& kind) {
                if constexpr (std::is_base_of_v<ForCount, Kind>) rules.count = spec_of(*kind.count);
                if constexpr (std::is_base_of_v<ForDuration, Kind>) rules.duration = spec_of(*kind.duration);
                if constexpr (std::is_base_of_v<UntilTime, Kind>) {
                    rules.time = TimeReferenceAccess::time(*kind.time);
                    require_known(*rules.time);
                }
                if constexpr (requires { kind.until_both; }) rules.until_both = kind.until_both;
            },
            circulate.circulation);
        rules_.circulations.push_back(std::move(rules));
        return static_cast<std::uint32_t>(rules_.circulations.size() - 1);
    }

    void add(BroadcastState const& broadcast) {
        BroadcastRules rules;
        rules.event = broadcast.id;
        rules.action = compiled(broadcast, broadcast.action);
        on_behalf(broadcast, [&] {
            if (broadcast.test) rules.test = compiled_test(*broadcast.test);
            if (broadcast.zone) rules.regions = rule_area_of(document_, plan_, places_, *broadcast.zone).regions;
        });
        rules_.broadcasts.push_back(std::move(rules));
    }

    void add(DispatchState const& dispatch) {
        DispatchRules rules;
        auto const add_stations = [&](std::vector<GlobalId> const& stations, std::vector<PlaceIndex>& places) {
            for (auto const& id : stations) {
                auto const* const object = document_.find(id);
                if (object == nullptr || !object->enabled) continue;
                bool const is_server = object->kind->type == ObjectType::SERVER;
                places.push_back(is_server ? places_.server(id) : places_.of(id));
            }
        };
        on_behalf(dispatch, [&] {
            add_stations(dispatch.sources, rules.sources);
            add_stations(dispatch.sinks, rules.sinks);
        });
        for (auto const sink : rules.sinks) places_[sink].destination = 0;  // a route is wanted
        rules.process = compiled(dispatch, std::make_shared<SeekProcessStartAction>(std::vector{dispatch.id}, false));
        rules_.dispatches.push_back(std::move(rules));
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
            if (end.enter != NONE || end.exit != NONE) rules_.any_at_surfaces = true;
        }
        return actions;
    }

    void add(ZoneState const& zone) {
        if (!zone.enabled || (!zone.enter_action && !zone.exit_action)) return;
        ZoneActions actions;
        actions.has.resize(plan_.surfaces.size());
        for (auto const region : places_[places_.of(zone.id)].regions) actions.has[region] = true;
        actions.actions = {compiled(zone, zone.enter_action), compiled(zone, zone.exit_action)};
        rules_.zones.push_back(std::move(actions));
        rules_.any_at_surfaces = true;
    }

    void add(ServerState const& server) {
        ServerRules rules;
        on_behalf(server, [&] {
            if (server.access_required) rules.required = compiled_test(*server.access_required);
            if (server.access_preferred) rules.preferred = compiled_test(*server.access_preferred);
            for (auto const& rule : server.contact_time_rules) {
                rules.contact_rules.emplace_back(compiled_test(*rule.test), spec_of(*rule.duration));
            }
        });
        if (server.contact_time) rules.contact_time = spec_of(*server.contact_time);
        rules.processed_action = compiled(server, server.processed_action);
        rules.release_action = compiled(server, server.release_action);
        rules_.servers.push_back(std::move(rules));
    }

    void mention_places() {
        for (auto const& id : rules_.symbols.objects) {
            SymbolTarget symbol_targets;
            symbol_targets.server = server_of(plan_, id);
            auto const* const object = document_.find(id);
            if (symbol_targets.server == no_server && object != nullptr && object->enabled &&
                Population::is_place(*object)) {
                symbol_targets.place = places_.of(id);
                auto const region = places_.region_of(id);
                if (region != navigation::none && region >= plan_.floor_count) {
                    symbol_targets.passageway = region - plan_.floor_count;
                }
            }
            symbol_targets.volume = volume_number(rules_.volumes, id);
            rules_.symbol_targets.push_back(symbol_targets);
        }
    }

    Document const& document_;
    FloorPlan const& plan_;
    Places& places_;
    BehaviourProgram rules_;
};

}  // namespace

void resolve_waits(BehaviourProgram& rules) {
    auto const& styles = rules.plan.styles;
    while (rules.waits.styles.size() < styles.size()) {
        rules.waits.styles.push_back(wait_rule_of(*styles[rules.waits.styles.size()], rules.waits.spaces));
    }
}

PlaceIndex place_of(Places& places, AgentActionTypeId action, GlobalId const& object) {
    if (action == AgentActionTypeId::EVACUATE_ZONE) return places.outside_of(object);
    if (action == AgentActionTypeId::SEEK_PROCESS_START) return places.process_start(object);
    return places.of(object);
}

void resolve_places(BehaviourProgram& rules, Places& places, std::size_t first_node) {
    rules.places.resize(rules.plan.objects.size(), no_place);
    for (auto i = first_node; i < rules.plan.nodes.size(); ++i) {
        auto const& node = rules.plan.nodes[i];
        if (!is_seeking(node.type)) continue;
        for (auto object = node.objects.first; object < node.objects.first + node.objects.count; ++object) {
            rules.places[object] = place_of(places, node.type, rules.plan.objects[object]);
        }
    }
}

BehaviourProgram behaviour_program_of(Document const& document, FloorPlan const& plan, Places& places) {
    return Compiler(document, plan, places).take();
}

}  // namespace pedflux::engine
