#pragma once

#include "engine/behaviour/object_rules.h"
#include "engine/model/check.h"
#include "engine/model/enumerations.h"
#include "engine/model/node.h"

#include <pedflux/transitions.h>

#include <memory>
#include <string_view>
#include <vector>

/// The states of transitions: see engine/model/node.h.
namespace pedflux::engine {

struct AnyOfTransitionState : NodeState {
    static constexpr TransitionType TYPE = TransitionType::ANY_OF;
    static constexpr std::string_view NAME = "AnyOfTransition";
    using Handle = AnyOfTransition;

    std::vector<std::shared_ptr<Transition>> children;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("childTransitions", self.children, must_be_given);
    }
};

inline constexpr RefersTo A_CORDON = refers_to_kind<ObjectType::CORDON>("a cordon");

struct BetweenObjectsTransitionState : NodeState {
    static constexpr TransitionType TYPE = TransitionType::BETWEEN_OBJECTS;
    static constexpr std::string_view NAME = "BetweenObjectsTransition";
    using Handle = BetweenObjectsTransition;

    GlobalId from;
    GlobalId to;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("fromObject", self.from, A_PLACE);
        field("toObject", self.to, A_PLACE);
    }
    /// Refuses an object that has it lead to where it comes from; until an object takes it, one can be set after the
    /// other.
    static void check(Subject const& subject, BetweenObjectsTransitionState const& self);
};

/// The transitions of one object: name, type, the field's name in C++ and in files and as the faces write it, what the
/// field refers to.
#define PEDFLUX_TRANSITIONS_OF_AN_OBJECT(TRANSITION)                       \
    TRANSITION(AtPortal, AT_PORTAL, portal, Portal, A_PORTAL)              \
    TRANSITION(Cordon, CORDON, cordon, Cordon, A_CORDON)                   \
    TRANSITION(EnterArea, ENTER_AREA, area, Area, AN_AREA)                 \
    TRANSITION(ExitArea, EXIT_AREA, area, Area, AN_AREA)                   \
    TRANSITION(EnterServer, ENTER_SERVER, server, Server, A_SERVER)        \
    TRANSITION(ExitServer, EXIT_SERVER, server, Server, A_SERVER)          \
    TRANSITION(EnterSimulation, ENTER_SIMULATION, object, Object, A_PLACE) \
    TRANSITION(ExitSimulation, EXIT_SIMULATION, object, Object, A_PLACE)

#define TRANSITION_STATE(Name, type, member, Member, rule)           \
    struct Name##TransitionState : NodeState {                       \
        static constexpr TransitionType TYPE = TransitionType::type; \
        static constexpr std::string_view NAME = #Name "Transition"; \
        using Handle = Name##Transition;                             \
                                                                     \
        GlobalId member;                                             \
                                                                     \
        template <class Self, class Field>                           \
        static void fields(Self& self, Field&& field) {              \
            field(#member, self.member, rule);                       \
        }                                                            \
    };
PEDFLUX_TRANSITIONS_OF_AN_OBJECT(TRANSITION_STATE)
#undef TRANSITION_STATE

}  // namespace pedflux::engine
