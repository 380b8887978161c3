#include "engine/base/checks.h"

#include <pedflux/value_pairs.h>

namespace pedflux {

IdValuePair::IdValuePair() = default;
IdValuePair::IdValuePair(GlobalId const& id, double value)
    : id_(id), value_(engine::require_finite("value of the pair", value)) {}

GlobalId IdValuePair::GetId() { return id_; }
void IdValuePair::SetId(GlobalId const& id) { id_ = id; }
double IdValuePair::GetValue() const { return value_; }
void IdValuePair::SetValue(double value) { value_ = engine::require_finite("value of the pair", value); }

DurationValuePair::DurationValuePair() = default;
DurationValuePair::DurationValuePair(double durationInSeconds, double value)
    : durationInSeconds_(engine::require_not_negative("duration of the pair", durationInSeconds)),
      value_(engine::require_finite("value of the pair", value)) {}

double DurationValuePair::GetDurationInSeconds() const { return durationInSeconds_; }
void DurationValuePair::SetDurationInSeconds(double durationInSeconds) {
    durationInSeconds_ = engine::require_not_negative("duration of the pair", durationInSeconds);
}
double DurationValuePair::GetValue() const { return value_; }
void DurationValuePair::SetValue(double value) { value_ = engine::require_finite("value of the pair", value); }

}  // namespace pedflux
