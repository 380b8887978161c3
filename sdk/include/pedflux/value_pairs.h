#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>

namespace pedflux {

/// A project object and a number that belongs to it, such as the weight of a destination.
class PEDFLUX_API IdValuePair {
  public:
    /// No object, and 0.
    IdValuePair();
    /// Throws Exception when the value is not finite.
    IdValuePair(GlobalId const& id, double value);

    GlobalId GetId();
    void SetId(GlobalId const& id);
    double GetValue() const;
    /// Throws Exception when the value is not finite.
    void SetValue(double value);

  private:
    GlobalId id_;
    double value_ = 0;
};

/// A time span and a number that belongs to it, such as the persons who arrive within it.
class PEDFLUX_API DurationValuePair {
  public:
    /// 0 seconds, and 0.
    DurationValuePair();
    /// Throws Exception when the duration is negative or one of both is not finite.
    DurationValuePair(double durationInSeconds, double value);

    double GetDurationInSeconds() const;
    /// Throws Exception when the duration is negative or not finite.
    void SetDurationInSeconds(double durationInSeconds);
    double GetValue() const;
    /// Throws Exception when the value is not finite.
    void SetValue(double value);

  private:
    double durationInSeconds_ = 0;
    double value_ = 0;
};

}  // namespace pedflux
