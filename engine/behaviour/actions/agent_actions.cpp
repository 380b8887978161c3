#include "engine/behaviour/actions/agent_action_states.h"
#include "engine/model/document.h"
#include "engine/model/node_handles.h"

#include <pedflux/agent_actions.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_set>

#include <fmt/format.h>

namespace pedflux {

using engine::change;
using engine::get;
using engine::set;
using engine::state_of;

AgentAction::AgentAction(engine::NodePointer node) : node_(std::move(node)) {}
AgentAction::AgentAction(AgentAction const& other) : node_(engine::copy_of(engine::node_of(other))) {}
AgentAction::~AgentAction() = default;

int AgentAction::GetAgentActionTypeId() { return engine::type_of(*this); }
int AgentAction::GetChildActionCount() { return static_cast<int>(engine::children_of(*this).size()); }
std::shared_ptr<AgentAction> AgentAction::GetChildAction(int index) { return engine::child_of(*this, index); }
std::vector<std::shared_ptr<AgentAction>> AgentAction::GetChildActions() { return engine::children_of(*this); }
std::shared_ptr<AgentAction> AgentAction::Clone() { return engine::clone_of(*this); }
std::vector<std::shared_ptr<AgentAction>> AgentAction::GetAllNestedChildActions() {
    return engine::nested_children_of(*this);
}

// What a constructor's arguments do to a new state.
#define MAKE(Class, ...) \
    AgentAction(engine::make_node<AgentAction, engine::Class##State>([&](auto& state) { __VA_ARGS__; }))

namespace {

using engine::Destinations;

Destinations by_chance(std::vector<GlobalId> const& ids) { return {ids, {}, DestinationAssignment::BY_CHANCE}; }
Destinations weighted(std::vector<GlobalId> const& ids, std::vector<double> const& weights) {
    return {ids, weights, DestinationAssignment::WEIGHTED_BY_CHANCE};
}
Destinations by_lowest_cost(std::vector<GlobalId> const& ids) {
    return {ids, {}, DestinationAssignment::BY_LOWEST_COST};
}
Destinations in_sequence(std::vector<GlobalId> const& ids) { return {ids, {}, DestinationAssignment::IN_SEQUENCE}; }

template <class State, class Handle>
Destinations const& destinations_of(Handle const& handle) {
    return state_of<State>(handle).destinations;
}
template <class State, class Handle>
void set_destinations(Handle& handle, Destinations const& destinations) {
    change<State>(handle, [&](State& state) { state.destinations = destinations; });
}

}  // namespace

#define DESTINATIONS(Class, Names)                                                                                 \
    std::vector<GlobalId> Class::Get##Names() { return destinations_of<engine::Class##State>(*this).ids; }         \
    std::vector<double> Class::GetManualWeights() { return destinations_of<engine::Class##State>(*this).weights; } \
    bool Class::UsesManualWeights() {                                                                              \
        return GetDestinationAssignment() == DestinationAssignment::WEIGHTED_BY_CHANCE;                            \
    }                                                                                                              \
    DestinationAssignment Class::GetDestinationAssignment() {                                                      \
        return destinations_of<engine::Class##State>(*this).assignment;                                            \
    }                                                                                                              \
    void Class::SetAssigned##Names(std::vector<GlobalId> const& ids) {                                             \
        set_destinations<engine::Class##State>(*this, by_chance(ids));                                             \
    }                                                                                                              \
    void Class::SetAssigned##Names(std::vector<GlobalId> const& ids, std::vector<double> const& weights) {         \
        set_destinations<engine::Class##State>(*this, weighted(ids, weights));                                     \
    }
#define LOWEST_COST(Class, Names)                                           \
    void Class::SetLowestCost##Names(std::vector<GlobalId> const& ids) {    \
        set_destinations<engine::Class##State>(*this, by_lowest_cost(ids)); \
    }

// Accessors that several kinds have: see engine/model/node_handles.h.

#define PEDFLUX_ACCESS_DURATION(Class, Type, Name, member) \
    PEDFLUX_ACCESS_VALUE(Class, Type, Name, member)        \
    void Class::SetDurationInSeconds(int seconds) { Set##Name(Distribution::CreateConstant(seconds)); }
#define PEDFLUX_ACCESS_COUNT(Class, Type, Name, member) \
    PEDFLUX_ACCESS_VALUE(Class, Type, Name, member)     \
    void Class::SetCount(int count) { Set##Name(Distribution::CreateConstant(count)); }
#define PEDFLUX_ACCESS_TIME(Class, Type, Name, member) \
    PEDFLUX_ACCESS_VALUE(Class, Type, Name, member)    \
    void Class::SetAbsoluteTimeInSeconds(int seconds) { Set##Name(TimeReference::Absolute(seconds)); }
/// How the agent waits when the action is done early; an empty style: it does not wait.
#define PEDFLUX_ACCESS_EARLY_STYLE(Class, Type, Name, member)                                                    \
    Type Class::GetWaitStyle() { return get(*this, &engine::Class##State::member); }                             \
    bool Class::Is##Name() const { return get(*this, &engine::Class##State::member) != nullptr; }                \
    void Class::Set##Name(Type const& style) {                                                                   \
        if (!style) engine::refuse_empty({engine::owner_of(engine::node_of(*this)), "waitIfDoActionDoneEarly"}); \
        set(*this, &engine::Class##State::member, style);                                                        \
    }                                                                                                            \
    void Class::Clear##Name() { set(*this, &engine::Class##State::member, nullptr); }
/// An identifier that is not valid stands for none.
#define PEDFLUX_ACCESS_CUSTOM_NETWORK(Class, Type, Name, member)                                    \
    GlobalId Class::Get##Name() { return get(*this, &engine::Class##State::member); }               \
    void Class::Set##Name(GlobalId const& id) {                                                     \
        set(*this, &engine::Class##State::member, id.IsValid() ? std::optional(id) : std::nullopt); \
    }                                                                                               \
    bool Class::Has##Name() { return state_of<engine::Class##State>(*this).member.has_value(); }

#define ACTION(Class, type, play, ...)                   \
    PEDFLUX_CONSTRUCTOR(AgentAction, Class, __VA_ARGS__) \
    PEDFLUX_ACCESSORS(Class, __VA_ARGS__)
#define ACTION_WITH_CONSTRUCTORS(Class, type, play, ...) PEDFLUX_ACCESSORS(Class, __VA_ARGS__)
#define ACTION_EFFECT_WITH_CONSTRUCTORS ACTION_WITH_CONSTRUCTORS
#define ACTION_TO_DESTINATIONS(Class, type, play, Names, rule)                                                       \
    Class::Class(std::vector<GlobalId> const& ids, bool eraseRouteHistory)                                           \
        : MAKE(Class, state.destinations = by_chance(ids); state.erase_route_history = eraseRouteHistory) {}         \
    Class::Class(std::vector<GlobalId> const& ids, std::vector<double> const& weights, bool eraseRouteHistory)       \
        : MAKE(Class, state.destinations = weighted(ids, weights); state.erase_route_history = eraseRouteHistory) {} \
    DESTINATIONS(Class, Names)                                                                                       \
    PEDFLUX_ACCESS_FLAG(Class, bool, EraseRouteHistory, erase_route_history)
#define ACTION_TO_NEAREST(Class, type, play, Names, rule)  \
    ACTION_TO_DESTINATIONS(Class, type, play, Names, rule) \
    LOWEST_COST(Class, Names)
#define ACTION_OF_ITS_OWN(...)
#include "engine/behaviour/actions/agent_action_table.def"

// What the table does not tell.

#define OF_A_ZONE(Class)                                       \
    Class::Class(GlobalId const& zone) : Class(zone, false) {} \
    Class::Class(GlobalId const& zone, bool eraseRouteHistory) \
        : MAKE(Class, state.zone = zone; state.erase_route_history = eraseRouteHistory) {}
OF_A_ZONE(SeekZoneAction)
OF_A_ZONE(EvacuateZoneAction)

FollowSignAction::FollowSignAction(std::vector<GlobalId> const& routeObjects)
    : MAKE(FollowSignAction, state.destinations = by_chance(routeObjects)) {}
FollowSignAction::FollowSignAction(std::vector<GlobalId> const& routeObjects, std::vector<double> const& weights)
    : MAKE(FollowSignAction, state.destinations = weighted(routeObjects, weights)) {}
DESTINATIONS(FollowSignAction, RouteObjects)
LOWEST_COST(FollowSignAction, RouteObjects)
void FollowSignAction::SetRouteObjectSequence(std::vector<GlobalId> const& routeObjects) {
    set_destinations<engine::FollowSignActionState>(*this, in_sequence(routeObjects));
}

#define WAIT_BY(Class, Type, member)                                                           \
    Class::Class(std::shared_ptr<Type> const& member, std::shared_ptr<WaitStyle> const& style) \
        : MAKE(Class, state.member = member; state.style = style) {}
WAIT_BY(WaitForDurationAction, Distribution, duration)
WAIT_BY(WaitUntilTimeAction, TimeReference, time)
WAIT_BY(WaitWhileTestTrueAction, AgentTest, test)

AddToTallyAction::AddToTallyAction(GlobalId const& tallyObject, double value)
    : AddToTallyAction(std::vector{tallyObject}, value) {}
AddTokensAction::AddTokensAction(GlobalId const& token) : AddTokensAction(std::vector{token}) {}
ClearTokensAction::ClearTokensAction(GlobalId const& token) : ClearTokensAction(std::vector{token}) {}
SetColorAction::SetColorAction() : SetColorAction(Color::WHITE) {}
SetNetworkAction::SetNetworkAction() : SetNetworkAction(GlobalId::INVALID) {}
SetNetworkAction::SetNetworkAction(GlobalId const& network)
    : AgentAction(engine::make_node<AgentAction, engine::SetNetworkActionState>()) {
    SetCustomNetwork(network);
}

ChooseFromSetAction::ChooseFromSetAction(std::vector<std::shared_ptr<AgentAction>> const& actions,
                                         std::vector<double> const& weights)
    : MAKE(ChooseFromSetAction, state.actions = actions; state.weights = weights) {}
void ChooseFromSetAction::AddChildAction(std::shared_ptr<AgentAction> const& action, double weight) {
    change<engine::ChooseFromSetActionState>(*this, [&](auto& state) {
        state.actions.push_back(action);
        state.weights.push_back(weight);
    });
}
void ChooseFromSetAction::ClearChildActions() { SetChildActions({}); }
void ChooseFromSetAction::SetChildAction(int index, std::shared_ptr<AgentAction> const& action) {
    change<engine::ChooseFromSetActionState>(*this, [&](auto& state) {
        state.actions[engine::checked_index(state, "child", index, state.actions.size())] = action;
    });
}
void ChooseFromSetAction::SetChildActions(std::vector<std::shared_ptr<AgentAction>> const& actions) {
    change<engine::ChooseFromSetActionState>(*this, [&](auto& state) {
        state.actions = actions;
        if (state.weights.size() != actions.size()) state.weights.assign(actions.size(), 1);
    });
}
double ChooseFromSetAction::GetWeight(int index) const {
    auto const& state = state_of<engine::ChooseFromSetActionState>(*this);
    return state.weights[engine::checked_index(state, "weight", index, state.weights.size())];
}
void ChooseFromSetAction::SetWeight(int index, double weight) {
    change<engine::ChooseFromSetActionState>(*this, [&](auto& state) {
        state.weights[engine::checked_index(state, "weight", index, state.weights.size())] = weight;
    });
}
std::vector<double> ChooseFromSetAction::GetWeights() { return get(*this, &engine::ChooseFromSetActionState::weights); }
void ChooseFromSetAction::SetWeights(std::vector<double> const& weights) {
    change<engine::ChooseFromSetActionState>(*this, [&](auto& state) { state.weights = weights; });
}

#define DO_UNTIL(Class, Type, member)                                                             \
    Class::Class(std::shared_ptr<AgentAction> const& action, std::shared_ptr<Type> const& member) \
        : MAKE(Class, state.action = action; state.member = member) {}                            \
    Class::Class(std::shared_ptr<AgentAction> const& action, std::shared_ptr<Type> const& member, \
                 std::shared_ptr<WaitStyle> const& style)                                         \
        : Class(action, member) {                                                                 \
        SetWaitIfDoActionDoneEarly(style);                                                        \
    }
DO_UNTIL(DoUntilDurationEndsAction, Distribution, duration)
DO_UNTIL(DoUntilTestFailsAction, AgentTest, test)
DO_UNTIL(DoUntilTimeAction, TimeReference, time)

// Named actions.

std::shared_ptr<AgentAction> AgentActionObject::GetAgentAction() {
    return engine::get_copy(*this, &engine::AgentActionObjectState::action);
}
void AgentActionObject::SetAgentAction(std::shared_ptr<AgentAction> const& action) {
    auto const& state = state_of<engine::AgentActionObjectState>(*this);
    if (action) engine::AgentActionObjectState::require_no_way_back(state, *action);
    engine::set_copy(*this, &engine::AgentActionObjectState::action, action);
}

namespace engine {

namespace {

Subject part(Subject const& subject, std::string_view property) {
    return {subject.owner, (subject.property.empty() ? "" : subject.property + ".") + std::string(property)};
}

}  // namespace

void require_one_weight_each(Subject const& subject, std::string_view name, std::size_t count,
                             std::vector<double> const& weights) {
    if (count != weights.size()) {
        part(subject, name)
            .refuse(fmt::format("as many as their weights, which number {}", weights.size()), std::to_string(count));
    }
}

void require_fitting(Subject const& subject, std::string_view name, Destinations const& destinations,
                     bool by_lowest_cost, bool in_sequence) {
    auto const& [ids, weights, assignment] = destinations;
    bool const weighted = assignment == DestinationAssignment::WEIGHTED_BY_CHANCE;
    bool const known = weighted || assignment == DestinationAssignment::BY_CHANCE ||
                       (assignment == DestinationAssignment::BY_LOWEST_COST && by_lowest_cost) ||
                       (assignment == DestinationAssignment::IN_SEQUENCE && in_sequence);
    if (!known) {
        part(subject, "destinationAssignment")
            .refuse("one that this kind of action has", std::string(name_of_value(assignment)));
    }
    if (!weighted) {
        if (weights.empty()) return;
        part(subject, "weights").refuse("empty unless they are used", fmt::format("{} numbers", weights.size()));
    }
    require_one_weight_each(subject, name, ids.size(), weights);
    if (!weights.empty() && std::ranges::none_of(weights, [](double weight) { return weight > 0; })) {
        part(subject, "weights").refuse("above 0 for at least one", "all 0");
    }
}

void AgentActionObjectState::require_no_way_back(AgentActionObjectState const& self, AgentAction const& action) {
    if (self.document == nullptr) return;
    std::unordered_set<GlobalId, IdentifierHash, IdentifierEqual> reached;
    std::vector<AgentAction const*> open{&action};
    while (!open.empty()) {
        NodeState const& node = node_of(*open.back());
        open.pop_back();
        std::vector<Reference> references;
        collect_references(&self, fields_in(node), references);
        for (auto const& reference : references) {
            if (reference.to.InternalEquals(self.id)) {
                Subject{owner_of(self), "agentAction"}.refuse("an action that does not lead back to the object itself",
                                                              "one that does");
            }
            auto const* const named = self.document->find<AgentActionObjectState>(reference.to);
            if (named != nullptr && reached.insert(reference.to).second) open.push_back(named->action.get());
        }
    }
}

template <>
std::span<KindOfNode<AgentAction> const* const> kinds_of<AgentAction>() {
    static KindOfNode<AgentAction> const* const kinds[] = {
#define ACTION(Class, ...) &node_kind<AgentAction, Class##State>(),
#include "engine/behaviour/actions/agent_action_table.def"
    };
    return kinds;
}

}  // namespace engine
}  // namespace pedflux
