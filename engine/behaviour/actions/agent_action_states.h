#pragma once

#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/behaviour/events/time_reference.h"
#include "engine/behaviour/object_rules.h"
#include "engine/behaviour/population/population.h"
#include "engine/model/check.h"
#include "engine/model/enumerations.h"
#include "engine/model/node.h"

#include <pedflux/agent_actions.h>
#include <pedflux/agent_tests.h>
#include <pedflux/wait_styles.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// The states of agent actions: see engine/model/node.h.
namespace pedflux::engine {

PEDFLUX_NAMES(ListActionAssignment, {{ListActionAssignment::IN_ORDER, "IN_ORDER"},
                                     {ListActionAssignment::IN_RANDOM_ORDER, "IN_RANDOM_ORDER"}});

/// What every kind has: its type, its name, which is that of its class, and the class.
#define ACTION_KIND(Type, Class)                                       \
    static constexpr AgentActionTypeId TYPE = AgentActionTypeId::Type; \
    static constexpr std::string_view NAME = #Class;                   \
    using Handle = Class;

/// A field that a state has in addition to those of its base.
#define ACTION_FIELDS(Base, ...)                    \
    template <class Self, class Field>              \
    static void fields(Self& self, Field&& field) { \
        Base::fields(self, field);                  \
        __VA_ARGS__;                                \
    }

inline constexpr RequiredRange A_DURATION{{0, unlimited, "s"}};
inline constexpr RequiredRange A_COUNT{{0, std::numeric_limits<int>::max()}};

/// Throws Exception unless there are as many weights as there are things of a name.
void require_one_weight_each(Subject const& subject, std::string_view name, std::size_t count,
                             std::vector<double> const& weights);

struct ActionState : NodeState {
    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

#define ACTION_WITHOUT_FIELDS(Type, Class) \
    struct Class##State : ActionState {    \
        ACTION_KIND(Type, Class)           \
    };
ACTION_WITHOUT_FIELDS(DO_NOTHING, DoNothingAction)
ACTION_WITHOUT_FIELDS(EXIT_SIMULATION, ExitSimulationAction)
ACTION_WITHOUT_FIELDS(CLEAR_AVATAR, ClearAvatarAction)
ACTION_WITHOUT_FIELDS(CLEAR_COLOR, ClearColorAction)
ACTION_WITHOUT_FIELDS(CLEAR_HISTORY, ClearHistoryAction)
ACTION_WITHOUT_FIELDS(CLEAR_NETWORK, ClearNetworkAction)
ACTION_WITHOUT_FIELDS(CLEAR_TASKS, ClearTasksAction)
#undef ACTION_WITHOUT_FIELDS

struct NamedActionState : ActionState {
    ACTION_KIND(NAMED, NamedAction)
    GlobalId action_object;
    ACTION_FIELDS(ActionState, field("agentActionObject", self.action_object,
                                     refers_to_kind<ObjectType::AGENT_ACTION_OBJECT>("an agent action object")))
};

// Going somewhere.

struct SeekState : ActionState {
    bool erase_route_history = false;
    ACTION_FIELDS(ActionState, field("eraseRouteHistory", self.erase_route_history))
};
struct SeekInitialGoalActionState : SeekState {
    ACTION_KIND(SEEK_INITIAL_GOAL, SeekInitialGoalAction)
};
struct SeekOriginActionState : SeekState {
    ACTION_KIND(SEEK_ORIGIN, SeekOriginAction)
};

struct ZoneActionState : SeekState {
    GlobalId zone;
    ACTION_FIELDS(SeekState, field("zone", self.zone, refers_to_kind<ObjectType::ZONE>("a zone")))
};
struct SeekZoneActionState : ZoneActionState {
    ACTION_KIND(SEEK_ZONE, SeekZoneAction)
};
struct EvacuateZoneActionState : ZoneActionState {
    ACTION_KIND(EVACUATE_ZONE, EvacuateZoneAction)
};

/// The objects to one of which an agent goes, and how it comes by it.
struct Destinations {
    std::vector<GlobalId> ids;
    std::vector<double> weights;  ///< one for each object when they are weighted
    DestinationAssignment assignment = DestinationAssignment::BY_CHANCE;

    template <class Self, class Field>
    static void fields_of(Self& self, Field&& field, std::string_view name, RefersTo const& rule) {
        field(name, self.ids, rule);
        field("weights", self.weights, not_negative);
        field("destinationAssignment", self.assignment);
    }
};

/// Throws Exception when weights and assignment do not fit the objects, or the kind of action has no such assignment.
void require_fitting(Subject const& subject, std::string_view name, Destinations const& destinations,
                     bool by_lowest_cost, bool in_sequence);

#define ACTION_WITH_DESTINATIONS(Type, Class, Base, name, rule, by_lowest_cost, in_sequence) \
    struct Class##State : Base {                                                             \
        ACTION_KIND(Type, Class)                                                             \
        Destinations destinations;                                                           \
        ACTION_FIELDS(Base, Destinations::fields_of(self.destinations, field, name, rule))   \
        static void check(Subject const& subject, Class##State const& self) {                \
            require_fitting(subject, name, self.destinations, by_lowest_cost, in_sequence);  \
        }                                                                                    \
    };
inline constexpr RefersTo A_WALKABLE_AREA{"a floor, connection or zone", [](ObjectState const& object) {
                                              return dynamic_cast<WalkableState const*>(&object) != nullptr ||
                                                     object.kind->type == ObjectType::ZONE;
                                          }};
ACTION_WITH_DESTINATIONS(SEEK_AREA, SeekAreaAction, SeekState, "areas", A_WALKABLE_AREA, true, false)
ACTION_WITH_DESTINATIONS(SEEK_PORTAL, SeekPortalAction, SeekState, "portals", A_PORTAL, true, false)
ACTION_WITH_DESTINATIONS(SEEK_PROCESS_START, SeekProcessStartAction, SeekState, "processStarts",
                         (refers_to_kinds<ObjectType::SERVER, ObjectType::DISPATCH>("a server or dispatch")), false,
                         false)
ACTION_WITH_DESTINATIONS(
    FOLLOW_SIGN, FollowSignAction, ActionState, "routeObjects",
    refers_to<NetworkObjectState>("a floor, connection, portal or another object that routes lead over"), true, true)
#undef ACTION_WITH_DESTINATIONS

// Waiting.

struct WaitState : ActionState {
    std::shared_ptr<WaitStyle> style;
    ACTION_FIELDS(ActionState, field("waitStyle", self.style, must_be_given))
};
struct WaitForDurationActionState : WaitState {
    ACTION_KIND(WAIT_FOR_DURATION, WaitForDurationAction)
    std::shared_ptr<Distribution> duration;
    ACTION_FIELDS(WaitState, field("durationDistribution", self.duration, A_DURATION))
};
struct WaitForeverActionState : WaitState {
    ACTION_KIND(WAIT_FOREVER, WaitForeverAction)
};
struct WaitUntilTimeActionState : WaitState {
    ACTION_KIND(WAIT_UNTIL_TIME, WaitUntilTimeAction)
    std::shared_ptr<TimeReference> time;
    ACTION_FIELDS(WaitState, field("timeReference", self.time, must_be_given))
};
struct WaitWhileTestTrueActionState : WaitState {
    ACTION_KIND(WAIT_WHILE_TEST_TRUE, WaitWhileTestTrueAction)
    std::shared_ptr<AgentTest> test;
    ACTION_FIELDS(WaitState, field("agentTest", self.test, must_be_given))
};

// What happens at once.

struct AddToTallyActionState : ActionState {
    ACTION_KIND(ADD_TO_TALLY, AddToTallyAction)
    std::vector<GlobalId> tally_objects;
    double value = 0;
    ACTION_FIELDS(ActionState,
                  field("tallyObjects", self.tally_objects, refers_to_kind<ObjectType::TALLY_OBJECT>("a tally object")),
                  field("valueToAdd", self.value))
};

struct TokensState : ActionState {
    std::vector<GlobalId> tokens;
    ACTION_FIELDS(ActionState, field("tokens", self.tokens, A_TOKEN))
};
struct AddTokensActionState : TokensState {
    ACTION_KIND(ADD_TOKENS, AddTokensAction)
};
struct ClearTokensActionState : TokensState {
    ACTION_KIND(CLEAR_TOKENS, ClearTokensAction)
};

struct SetAvatarActionState : ActionState {
    ACTION_KIND(SET_AVATAR, SetAvatarAction)
    GlobalId avatar;
    ACTION_FIELDS(ActionState, field("avatar", self.avatar, refers_to_kind<ObjectType::AVATAR>("an avatar")))
};
struct SetColorActionState : ActionState {
    ACTION_KIND(SET_COLOR, SetColorAction)
    Color color = Color::WHITE;
    ACTION_FIELDS(ActionState, field("color", self.color))
};
struct SetNetworkActionState : ActionState {
    ACTION_KIND(SET_NETWORK, SetNetworkAction)
    std::optional<GlobalId> network;
    ACTION_FIELDS(ActionState, field("customNetwork", self.network, refers_to_kind<ObjectType::NETWORK>("a network")))
};

// Actions made of actions.

struct ListActionState : ActionState {
    ACTION_KIND(LIST, ListAction)
    std::vector<std::shared_ptr<AgentAction>> actions;
    ListActionAssignment assignment = ListActionAssignment::IN_ORDER;
    ACTION_FIELDS(ActionState, field("childActions", self.actions, must_be_given),
                  field("listActionAssignment", self.assignment))
};
struct ChooseFromSetActionState : ActionState {
    ACTION_KIND(CHOOSE_FROM_SET, ChooseFromSetAction)
    std::vector<std::shared_ptr<AgentAction>> actions;
    std::vector<double> weights;  ///< one for each action
    ACTION_FIELDS(ActionState, field("childActions", self.actions, must_be_given),
                  field("weights", self.weights, not_negative))
    static void check(Subject const& subject, ChooseFromSetActionState const& self) {
        require_one_weight_each(subject, "childActions", self.actions.size(), self.weights);
    }
};
struct ApplyActionActionState : ActionState {
    ACTION_KIND(APPLY_ACTION, ApplyActionAction)
    std::shared_ptr<AgentAction> action;
    ACTION_FIELDS(ActionState, field("appliedAction", self.action, must_be_given))
};

struct ConditionalState : ActionState {
    std::shared_ptr<AgentTest> test;
    std::shared_ptr<AgentAction> then_action;
    ACTION_FIELDS(ActionState, field("ifTest", self.test, must_be_given),
                  field("thenAction", self.then_action, must_be_given))
};
struct IfThenActionState : ConditionalState {
    ACTION_KIND(IF_THEN, IfThenAction)
};
struct IfThenElseActionState : ConditionalState {
    ACTION_KIND(IF_THEN_ELSE, IfThenElseAction)
    std::shared_ptr<AgentAction> else_action;
    ACTION_FIELDS(ConditionalState, field("elseAction", self.else_action, must_be_given))
};

struct DoUntilState : ActionState {
    std::shared_ptr<AgentAction> action;
    std::shared_ptr<WaitStyle> early_wait_style;  ///< empty: the agent does not wait when the action is done early
    ACTION_FIELDS(ActionState, field("doAction", self.action, must_be_given),
                  field("waitIfDoActionDoneEarly", self.early_wait_style))
};
struct DoUntilDurationEndsActionState : DoUntilState {
    ACTION_KIND(DO_UNTIL_DURATION_ENDS, DoUntilDurationEndsAction)
    std::shared_ptr<Distribution> duration;
    ACTION_FIELDS(DoUntilState, field("durationDistribution", self.duration, A_DURATION))
};
struct DoUntilTestFailsActionState : DoUntilState {
    ACTION_KIND(DO_UNTIL_TEST_FAILS, DoUntilTestFailsAction)
    std::shared_ptr<AgentTest> test;
    ACTION_FIELDS(DoUntilState, field("agentTest", self.test, must_be_given))
};
struct DoUntilTimeActionState : DoUntilState {
    ACTION_KIND(DO_UNTIL_TIME, DoUntilTimeAction)
    std::shared_ptr<TimeReference> time;
    ACTION_FIELDS(DoUntilState, field("timeReference", self.time, must_be_given))
};

struct RepeatState : ActionState {
    std::shared_ptr<AgentAction> action;
    ACTION_FIELDS(ActionState, field("repeatAction", self.action, must_be_given))
};
struct RepeatForCountActionState : RepeatState {
    ACTION_KIND(REPEAT_FOR_COUNT, RepeatForCountAction)
    std::shared_ptr<Distribution> count;
    ACTION_FIELDS(RepeatState, field("countDistribution", self.count, A_COUNT))
};
struct RepeatForDurationActionState : RepeatState {
    ACTION_KIND(REPEAT_FOR_DURATION, RepeatForDurationAction)
    std::shared_ptr<Distribution> duration;
    ACTION_FIELDS(RepeatState, field("durationDistribution", self.duration, A_DURATION))
};
struct RepeatForeverActionState : RepeatState {
    ACTION_KIND(REPEAT_FOREVER, RepeatForeverAction)
};
struct RepeatUntilTimeActionState : RepeatState {
    ACTION_KIND(REPEAT_UNTIL_TIME, RepeatUntilTimeAction)
    std::shared_ptr<TimeReference> time;
    ACTION_FIELDS(RepeatState, field("timeReference", self.time, must_be_given))
};
struct RepeatWhileTestTrueActionState : RepeatState {
    ACTION_KIND(REPEAT_WHILE_TEST_TRUE, RepeatWhileTestTrueAction)
    std::shared_ptr<AgentTest> test;
    ACTION_FIELDS(RepeatState, field("agentTest", self.test, must_be_given))
};

#undef ACTION_FIELDS
#undef ACTION_KIND

/// Calls KIND(Class) for every class of actions.
#define PEDFLUX_AGENT_ACTIONS(KIND) \
    KIND(DoNothingAction)           \
    KIND(NamedAction)               \
    KIND(ExitSimulationAction)      \
    KIND(SeekAreaAction)            \
    KIND(SeekPortalAction)          \
    KIND(SeekProcessStartAction)    \
    KIND(SeekZoneAction)            \
    KIND(SeekInitialGoalAction)     \
    KIND(SeekOriginAction)          \
    KIND(EvacuateZoneAction)        \
    KIND(FollowSignAction)          \
    KIND(WaitForDurationAction)     \
    KIND(WaitForeverAction)         \
    KIND(WaitUntilTimeAction)       \
    KIND(WaitWhileTestTrueAction)   \
    KIND(AddToTallyAction)          \
    KIND(AddTokensAction)           \
    KIND(ClearTokensAction)         \
    KIND(SetAvatarAction)           \
    KIND(ClearAvatarAction)         \
    KIND(SetColorAction)            \
    KIND(ClearColorAction)          \
    KIND(SetNetworkAction)          \
    KIND(ClearNetworkAction)        \
    KIND(ClearHistoryAction)        \
    KIND(ClearTasksAction)          \
    KIND(ListAction)                \
    KIND(ChooseFromSetAction)       \
    KIND(ApplyActionAction)         \
    KIND(IfThenAction)              \
    KIND(IfThenElseAction)          \
    KIND(DoUntilDurationEndsAction) \
    KIND(DoUntilTestFailsAction)    \
    KIND(DoUntilTimeAction)         \
    KIND(RepeatForCountAction)      \
    KIND(RepeatForDurationAction)   \
    KIND(RepeatForeverAction)       \
    KIND(RepeatUntilTimeAction)     \
    KIND(RepeatWhileTestTrueAction)

/// A named action.
struct AgentActionObjectState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::AGENT_ACTION_OBJECT;
    static constexpr std::string_view NAME = "AgentActionObject";
    using Handle = AgentActionObject;

    std::shared_ptr<AgentAction> action = std::make_shared<DoNothingAction>();  ///< replaced, never changed

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("agentAction", self.action, must_be_given);
    }
    /// Throws Exception when the action leads back to the object by way of named actions.
    static void check(AgentActionObjectState const& self) { require_no_way_back(self, *self.action); }
    static void require_no_way_back(AgentActionObjectState const& self, AgentAction const& action);
};

}  // namespace pedflux::engine
