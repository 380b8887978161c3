#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace pedflux::engine {

/// A reproducible sequence of random numbers: the same seed and stream give the same numbers on every platform, and the
/// streams of one seed are independent of each other.
///
/// The generator is PCG-XSH-RR 64/32 (O'Neill, "PCG: A Family of Simple Fast Space-Efficient Statistically Good
/// Algorithms for Random Number Generation", 2014). The distributions of the standard library are avoided because their
/// results depend on the implementation.
class Random {
  public:
    Random(std::uint64_t seed, std::uint64_t stream);

    /// 32 uniform bits.
    std::uint32_t bits();

    /// A uniform number of the open interval (0, 1), with 52 random bits.
    double uniform();

    /// A uniform integer from 0 to count - 1, without bias. The count is at least 1.
    std::uint32_t below(std::uint32_t count);

  private:
    std::uint64_t state_ = 0;
    std::uint64_t increment_;
};

/// Shuffles the values (Fisher and Yates); every order is equally likely.
template <class Value>
void shuffle(std::vector<Value>& values, Random& random) {
    for (auto remaining = values.size(); remaining > 1; --remaining) {
        auto const chosen = random.below(static_cast<std::uint32_t>(remaining));
        std::swap(values[remaining - 1], values[chosen]);
    }
}

/// Draws an index with a probability proportional to its weight. At least one weight is positive, none is negative.
std::size_t draw_weighted(std::vector<double> const& weights, Random& random);

}  // namespace pedflux::engine
