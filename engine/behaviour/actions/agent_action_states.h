#pragma once

#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/behaviour/events/time_reference.h"
#include "engine/behaviour/object_rules.h"
#include "engine/behaviour/population/population.h"
#include "engine/model/check.h"
#include "engine/model/enumerations.h"
#include "engine/model/node.h"
#include "engine/model/node_table.h"

#include <pedflux/agent_actions.h>
#include <pedflux/agent_tests.h>
#include <pedflux/wait_styles.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// The states of agent actions: see engine/model/node.h and agent_action_table.def.
namespace pedflux::engine {

PEDFLUX_NAMES(ListActionAssignment, {{ListActionAssignment::IN_ORDER, "IN_ORDER"},
                                     {ListActionAssignment::IN_RANDOM_ORDER, "IN_RANDOM_ORDER"}});

inline constexpr RequiredRange A_DURATION{{0, unlimited, "s"}};
inline constexpr RequiredRange A_COUNT{{0, std::numeric_limits<int>::max()}};

/// Throws Exception unless there are as many weights as there are things of a name.
void require_one_weight_each(Subject const& subject, std::string_view name, std::size_t count,
                             std::vector<double> const& weights);

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

inline constexpr RefersTo A_WALKABLE_AREA{"a floor, connection or zone", [](ObjectState const& object) {
                                              return dynamic_cast<WalkableState const*>(&object) != nullptr ||
                                                     object.kind->type == ObjectType::ZONE;
                                          }};
inline constexpr RefersTo A_PROCESS_START =
    refers_to_kinds<ObjectType::SERVER, ObjectType::DISPATCH>("a server or dispatch");
inline constexpr RefersTo A_ROUTE_OBJECT =
    refers_to<NetworkObjectState>("a floor, connection, portal or another object that routes lead over");
inline constexpr RefersTo A_ZONE = refers_to_kind<ObjectType::ZONE>("a zone");
inline constexpr RefersTo AN_AVATAR = refers_to_kind<ObjectType::AVATAR>("an avatar");
inline constexpr RefersTo A_NETWORK = refers_to_kind<ObjectType::NETWORK>("a network");
inline constexpr RefersTo AN_ACTION_OBJECT = refers_to_kind<ObjectType::AGENT_ACTION_OBJECT>("an agent action object");

#define ACTION(Class, type, play, ...)               \
    struct Class##State : NodeState {                \
        PEDFLUX_KIND(AgentActionTypeId, Class, type) \
        PEDFLUX_PROPERTIES(__VA_ARGS__)              \
    };
#define ACTION_BY_DESTINATIONS(Class, type, Names, rule, by_lowest_cost)                            \
    struct Class##State : NodeState {                                                               \
        PEDFLUX_KIND(AgentActionTypeId, Class, type)                                                \
        bool erase_route_history = false;                                                           \
        Destinations destinations;                                                                  \
        template <class Self, class Field>                                                          \
        static void fields(Self& self, Field&& field) {                                             \
            field("eraseRouteHistory", self.erase_route_history);                                   \
            Destinations::fields_of(self.destinations, field, FIELD_NAME<#Names>, rule);            \
        }                                                                                           \
        static void check(Subject const& subject, Class##State const& self) {                       \
            require_fitting(subject, FIELD_NAME<#Names>, self.destinations, by_lowest_cost, false); \
        }                                                                                           \
    };
#define ACTION_TO_DESTINATIONS(Class, type, play, Names, rule) ACTION_BY_DESTINATIONS(Class, type, Names, rule, false)
#define ACTION_TO_NEAREST(Class, type, play, Names, rule) ACTION_BY_DESTINATIONS(Class, type, Names, rule, true)
#define ACTION_OF_ITS_OWN(...)
#include "engine/behaviour/actions/agent_action_table.def"
#undef ACTION_BY_DESTINATIONS

struct FollowSignActionState : NodeState {
    PEDFLUX_KIND(AgentActionTypeId, FollowSignAction, FOLLOW_SIGN)

    Destinations destinations;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        Destinations::fields_of(self.destinations, field, "routeObjects", A_ROUTE_OBJECT);
    }
    static void check(Subject const& subject, FollowSignActionState const& self) {
        require_fitting(subject, "routeObjects", self.destinations, true, true);
    }
};

struct ChooseFromSetActionState : NodeState {
    PEDFLUX_KIND(AgentActionTypeId, ChooseFromSetAction, CHOOSE_FROM_SET)

    std::vector<std::shared_ptr<AgentAction>> actions;
    std::vector<double> weights;  ///< one for each action

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("childActions", self.actions, must_be_given);
        field("weights", self.weights, not_negative);
    }
    static void check(Subject const& subject, ChooseFromSetActionState const& self) {
        require_one_weight_each(subject, "childActions", self.actions.size(), self.weights);
    }
};

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
