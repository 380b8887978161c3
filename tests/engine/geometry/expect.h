#pragma once

#include "tests/engine/refusal.h"

#include <pedflux/vectors.h>

#include <cmath>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pedflux {

/// How GoogleTest shows vectors.
inline void PrintTo(Vec2d const& vector, std::ostream* stream) {
    *stream << "(" << vector.GetX() << ", " << vector.GetZ() << ")";
}
inline void PrintTo(Vec3d const& vector, std::ostream* stream) {
    *stream << "(" << vector.GetX() << ", " << vector.GetY() << ", " << vector.GetZ() << ")";
}

}  // namespace pedflux

namespace pedflux::test {

inline void expect_near(Vec3d const& actual, Vec3d const& expected, double tolerance = 1e-9) {
    Vec3d const difference(actual.GetX() - expected.GetX(), actual.GetY() - expected.GetY(),
                           actual.GetZ() - expected.GetZ());
    EXPECT_LE(Vec3d(difference).GetLength(), tolerance)
        << ::testing::PrintToString(actual) << " is not " << ::testing::PrintToString(expected);
}

/// The same numbers at every run.
class Random {
  public:
    explicit Random(std::uint64_t seed) : generator_(seed) {}

    double between(double low, double high) { return std::uniform_real_distribution(low, high)(generator_); }
    std::size_t below(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(generator_);
    }
    Vec3d point(double reach) { return {between(-reach, reach), between(-reach, reach), between(-reach, reach)}; }

  private:
    std::mt19937_64 generator_;
};

}  // namespace pedflux::test
