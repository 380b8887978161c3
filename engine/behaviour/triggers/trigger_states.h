#pragma once

#include "engine/behaviour/condition_names.h"
#include "engine/behaviour/events/time_reference.h"
#include "engine/behaviour/object_rules.h"
#include "engine/model/check.h"
#include "engine/model/node.h"
#include "engine/model/node_table.h"

#include <pedflux/tallies.h>
#include <pedflux/time_references.h>
#include <pedflux/transitions.h>
#include <pedflux/triggers.h>

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// The states of triggers: see engine/model/node.h and trigger_table.def.
namespace pedflux::engine {

/// What a trigger can be: one that can be both answers as either.
struct TriggerTiming {
    bool instant;
    bool interval;
};
/// Throws Exception for triggers that nest too deep.
TriggerTiming timing_of(Trigger const& trigger);

inline constexpr RefersTo A_TRIGGER_OBJECT = refers_to_kind<ObjectType::TRIGGER_OBJECT>("a trigger object");
inline constexpr Range WHOLE_SECONDS{0, unlimited, "s"};
inline constexpr Range AT_LEAST_ONE_SECOND{1, unlimited, "s"};

#define TRIGGER(Class, type, timing, children, ...)                                \
    struct Class##State : NodeState {                                              \
        PEDFLUX_KIND(TriggerType, Class, type)                                     \
        PEDFLUX_PROPERTIES(__VA_ARGS__)                                            \
        /** Children hold for spans of time where the table asks for intervals. */ \
        static void check(Subject const& subject, Class##State const& self);       \
    };
#include "engine/behaviour/triggers/trigger_table.def"

struct TriggerObjectState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::TRIGGER_OBJECT;
    static constexpr std::string_view NAME = "TriggerObject";
    using Handle = TriggerObject;

    std::shared_ptr<Trigger> trigger = std::make_shared<NeverTrigger>();  ///< replaced, never changed

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("trigger", self.trigger, must_be_given);
    }
    /// Its trigger does not lead back to it by names.
    static void check(TriggerObjectState const& self);
};

}  // namespace pedflux::engine
