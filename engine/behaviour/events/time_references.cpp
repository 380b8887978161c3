#include "engine/base/checks.h"
#include "engine/behaviour/events/time_reference.h"
#include "engine/model/properties.h"

#include <pedflux/time_references.h>

#include <string>

#include <fmt/format.h>

namespace pedflux {

TimeReference::TimeReference(TimeReferenceFrame frame, int seconds, GlobalId const& event)
    : frame_(frame), seconds_(seconds), event_(event) {
    if (engine::name_of_value(frame).empty()) {
        engine::refuse(fmt::format("TimeReference: the frame is {}; it must be one of {}", static_cast<int>(frame),
                                   engine::names_of<TimeReferenceFrame>()));
    }
    if (seconds < 0) engine::refuse(fmt::format("TimeReference: {} s; it must be at least 0", seconds));
    bool const needs_event = frame == TimeReferenceFrame::AFTER_EVENT_START;
    if (needs_event != event.IsValid()) {
        engine::refuse(fmt::format("TimeReference: {}{}", engine::name_of_value(frame),
                                   needs_event ? " needs the identifier of an event" : " must not have an event"));
    }
}

std::shared_ptr<TimeReference> TimeReference::Absolute(int seconds) {
    return std::make_shared<TimeReference>(TimeReferenceFrame::ABSOLUTE, seconds, GlobalId::INVALID);
}
std::shared_ptr<TimeReference> TimeReference::AfterSimulationStart(int seconds) {
    return std::make_shared<TimeReference>(TimeReferenceFrame::AFTER_SIMULATION_START, seconds, GlobalId::INVALID);
}
std::shared_ptr<TimeReference> TimeReference::BeforeSimulationEnd(int seconds) {
    return std::make_shared<TimeReference>(TimeReferenceFrame::BEFORE_SIMULATION_END, seconds, GlobalId::INVALID);
}
std::shared_ptr<TimeReference> TimeReference::AfterEventStart(GlobalId const& event, int seconds) {
    return std::make_shared<TimeReference>(TimeReferenceFrame::AFTER_EVENT_START, seconds, event);
}

TimeReferenceFrame TimeReference::GetTimeReferenceFrame() { return frame_; }

std::shared_ptr<TimeReference> TimeObject::GetTimeReference() {
    return engine::get_copy(*this, &engine::TimeObjectState::time);
}
void TimeObject::SetTimeReference(std::shared_ptr<TimeReference> const& time) {
    engine::set_copy(*this, &engine::TimeObjectState::time, time);
}
void TimeObject::SetAbsoluteTime(int seconds) { SetTimeReference(TimeReference::Absolute(seconds)); }

}  // namespace pedflux
