#pragma once

#include "engine/analysis/query_states.h"
#include "engine/results/run_reader.h"

#include <pedflux/time_range.h>

namespace pedflux::engine {

struct FrameRange {
    int first = 1;
    int last = 0;  ///< less than `first` for an empty range
};

/// The frames of the run within a span of times of day.
FrameRange frames_in(RunReader const& reader, TimeSpan const& span);

TimeRange time_range(TimeSpan const& span);
TimeSpan time_span(TimeRange range);

/// Seconds since the start of the simulation at a time of day, within the run.
int second_of(RunReader const& reader, int time_of_day);

}  // namespace pedflux::engine
