#include "engine/base/checks.h"

#include <pedflux/time_range.h>

#include <limits>
#include <string>

#include <fmt/format.h>

namespace pedflux {

TimeRange::TimeRange() : TimeRange(0, std::numeric_limits<int>::max()) {}

TimeRange::TimeRange(int start, int end) : start_(start), end_(end) {
    if (start < 0) engine::refuse(fmt::format("TimeRange: start is {} s; it must be at least 0", start));
    if (end < start)
        engine::refuse(fmt::format("TimeRange: end is {} s; it must not be before the start, {} s", end, start));
}

int TimeRange::GetStartTimeInSeconds() { return start_; }
int TimeRange::GetEndTimeInSeconds() { return end_; }

}  // namespace pedflux
