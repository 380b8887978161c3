#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace pedflux::engine {

/// A reproducible sequence of random numbers: the same seed and stream give the same numbers on every platform. Streams
/// of one seed are independent of each other, so each event or agent may own one and none disturbs the next.
///
/// The generator is PCG-XSH-RR 64/32 (O'Neill, "PCG: A Family of Simple Fast Space-Efficient Statistically Good
/// Algorithms for Random Number Generation", 2014). The standard library's distributions are left alone on purpose:
/// their results differ from one implementation to the next.
class Random {
  public:
    Random(std::uint64_t seed, std::uint64_t stream);

    /// 32 uniform bits.
    std::uint32_t bits();

    /// A uniform number of the open interval (0, 1): never 0, never 1, 52 random bits.
    double uniform();

    /// A uniform number of 0, 1, … count - 1, without bias. The count is at least 1.
    std::uint32_t below(std::uint32_t count);

  private:
    std::uint64_t state_ = 0;
    std::uint64_t increment_;
};

/// Puts the values in random order (Fisher and Yates), each order equally likely.
template <class Value>
void shuffle(std::vector<Value>& values, Random& random) {
    for (auto remaining = values.size(); remaining > 1; --remaining) {
        auto const chosen = random.below(static_cast<std::uint32_t>(remaining));
        std::swap(values[remaining - 1], values[chosen]);
    }
}

/// The index of one weight, drawn with a chance proportional to it. At least one weight is above 0, none is below.
std::size_t draw_weighted(std::vector<double> const& weights, Random& random);

}  // namespace pedflux::engine
