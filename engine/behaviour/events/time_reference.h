#pragma once

#include "engine/behaviour/object_rules.h"
#include "engine/model/enumerations.h"
#include "engine/model/field_type.h"

#include <pedflux/time_references.h>

#include <memory>
#include <optional>
#include <string_view>

// Time references as plain data, for what compiles them, and the state of named times.
namespace pedflux::engine {

PEDFLUX_NAMES(TimeReferenceFrame, {{TimeReferenceFrame::ABSOLUTE, "ABSOLUTE"},
                                   {TimeReferenceFrame::AFTER_SIMULATION_START, "AFTER_SIMULATION_START"},
                                   {TimeReferenceFrame::BEFORE_SIMULATION_END, "BEFORE_SIMULATION_END"},
                                   {TimeReferenceFrame::AFTER_EVENT_START, "AFTER_EVENT_START"}});

inline constexpr RefersTo AN_EVENT = refers_to_kinds<ObjectType::JOURNEY, ObjectType::EVACUATION, ObjectType::CIRCULATE,
                                                     ObjectType::DISPATCH, ObjectType::BROADCAST>("an event");

struct TimeInFrame {
    TimeReferenceFrame frame = TimeReferenceFrame::ABSOLUTE;
    int seconds = 0;
    std::optional<GlobalId> event;  ///< of the frame AFTER_EVENT_START

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("frame", self.frame);
        field("seconds", self.seconds, Range{0, unlimited, "s"});
        field("event", self.event, AN_EVENT);
    }
};

struct TimeReferenceAccess {
    static TimeInFrame time(TimeReference const& reference) {
        return {reference.frame_, reference.seconds_,
                reference.event_.IsValid() ? std::optional(reference.event_) : std::nullopt};
    }
};

template <>
struct SharedValue<TimeReference> {
    using Value = TimeInFrame;
    static TimeInFrame value(TimeReference const& reference) { return TimeReferenceAccess::time(reference); }
    static std::shared_ptr<TimeReference> make(TimeInFrame const& time) {
        return std::make_shared<TimeReference>(time.frame, time.seconds, time.event.value_or(GlobalId::INVALID));
    }
};

struct TimeObjectState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::TIME_OBJECT;
    static constexpr std::string_view NAME = "TimeObject";
    using Handle = TimeObject;

    std::shared_ptr<TimeReference> time = TimeReference::Absolute(0);

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("time", self.time, must_be_given);
    }
};

}  // namespace pedflux::engine
