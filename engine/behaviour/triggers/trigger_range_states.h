#pragma once

#include "engine/behaviour/triggers/trigger_states.h"
#include "engine/model/check.h"
#include "engine/model/node.h"

#include <pedflux/triggers.h>

#include <memory>
#include <string_view>
#include <vector>

/// The states of trigger ranges: see engine/model/node.h.
namespace pedflux::engine {

#define TRIGGER_RANGE_KIND(Name, type)                               \
    static constexpr TriggerRangeType TYPE = TriggerRangeType::type; \
    static constexpr std::string_view NAME = #Name "TriggerRange";   \
    using Handle = Name##TriggerRange

struct AllSimulationTriggerRangeState : NodeState {
    TRIGGER_RANGE_KIND(AllSimulation, ALL_SIMULATION);

    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

/// A range that a trigger starts.
struct StartedRangeState : NodeState {
    std::shared_ptr<Trigger> start;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("startTrigger", self.start, must_be_given);
    }
};

struct BoundedTriggerRangeState : StartedRangeState {
    TRIGGER_RANGE_KIND(Bounded, BOUNDED);

    std::shared_ptr<Trigger> end;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        StartedRangeState::fields(self, field);
        field("endTrigger", self.end, must_be_given);
    }
};

struct OverDurationTriggerRangeState : StartedRangeState {
    TRIGGER_RANGE_KIND(OverDuration, OVER_DURATION);

    int duration = 0;  ///< seconds

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        StartedRangeState::fields(self, field);
        field("durationInSeconds", self.duration, WHOLE_SECONDS);
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

struct ScheduledTriggerRangeState : StartedRangeState {
    TRIGGER_RANGE_KIND(Scheduled, SCHEDULED);

    std::vector<ScheduledInterval> intervals;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        StartedRangeState::fields(self, field);
        field("intervals", self.intervals);
    }
};

struct WheneverTriggerRangeState : StartedRangeState {
    TRIGGER_RANGE_KIND(Whenever, WHENEVER);
};

#undef TRIGGER_RANGE_KIND

}  // namespace pedflux::engine
