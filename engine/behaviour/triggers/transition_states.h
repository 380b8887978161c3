#pragma once

#include "engine/behaviour/object_rules.h"
#include "engine/model/check.h"
#include "engine/model/node.h"
#include "engine/model/node_table.h"

#include <pedflux/transitions.h>

#include <memory>
#include <string_view>
#include <vector>

/// The states of transitions: see engine/model/node.h and transition_table.def.
namespace pedflux::engine {

inline constexpr RefersTo A_CORDON = refers_to_kind<ObjectType::CORDON>("a cordon");

#define TRANSITION(Class, type, ...)              \
    struct Class##State : NodeState {             \
        PEDFLUX_KIND(TransitionType, Class, type) \
        PEDFLUX_PROPERTIES(__VA_ARGS__)           \
    };
#define CHECKED_TRANSITION(Class, type, ...)                                 \
    struct Class##State : NodeState {                                        \
        PEDFLUX_KIND(TransitionType, Class, type)                            \
        PEDFLUX_PROPERTIES(__VA_ARGS__)                                      \
        static void check(Subject const& subject, Class##State const& self); \
    };
#include "engine/behaviour/triggers/transition_table.def"

}  // namespace pedflux::engine
