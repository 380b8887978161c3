#pragma once

#include "engine/analysis/query_states.h"
#include "engine/results/run_reader.h"

#include <pedflux/time_range.h>

namespace pedflux::engine {

struct FrameRange {
    int first = 1;
    int last = 0;  ///< before the first when there is none
};

/// The frames of the run whose times of day lie in the span.
FrameRange frames_in(RunReader const& reader, TimeSpan const& span);

TimeRange time_range(TimeSpan const& span);
TimeSpan time_span(TimeRange range);

/// Seconds since the start of the simulation at a time of day, within the run.
int second_of(RunReader const& reader, int time_of_day);

}  // namespace pedflux::engine
