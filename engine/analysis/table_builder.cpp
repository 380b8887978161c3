#include "engine/analysis/table_builder.h"

#include <algorithm>
#include <numeric>

namespace pedflux::engine {

double aggregated(std::vector<double> values, AggregationType type) {
    auto const count = static_cast<double>(values.size());
    std::ranges::sort(values);
    double const sum = std::accumulate(values.begin(), values.end(), 0.0);
    auto const middle = values.size() / 2;
    switch (type) {
        case AggregationType::MINIMUM:
            return values.front();
        case AggregationType::MAXIMUM:
            return values.back();
        case AggregationType::SUM:
            return sum;
        case AggregationType::MEDIAN:
            return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
        case AggregationType::MEAN:
            break;
    }
    return sum / count;
}

}  // namespace pedflux::engine
