#include "bindings/table.h"

#include <pedflux/time_range.h>

namespace pedflux::jni {

CLASS(TimeRange)
CONSTRUCTOR_OVERLOAD(TimeRange, 0)
CONSTRUCTOR_OVERLOAD(TimeRange, 1, int, int)
GET(TimeRange, StartTimeInSeconds)
GET(TimeRange, EndTimeInSeconds)

}  // namespace pedflux::jni
