#include "engine/analysis/frames.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine {

FrameRange frames_in(RunReader const& reader, TimeSpan const& span) {
    double const rate = reader.info().frame_rate;
    double const first = std::ceil((static_cast<double>(span.start) - reader.info().start_time) * rate);
    double const last = std::floor((static_cast<double>(span.end) - reader.info().start_time) * rate);
    return {static_cast<int>(std::clamp(first, 1.0 * first_frame, reader.last_frame() + 1.0)),
            static_cast<int>(std::clamp(last, first_frame - 1.0, 1.0 * reader.last_frame()))};
}

TimeRange time_range(TimeSpan const& span) { return {span.start, span.end}; }
TimeSpan time_span(TimeRange range) { return {range.GetStartTimeInSeconds(), range.GetEndTimeInSeconds()}; }

int second_of(RunReader const& reader, int time_of_day) {
    double const length = std::ceil(reader.seconds_at(reader.last_frame()));
    return static_cast<int>(std::clamp(static_cast<double>(time_of_day) - reader.info().start_time, 0.0, length));
}

}  // namespace pedflux::engine
