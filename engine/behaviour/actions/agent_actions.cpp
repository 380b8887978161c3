#include "engine/behaviour/actions/agent_action_states.h"
#include "engine/model/accessors.h"
#include "engine/model/document.h"
#include "engine/model/node_kind.h"

#include <pedflux/agent_actions.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_set>

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

// The words of the lists below. A maker is what a constructor's arguments do to a new state.
#define MAKE(Class, ...) \
    AgentAction(engine::make_node<AgentAction, engine::Class##State>([&](auto& state) { __VA_ARGS__; }))

#define WITHOUT_PROPERTIES(Class) \
    Class::Class() : AgentAction(engine::make_node<AgentAction, engine::Class##State>()) {}

WITHOUT_PROPERTIES(DoNothingAction)
WITHOUT_PROPERTIES(ExitSimulationAction)
WITHOUT_PROPERTIES(ClearAvatarAction)
WITHOUT_PROPERTIES(ClearColorAction)
WITHOUT_PROPERTIES(ClearHistoryAction)
WITHOUT_PROPERTIES(ClearNetworkAction)
WITHOUT_PROPERTIES(ClearTasksAction)

NamedAction::NamedAction(GlobalId const& actionObject) : MAKE(NamedAction, state.action_object = actionObject) {}
PROPERTY(NamedAction, GlobalId, AgentActionObject, action_object)

// Going somewhere.

#define ERASE_ROUTE_HISTORY(Class) FLAG_PROPERTY(Class, IsEraseRouteHistory, SetEraseRouteHistory, erase_route_history)

#define SEEK(Class)                                                                                      \
    Class::Class(bool eraseRouteHistory) : MAKE(Class, state.erase_route_history = eraseRouteHistory) {} \
    ERASE_ROUTE_HISTORY(Class)
SEEK(SeekInitialGoalAction)
SEEK(SeekOriginAction)

#define ZONE_ACTION(Class)                                                                 \
    Class::Class(GlobalId const& zone) : Class(zone, false) {}                             \
    Class::Class(GlobalId const& zone, bool eraseRouteHistory)                             \
        : MAKE(Class, state.zone = zone; state.erase_route_history = eraseRouteHistory) {} \
    PROPERTY(Class, GlobalId, Zone, zone)                                                  \
    ERASE_ROUTE_HISTORY(Class)
ZONE_ACTION(SeekZoneAction)
ZONE_ACTION(EvacuateZoneAction)

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
#define SEEK_ONE_OF(Class, Names)                                                                                    \
    Class::Class(std::vector<GlobalId> const& ids, bool eraseRouteHistory)                                           \
        : MAKE(Class, state.destinations = by_chance(ids); state.erase_route_history = eraseRouteHistory) {}         \
    Class::Class(std::vector<GlobalId> const& ids, std::vector<double> const& weights, bool eraseRouteHistory)       \
        : MAKE(Class, state.destinations = weighted(ids, weights); state.erase_route_history = eraseRouteHistory) {} \
    DESTINATIONS(Class, Names)                                                                                       \
    ERASE_ROUTE_HISTORY(Class)

SEEK_ONE_OF(SeekAreaAction, Areas)
LOWEST_COST(SeekAreaAction, Areas)
SEEK_ONE_OF(SeekPortalAction, Portals)
LOWEST_COST(SeekPortalAction, Portals)
SEEK_ONE_OF(SeekProcessStartAction, ProcessStarts)

FollowSignAction::FollowSignAction(std::vector<GlobalId> const& routeObjects)
    : MAKE(FollowSignAction, state.destinations = by_chance(routeObjects)) {}
FollowSignAction::FollowSignAction(std::vector<GlobalId> const& routeObjects, std::vector<double> const& weights)
    : MAKE(FollowSignAction, state.destinations = weighted(routeObjects, weights)) {}
DESTINATIONS(FollowSignAction, RouteObjects)
LOWEST_COST(FollowSignAction, RouteObjects)
void FollowSignAction::SetRouteObjectSequence(std::vector<GlobalId> const& routeObjects) {
    set_destinations<engine::FollowSignActionState>(*this, in_sequence(routeObjects));
}

// Waiting, and parts that several kinds have.

#define STYLE(Class) PROPERTY(Class, std::shared_ptr<WaitStyle>, WaitStyle, style)
#define TEST(Class) PROPERTY(Class, std::shared_ptr<AgentTest>, AgentTest, test)
#define DURATION(Class)                                                            \
    PROPERTY(Class, std::shared_ptr<Distribution>, DurationDistribution, duration) \
    void Class::SetDurationInSeconds(int seconds) { SetDurationDistribution(Distribution::CreateConstant(seconds)); }
#define TIME(Class)                                                      \
    PROPERTY(Class, std::shared_ptr<TimeReference>, TimeReference, time) \
    void Class::SetAbsoluteTimeInSeconds(int seconds) { SetTimeReference(TimeReference::Absolute(seconds)); }

WaitForDurationAction::WaitForDurationAction(std::shared_ptr<Distribution> const& duration,
                                             std::shared_ptr<WaitStyle> const& style)
    : MAKE(WaitForDurationAction, state.duration = duration; state.style = style) {}
DURATION(WaitForDurationAction)
STYLE(WaitForDurationAction)

WaitForeverAction::WaitForeverAction(std::shared_ptr<WaitStyle> const& style)
    : MAKE(WaitForeverAction, state.style = style) {}
STYLE(WaitForeverAction)

WaitUntilTimeAction::WaitUntilTimeAction(std::shared_ptr<TimeReference> const& time,
                                         std::shared_ptr<WaitStyle> const& style)
    : MAKE(WaitUntilTimeAction, state.time = time; state.style = style) {}
TIME(WaitUntilTimeAction)
STYLE(WaitUntilTimeAction)

WaitWhileTestTrueAction::WaitWhileTestTrueAction(std::shared_ptr<AgentTest> const& test,
                                                 std::shared_ptr<WaitStyle> const& style)
    : MAKE(WaitWhileTestTrueAction, state.test = test; state.style = style) {}
TEST(WaitWhileTestTrueAction)
STYLE(WaitWhileTestTrueAction)

// What happens at once.

AddToTallyAction::AddToTallyAction(GlobalId const& tallyObject, double value)
    : AddToTallyAction(std::vector{tallyObject}, value) {}
AddToTallyAction::AddToTallyAction(std::vector<GlobalId> const& tallyObjects, double value)
    : MAKE(AddToTallyAction, state.tally_objects = tallyObjects; state.value = value) {}
PROPERTY(AddToTallyAction, std::vector<GlobalId>, TallyObjects, tally_objects)
VALUE_PROPERTY(AddToTallyAction, double, ValueToAdd, value)

#define TOKENS(Class)                                                                         \
    Class::Class(GlobalId const& token) : Class(std::vector{token}) {}                        \
    Class::Class(std::vector<GlobalId> const& tokens) : MAKE(Class, state.tokens = tokens) {} \
    PROPERTY(Class, std::vector<GlobalId>, Tokens, tokens)
TOKENS(AddTokensAction)
TOKENS(ClearTokensAction)

SetAvatarAction::SetAvatarAction(GlobalId const& avatar) : MAKE(SetAvatarAction, state.avatar = avatar) {}
PROPERTY(SetAvatarAction, GlobalId, Avatar, avatar)

SetColorAction::SetColorAction() : SetColorAction(Color::WHITE) {}
SetColorAction::SetColorAction(Color color) : MAKE(SetColorAction, state.color = color) {}
VALUE_PROPERTY(SetColorAction, Color, Color, color)

SetNetworkAction::SetNetworkAction() : SetNetworkAction(GlobalId::INVALID) {}
SetNetworkAction::SetNetworkAction(GlobalId const& network)
    : AgentAction(engine::make_node<AgentAction, engine::SetNetworkActionState>()) {
    SetCustomNetwork(network);
}
GlobalId SetNetworkAction::GetCustomNetwork() { return get(*this, &engine::SetNetworkActionState::network); }
void SetNetworkAction::SetCustomNetwork(GlobalId const& network) {
    set(*this, &engine::SetNetworkActionState::network, network.IsValid() ? std::optional(network) : std::nullopt);
}
bool SetNetworkAction::HasCustomNetwork() { return state_of<engine::SetNetworkActionState>(*this).network.has_value(); }

// Actions made of actions.

ListAction::ListAction(std::vector<std::shared_ptr<AgentAction>> const& actions, ListActionAssignment assignment)
    : MAKE(ListAction, state.actions = actions; state.assignment = assignment) {}
VALUE_PROPERTY(ListAction, ListActionAssignment, ListActionAssignment, assignment)

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

ApplyActionAction::ApplyActionAction(std::shared_ptr<AgentAction> const& action)
    : MAKE(ApplyActionAction, state.action = action) {}
PROPERTY(ApplyActionAction, std::shared_ptr<AgentAction>, AppliedAction, action)

#define CONDITION(Class)                                      \
    PROPERTY(Class, std::shared_ptr<AgentTest>, IfTest, test) \
    PROPERTY(Class, std::shared_ptr<AgentAction>, ThenAction, then_action)

IfThenAction::IfThenAction(std::shared_ptr<AgentTest> const& test, std::shared_ptr<AgentAction> const& thenAction)
    : MAKE(IfThenAction, state.test = test; state.then_action = thenAction) {}
CONDITION(IfThenAction)

IfThenElseAction::IfThenElseAction(std::shared_ptr<AgentTest> const& test,
                                   std::shared_ptr<AgentAction> const& thenAction,
                                   std::shared_ptr<AgentAction> const& elseAction)
    : MAKE(IfThenElseAction, state.test = test; state.then_action = thenAction; state.else_action = elseAction) {}
CONDITION(IfThenElseAction)
PROPERTY(IfThenElseAction, std::shared_ptr<AgentAction>, ElseAction, else_action)

#define DO_UNTIL(Class, End, end)                                                                                    \
    Class::Class(std::shared_ptr<AgentAction> const& action, std::shared_ptr<End> const& end)                        \
        : MAKE(Class, state.action = action; state.end = end) {}                                                     \
    Class::Class(std::shared_ptr<AgentAction> const& action, std::shared_ptr<End> const& end,                        \
                 std::shared_ptr<WaitStyle> const& style)                                                            \
        : Class(action, end) {                                                                                       \
        SetWaitIfDoActionDoneEarly(style);                                                                           \
    }                                                                                                                \
    PROPERTY(Class, std::shared_ptr<AgentAction>, DoAction, action)                                                  \
    std::shared_ptr<WaitStyle> Class::GetWaitStyle() { return get(*this, &engine::DoUntilState::early_wait_style); } \
    bool Class::IsWaitIfDoActionDoneEarly() const {                                                                  \
        return get(*this, &engine::DoUntilState::early_wait_style) != nullptr;                                       \
    }                                                                                                                \
    void Class::SetWaitIfDoActionDoneEarly(std::shared_ptr<WaitStyle> const& style) {                                \
        engine::set_early_wait_style(*this, style);                                                                  \
    }                                                                                                                \
    void Class::ClearWaitIfDoActionDoneEarly() { set(*this, &engine::DoUntilState::early_wait_style, nullptr); }

namespace engine {
namespace {

void set_early_wait_style(AgentAction& action, std::shared_ptr<WaitStyle> const& style) {
    if (!style) refuse_empty({owner_of(node_of(action)), "waitIfDoActionDoneEarly"});
    set(action, &DoUntilState::early_wait_style, style);
}

}  // namespace
}  // namespace engine

DO_UNTIL(DoUntilDurationEndsAction, Distribution, duration)
DURATION(DoUntilDurationEndsAction)
DO_UNTIL(DoUntilTestFailsAction, AgentTest, test)
TEST(DoUntilTestFailsAction)
DO_UNTIL(DoUntilTimeAction, TimeReference, time)
TIME(DoUntilTimeAction)

#define REPEAT(Class) PROPERTY(Class, std::shared_ptr<AgentAction>, RepeatAction, action)
#define REPEAT_WITH(Class, Type, end)                                                          \
    Class::Class(std::shared_ptr<AgentAction> const& action, std::shared_ptr<Type> const& end) \
        : MAKE(Class, state.action = action; state.end = end) {}                               \
    REPEAT(Class)

RepeatForeverAction::RepeatForeverAction(std::shared_ptr<AgentAction> const& action)
    : MAKE(RepeatForeverAction, state.action = action) {}
REPEAT(RepeatForeverAction)
REPEAT_WITH(RepeatForCountAction, Distribution, count)
PROPERTY(RepeatForCountAction, std::shared_ptr<Distribution>, CountDistribution, count)
void RepeatForCountAction::SetCount(int count) { SetCountDistribution(Distribution::CreateConstant(count)); }
REPEAT_WITH(RepeatForDurationAction, Distribution, duration)
DURATION(RepeatForDurationAction)
REPEAT_WITH(RepeatUntilTimeAction, TimeReference, time)
TIME(RepeatUntilTimeAction)
REPEAT_WITH(RepeatWhileTestTrueAction, AgentTest, test)
TEST(RepeatWhileTestTrueAction)

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
            .refuse("as many as their weights, which number " + std::to_string(weights.size()), std::to_string(count));
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
        part(subject, "weights").refuse("empty unless they are used", std::to_string(weights.size()) + " numbers");
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
#define ENTRY(Class) &node_kind<AgentAction, Class##State>(),
    static KindOfNode<AgentAction> const* const kinds[] = {PEDFLUX_AGENT_ACTIONS(ENTRY)};
#undef ENTRY
    return kinds;
}

}  // namespace engine
}  // namespace pedflux
