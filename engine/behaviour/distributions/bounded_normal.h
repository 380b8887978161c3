#pragma once

#include "engine/base/random.h"

namespace pedflux::engine {

/// The mean of a standard normal variable known to lie between the bounds; a bound may be infinite.
///
/// (φ(a) - φ(b)) / (Φ(b) - Φ(a)): Johnson, Kotz and Balakrishnan, "Continuous Univariate Distributions", volume 1,
/// second edition (1994), section 13.10.1. In the tails, where both differences vanish, the same quotient is taken by
/// Mills' ratio, and over narrow intervals by Gauss-Legendre quadrature, so that the result keeps full precision
/// everywhere.
double mean_of_bounded_normal(double lower, double upper);

/// Mills' ratio (1 - Φ(x)) / φ(x) of the standard normal distribution, for x of at least 0: the chance of exceeding x
/// in units of the density there, which stays well above 0 where both have long vanished.
double mills_ratio(double x);

/// The density at x in units of the chance of a value below it, φ(x) / Φ(x), for any x.
double inverse_mills_ratio(double x);

/// The chance that a standard normal variable is below x.
double normal_probability_below(double x);

/// Draws a standard normal variable that lies between the bounds; a bound may be infinite. Exact: the candidates are
/// accepted by the densities' ratio (Robert, "Simulation of truncated normal variables", Statistics and Computing 5,
/// 1995), about every second one at worst, however far out the bounds lie.
double draw_bounded_normal(double lower, double upper, Random& random);

}  // namespace pedflux::engine
