#include "bindings/table.h"

#include <pedflux/distributions.h>

namespace pedflux::jni {

CLASS(Distribution)
CREATE(Distribution, Constant)
CREATE(Distribution, Uniform)
CREATE(Distribution, Triangular)
CREATE(Distribution, Normal)
CREATE(Distribution, LogNormal)
CREATE(Distribution, Exponential)
CREATE(Distribution, Discrete)
GET(Distribution, Min)
GET(Distribution, Max)
GET(Distribution, Mean)
IS(Distribution, Valid)
GET(Distribution, DistributionType)

CLASS(ConstantDistribution, Distribution)
CONSTRUCTOR(ConstantDistribution, double)
IS(ConstantDistribution, Valid)
GET(ConstantDistribution, DistributionType)
PROPERTY(ConstantDistribution, Value)

CLASS(UniformDistribution, Distribution)
CONSTRUCTOR(UniformDistribution, double, double)
IS(UniformDistribution, Valid)
GET(UniformDistribution, DistributionType)
SET(UniformDistribution, Min)
SET(UniformDistribution, Max)

CLASS(TriangularDistribution, Distribution)
CONSTRUCTOR(TriangularDistribution, double, double, double)
IS(TriangularDistribution, Valid)
GET(TriangularDistribution, DistributionType)
PROPERTY(TriangularDistribution, Mode)
SET(TriangularDistribution, Min)
SET(TriangularDistribution, Max)

CLASS(NormalDistribution, Distribution)
CONSTRUCTOR(NormalDistribution, double, double, double, double)
IS(NormalDistribution, Valid)
GET(NormalDistribution, DistributionType)
PROPERTY(NormalDistribution, Mu)
PROPERTY(NormalDistribution, Sigma)
SET(NormalDistribution, Min)
SET(NormalDistribution, Max)

CLASS(LogNormalDistribution, Distribution)
CONSTRUCTOR(LogNormalDistribution, double, double, double, double)
IS(LogNormalDistribution, Valid)
GET(LogNormalDistribution, DistributionType)
PROPERTY(LogNormalDistribution, Mu)
PROPERTY(LogNormalDistribution, Sigma)
PROPERTY(LogNormalDistribution, Shift)
SET(LogNormalDistribution, Max)

CLASS(ExponentialDistribution, Distribution)
CONSTRUCTOR(ExponentialDistribution, double, double, double)
IS(ExponentialDistribution, Valid)
GET(ExponentialDistribution, DistributionType)
PROPERTY(ExponentialDistribution, Rate)
PROPERTY(ExponentialDistribution, Scale)
PROPERTY(ExponentialDistribution, Shift)
SET(ExponentialDistribution, Max)

CLASS(DiscreteDistribution, Distribution)
CONSTRUCTOR(DiscreteDistribution, std::vector<double> const&, std::vector<double> const&)
IS(DiscreteDistribution, Valid)
GET(DiscreteDistribution, DistributionType)
GET(DiscreteDistribution, Values)
GET(DiscreteDistribution, Weights)
SET(DiscreteDistribution, ValuesAndWeights)

}  // namespace pedflux::jni
