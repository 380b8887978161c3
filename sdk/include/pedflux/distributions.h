#pragma once

#include <pedflux/api.h>

#include <memory>
#include <vector>

namespace pedflux {

namespace engine {
struct DistributionAccess;
}

class ConstantDistribution;
class UniformDistribution;
class TriangularDistribution;
class NormalDistribution;
class LogNormalDistribution;
class ExponentialDistribution;
class DiscreteDistribution;

/// The kinds of distribution.
enum class DistributionType : int {
    CONSTANT = 0,     ///< `ConstantDistribution`
    UNIFORM = 1,      ///< `UniformDistribution`
    TRIANGULAR = 2,   ///< `TriangularDistribution`
    NORMAL = 3,       ///< `NormalDistribution`
    LOG_NORMAL = 4,   ///< `LogNormalDistribution`
    EXPONENTIAL = 5,  ///< `ExponentialDistribution`
    DISCRETE = 6,     ///< `DiscreteDistribution`
};

/// A random quantity: how long people wait, how many come, how fast they walk. The unit is that of the quantity it is
/// used for: seconds for durations, metres per second for speeds, persons for counts.
///
/// Constructors, factories and setters refuse what can never be right (a number that is not finite, a sigma, rate or
/// scale of 0 or less, a negative weight) with an Exception. What depends on several parameters, such as the order of
/// min and max, is stored as given, so that parameters can be changed one after the other; `IsValid` tells whether they
/// fit together.
///
/// Bounded laws are truncated: values outside the bounds never occur and those inside keep their relative chances.
class PEDFLUX_API Distribution {
  public:
    virtual ~Distribution();
    Distribution(Distribution const&) = delete;
    Distribution& operator=(Distribution const&) = delete;

    /// The least possible value, as it was given.
    /// @throws Exception for a discrete distribution without a value of positive weight
    virtual double GetMin();
    /// The greatest possible value, as it was given.
    /// @throws Exception for a discrete distribution without a value of positive weight
    virtual double GetMax();
    /// The expected value, the bounds taken into account.
    /// @throws Exception for a distribution that is not valid
    virtual double GetMean();
    /// Whether the parameters fit together: min <= mode <= max, shift <= max, at least one value with a weight above 0.
    virtual bool IsValid();
    /// The kind of distribution.
    virtual DistributionType GetDistributionType();

    /// Always the value.
    static std::shared_ptr<ConstantDistribution> CreateConstant(double value);
    /// Equal chances from min to max.
    static std::shared_ptr<UniformDistribution> CreateUniform(double min, double max);
    /// Chances that rise from min to mode and fall to max.
    static std::shared_ptr<TriangularDistribution> CreateTriangular(double min, double mode, double max);
    /// A normal distribution of mean mu and standard deviation sigma, truncated to min and max.
    static std::shared_ptr<NormalDistribution> CreateNormal(double mu, double sigma, double min, double max);
    /// shift + exp(Y) with Y normal of mean mu and standard deviation sigma, truncated to values up to max.
    static std::shared_ptr<LogNormalDistribution> CreateLogNormal(double mu, double sigma, double shift, double max);
    /// shift + Y with Y exponential of the given rate, truncated to values up to max.
    static std::shared_ptr<ExponentialDistribution> CreateExponential(double rate, double shift, double max);
    /// One of the values, with chances in proportion to the weights, one weight for each value.
    static std::shared_ptr<DiscreteDistribution> CreateDiscrete(std::vector<double> const& values,
                                                                std::vector<double> const& weights);

  protected:
    struct State;
    explicit Distribution(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;

  private:
    friend engine::DistributionAccess;
};

/// One value that always comes.
class PEDFLUX_API ConstantDistribution : public Distribution {
  public:
    /// @param value any finite number
    explicit ConstantDistribution(double value);

    /// The value.
    double GetValue() const;
    /// Changes the value.
    void SetValue(double value);
};

/// All values from min to max with equal chances. The mean is (min + max) / 2.
class PEDFLUX_API UniformDistribution : public Distribution {
  public:
    /// @param min the least value
    /// @param max the greatest value
    UniformDistribution(double min, double max);

    /// Changes the least value.
    void SetMin(double min);
    /// Changes the greatest value.
    void SetMax(double max);
};

/// Values from min to max, most often near the mode. The mean is (min + mode + max) / 3.
class PEDFLUX_API TriangularDistribution : public Distribution {
  public:
    /// @param min the least value
    /// @param mode the most frequent value
    /// @param max the greatest value
    TriangularDistribution(double min, double mode, double max);

    /// The most frequent value.
    double GetMode() const;
    /// Changes the least value.
    void SetMin(double min);
    /// Changes the most frequent value.
    void SetMode(double mode);
    /// Changes the greatest value.
    void SetMax(double max);
};

/// The bell curve, truncated to min and max.
///
/// With a = (min - mu) / sigma, b = (max - mu) / sigma, φ and Φ the density and the distribution function of the
/// standard normal law, the mean is mu + sigma (φ(a) - φ(b)) / (Φ(b) - Φ(a)). Source: Johnson, Kotz and Balakrishnan,
/// "Continuous Univariate Distributions", volume 1, second edition (1994), section 13.10.1.
class PEDFLUX_API NormalDistribution : public Distribution {
  public:
    /// @param mu the mean before truncation
    /// @param sigma the standard deviation before truncation, above 0
    /// @param min the least value
    /// @param max the greatest value
    NormalDistribution(double mu, double sigma, double min, double max);

    /// The mean before truncation.
    double GetMu() const;
    /// The standard deviation before truncation.
    double GetSigma() const;
    /// Changes the mean before truncation.
    void SetMu(double mu);
    /// Changes the standard deviation before truncation, above 0.
    void SetSigma(double sigma);
    /// Changes the least value.
    void SetMin(double min);
    /// Changes the greatest value.
    void SetMax(double max);
};

/// shift + exp(Y) with Y normal of mean mu and standard deviation sigma, truncated to values up to max: waits and
/// service times that are mostly short and now and then long. Mu and sigma describe the logarithm, not the quantity
/// itself. The least value is shift.
///
/// With b = (ln(max - shift) - mu) / sigma the mean is shift + exp(mu + sigma²/2) Φ(b - sigma) / Φ(b). Source: Johnson,
/// Kotz and Balakrishnan, "Continuous Univariate Distributions", volume 1, second edition (1994), chapter 14.
class PEDFLUX_API LogNormalDistribution : public Distribution {
  public:
    /// @param mu the mean of the logarithm before truncation
    /// @param sigma the standard deviation of the logarithm before truncation, above 0
    /// @param shift the least value, added to the exponential
    /// @param max the greatest value, the shift included
    LogNormalDistribution(double mu, double sigma, double shift, double max);

    /// The mean of the logarithm before truncation.
    double GetMu() const;
    /// The standard deviation of the logarithm before truncation.
    double GetSigma() const;
    /// The least value.
    double GetShift() const;
    /// Changes the mean of the logarithm before truncation.
    void SetMu(double mu);
    /// Changes the standard deviation of the logarithm before truncation, above 0.
    void SetSigma(double sigma);
    /// Changes the least value.
    void SetShift(double shift);
    /// Changes the greatest value.
    void SetMax(double max);
};

/// shift + Y with Y exponential, truncated to values up to max: the gaps between independent arrivals. The least value
/// is shift.
///
/// With L = max - shift the mean is shift + 1 / rate - L / (exp(rate L) - 1). Source: Johnson, Kotz and Balakrishnan,
/// "Continuous Univariate Distributions", volume 1, second edition (1994), chapter 19.
class PEDFLUX_API ExponentialDistribution : public Distribution {
  public:
    /// @param rate the reciprocal of the mean of Y before truncation, above 0
    /// @param shift the least value
    /// @param max the greatest value, the shift included
    ExponentialDistribution(double rate, double shift, double max);

    /// The reciprocal of the scale.
    double GetRate() const;
    /// The mean of Y before truncation, the reciprocal of the rate.
    double GetScale() const;
    /// The least value.
    double GetShift() const;
    /// Changes the rate, above 0.
    void SetRate(double rate);
    /// Changes the rate to the reciprocal of the scale, which is above 0.
    void SetScale(double scale);
    /// Changes the least value.
    void SetShift(double shift);
    /// Changes the greatest value.
    void SetMax(double max);
};

/// A list of values, each with a weight: its chance is the weight divided by the sum of all. The mean is the weighted
/// mean of the values; least and greatest value are taken over those with a weight above 0.
class PEDFLUX_API DiscreteDistribution : public Distribution {
  public:
    /// @param values the possible values
    /// @param weights one for each value, 0 or more; all 0 or none at all makes the distribution not valid
    /// @throws Exception when the two lists differ in length
    DiscreteDistribution(std::vector<double> const& values, std::vector<double> const& weights);

    /// The values, in the order given.
    std::vector<double> GetValues();
    /// The weights, in the order of the values.
    std::vector<double> GetWeights();
    /// Replaces values and weights together; both stay as they are when the new ones are refused.
    void SetValuesAndWeights(std::vector<double> const& values, std::vector<double> const& weights);
};

}  // namespace pedflux
