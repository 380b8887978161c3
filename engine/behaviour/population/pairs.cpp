#include "engine/behaviour/population/pairs.h"

namespace pedflux::engine {

std::vector<DurationValuePair> pairs_of(std::vector<Period> const& periods) {
    std::vector<DurationValuePair> pairs;
    pairs.reserve(periods.size());
    for (auto const& period : periods) pairs.emplace_back(period.duration, period.value);
    return pairs;
}

std::vector<Period> periods_of(std::vector<DurationValuePair> const& pairs) {
    std::vector<Period> periods;
    periods.reserve(pairs.size());
    for (auto const& pair : pairs) periods.push_back({pair.GetDurationInSeconds(), pair.GetValue()});
    return periods;
}

IdValueLists lists_of(std::vector<IdValuePair> const& pairs) {
    IdValueLists lists;
    for (auto pair : pairs) {
        lists.ids.push_back(pair.GetId());
        lists.values.push_back(pair.GetValue());
    }
    return lists;
}

std::vector<IdValuePair> pairs_of(std::vector<GlobalId> const& ids, std::vector<double> const& values) {
    std::vector<IdValuePair> pairs;
    for (std::size_t index = 0; index < values.size(); ++index) pairs.emplace_back(ids[index], values[index]);
    return pairs;
}

}  // namespace pedflux::engine
