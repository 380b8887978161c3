#include "engine/base/checks.h"

#include <pedflux/time_range.h>

#include <limits>
#include <string>

namespace pedflux {

TimeRange::TimeRange() : TimeRange(0, std::numeric_limits<int>::max()) {}

TimeRange::TimeRange(int start, int end) : start_(start), end_(end) {
    if (start < 0) engine::refuse("TimeRange: start is " + std::to_string(start) + " s; it must be at least 0");
    if (end < start)
        engine::refuse("TimeRange: end is " + std::to_string(end) + " s; it must not be before the start, " +
                       std::to_string(start) + " s");
}

int TimeRange::GetStartTimeInSeconds() { return start_; }
int TimeRange::GetEndTimeInSeconds() { return end_; }

}  // namespace pedflux
