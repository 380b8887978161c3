#include "engine/base/random.h"

#include <bit>
#include <numeric>

namespace pedflux::engine {

Random::Random(std::uint64_t seed, std::uint64_t stream) : increment_((stream << 1U) | 1U) {
    bits();
    state_ += seed;
    bits();
}

std::uint32_t Random::bits() {
    auto const old = state_;
    state_ = old * 6364136223846793005U + increment_;
    auto const mixed = static_cast<std::uint32_t>(((old >> 18U) ^ old) >> 27U);
    return std::rotr(mixed, static_cast<int>(old >> 59U));
}

double Random::uniform() {
    auto const high = static_cast<std::uint64_t>(bits()) << 20U;
    auto const low = static_cast<std::uint64_t>(bits()) >> 12U;
    return (static_cast<double>(high | low) + 0.5) * 0x1p-52;
}

// Lemire, "Fast Random Integer Generation in an Interval", ACM TOMACS 29 (2019).
std::uint32_t Random::below(std::uint32_t count) {
    auto const excess = (0U - count) % count;
    auto product = static_cast<std::uint64_t>(bits()) * count;
    while (static_cast<std::uint32_t>(product) < excess) product = static_cast<std::uint64_t>(bits()) * count;
    return static_cast<std::uint32_t>(product >> 32U);
}

std::size_t draw_weighted(std::vector<double> const& weights, Random& random) {
    auto remaining = random.uniform() * std::accumulate(weights.begin(), weights.end(), 0.0);
    std::size_t last_possible = 0;
    for (std::size_t index = 0; index < weights.size(); ++index) {
        if (weights[index] <= 0) continue;
        if (remaining < weights[index]) return index;
        remaining -= weights[index];
        last_possible = index;
    }
    return last_possible;
}

}  // namespace pedflux::engine
