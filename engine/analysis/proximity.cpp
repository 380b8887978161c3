#include "engine/analysis/proximity.h"

#include "engine/geometry/vector.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

namespace pedflux::engine {

namespace {

Point place_of(AgentFrame const& person) { return {static_cast<double>(person.x), static_cast<double>(person.z)}; }

}  // namespace

Proximity::Proximity(RunReader const& reader, double distance, bool ignore_barriers)
    : distance_(distance), walls_(reader.surfaces().size()) {
    if (ignore_barriers) return;
    for (std::size_t surface = 0; surface < walls_.size(); ++surface) {
        auto const add = [&](Ring const& ring) {
            for (std::size_t i = 0; i < ring.size(); ++i) {
                walls_[surface].push_back({ring[i], ring[(i + 1) % ring.size()]});
            }
        };
        for (auto const& polygon : reader.surfaces()[surface].walkable) {
            add(polygon.outline);
            for (auto const& hole : polygon.holes) add(hole);
        }
    }
}

bool Proximity::are_close(AgentFrame const& a, AgentFrame const& b) const {
    Point const from = place_of(a);
    Point const to = place_of(b);
    if (std::hypot(to.x - from.x, to.z - from.z) > distance_) return false;
    return std::ranges::none_of(walls_[a.surface], [&](Segment wall) {
        return cross_each_other(wall, {from, to}, Touching::COUNTS_NOT);
    });
}

std::vector<std::pair<std::size_t, std::size_t>> Proximity::pairs(std::span<AgentFrame const> persons) const {
    // Sorted by surface and x, so that those close to a person follow it within the distance.
    std::vector<std::size_t> order(persons.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {},
                             [&](std::size_t i) { return std::make_tuple(persons[i].surface, persons[i].x); });
    std::vector<std::pair<std::size_t, std::size_t>> found;
    for (std::size_t i = 0; i < order.size(); ++i) {
        auto const& person = persons[order[i]];
        for (std::size_t j = i + 1; j < order.size(); ++j) {
            auto const& other = persons[order[j]];
            bool const in_reach = other.surface == person.surface &&
                                  static_cast<double>(other.x) - static_cast<double>(person.x) <= distance_;
            if (!in_reach) break;
            if (are_close(person, other)) found.emplace_back(std::minmax(order[i], order[j]));
        }
    }
    std::ranges::sort(found);
    return found;
}

std::vector<int> Proximity::counts(std::span<AgentFrame const> persons) const {
    std::vector<int> counts(persons.size());
    for (auto const& [a, b] : pairs(persons)) {
        ++counts[a];
        ++counts[b];
    }
    return counts;
}

}  // namespace pedflux::engine
