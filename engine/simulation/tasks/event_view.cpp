#include "engine/simulation/tasks/event_view.h"

namespace pedflux::engine {

std::optional<double> clock_time(Clock const& clock, EventView const& events, TimeInFrame const& time) {
    switch (time.frame) {
        case TimeReferenceFrame::ABSOLUTE:
            return time.seconds;
        case TimeReferenceFrame::AFTER_SIMULATION_START:
            return clock.start_time + time.seconds;
        case TimeReferenceFrame::BEFORE_SIMULATION_END:
            return clock.start_time + clock.duration - time.seconds;
        case TimeReferenceFrame::AFTER_EVENT_START:
            if (auto const start = events.last_start(*time.event)) return clock.start_time + *start + time.seconds;
            break;
    }
    return std::nullopt;
}

}  // namespace pedflux::engine
