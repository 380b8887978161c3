#pragma once

#include "engine/behaviour/triggers/trigger_states.h"
#include "engine/model/check.h"
#include "engine/model/node.h"
#include "engine/model/node_table.h"

#include <pedflux/triggers.h>

#include <memory>
#include <string_view>
#include <vector>

/// The states of trigger ranges: see engine/model/node.h and trigger_range_table.def.
namespace pedflux::engine {

/// A range that a trigger starts.
struct StartedRangeState : NodeState {
    std::shared_ptr<Trigger> start;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("startTrigger", self.start, must_be_given);
    }
};

struct ScheduledInterval {
    int offset = 0;    ///< seconds from the start
    int duration = 0;  ///< seconds

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("offsetInSeconds", self.offset, WHOLE_SECONDS);
        field("durationInSeconds", self.duration, WHOLE_SECONDS);
    }
};

#define TRIGGER_RANGE(Class, type, ...)             \
    struct Class##State : NodeState {               \
        PEDFLUX_KIND(TriggerRangeType, Class, type) \
        PEDFLUX_PROPERTIES(__VA_ARGS__)             \
    };
#define STARTED_RANGE(Class, type, ...)                                        \
    struct Class##State : StartedRangeState {                                  \
        PEDFLUX_KIND(TriggerRangeType, Class, type)                            \
        PEDFLUX_PROPERTIES_AFTER(StartedRangeState __VA_OPT__(, ) __VA_ARGS__) \
    };
#include "engine/behaviour/triggers/trigger_range_table.def"

}  // namespace pedflux::engine
