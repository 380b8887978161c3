#pragma once

#include <pedflux/api.h>

namespace pedflux {

/// A span of the simulated clock, in whole seconds after midnight; start and end belong to it.
class PEDFLUX_API TimeRange {
  public:
    /// All times: from 0 to the greatest int.
    TimeRange();
    /// From start to end.
    /// @throws Exception for a negative start and for an end before the start
    TimeRange(int start, int end);

    int GetStartTimeInSeconds();
    int GetEndTimeInSeconds();

  private:
    int start_;
    int end_;
};

}  // namespace pedflux
