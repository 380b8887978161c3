#pragma once

namespace pedflux {

/// How several numbers become one.
enum class AggregationType : int {
    MEAN = 0,     ///< the arithmetic mean
    MINIMUM = 1,  ///< the least
    MAXIMUM = 2,  ///< the greatest
    SUM = 3,      ///< all of them added up
    MEDIAN = 4,   ///< half of them are less; of an even number the mean of the two in the middle
};

}  // namespace pedflux
