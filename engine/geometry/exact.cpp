#include "engine/geometry/exact.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace pedflux::engine {

namespace {

int sign_of(double value) { return (value > 0) - (value < 0); }

/// A sum of doubles that do not overlap, the largest last, so that the last one that is not 0 has the sum's sign.
class ExactSum {
  public:
    void add_product(double a, double b) {
        double const product = a * b;
        add(std::fma(a, b, -product));
        add(product);
    }

    int sign() const {
        for (std::size_t i = count_; i > 0; --i)
            if (parts_[i - 1] != 0) return sign_of(parts_[i - 1]);
        return 0;
    }

  private:
    void add(double value) {
        for (std::size_t i = 0; i < count_; ++i) {
            double const sum = parts_[i] + value;
            double const value_in_sum = sum - parts_[i];
            parts_[i] = (parts_[i] - (sum - value_in_sum)) + (value - value_in_sum);
            value = sum;
        }
        parts_[count_++] = value;
    }

    std::array<double, 12> parts_{};
    std::size_t count_ = 0;
};

}  // namespace

int exact_orientation(Point a, Point b, Point c) {
    double const left = (b.x - a.x) * (c.z - a.z);
    double const right = (b.z - a.z) * (c.x - a.x);
    constexpr double epsilon = std::numeric_limits<double>::epsilon() / 2;
    double const error = (3 + 16 * epsilon) * epsilon * (std::abs(left) + std::abs(right));
    if (std::abs(left - right) > error) return sign_of(left - right);
    ExactSum sum;
    sum.add_product(a.x, b.z);
    sum.add_product(-a.z, b.x);
    sum.add_product(b.x, c.z);
    sum.add_product(-b.z, c.x);
    sum.add_product(c.x, a.z);
    sum.add_product(-c.z, a.x);
    return sum.sign();
}

}  // namespace pedflux::engine
