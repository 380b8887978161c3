#include "engine/base/checks.h"
#include "engine/base/hashing.h"
#include "engine/transport/elevator_states.h"

#include <pedflux/elevators.h>

#include <string>
#include <utility>

#include <fmt/format.h>

// Stops, services and calls. Equality, order and hash of each come from one list of its members, so that they agree.
namespace pedflux {

namespace {

std::uint64_t hash_of(std::string const& text) {
    std::uint64_t hash = text.size();
    for (char const byte : text) hash = engine::mixed(hash + static_cast<unsigned char>(byte) + 1);
    return hash;
}

std::uint64_t bits_of(int number) { return static_cast<std::uint32_t>(number); }

template <class Number>
int compared(Number a, Number b) {
    return (a > b) - (a < b);
}

int first_difference(std::initializer_list<int> comparisons) {
    for (int const comparison : comparisons) {
        if (comparison != 0) return comparison;
    }
    return 0;
}

ElevatorDirection checked(ElevatorDirection direction) {
    if (engine::name_of_value(direction).empty()) {
        engine::refuse(fmt::format("ElevatorService: direction must be one of {}, not {}",
                                   engine::names_of<ElevatorDirection>(), static_cast<int>(direction)));
    }
    return direction;
}

}  // namespace

#define COPIES(Class)                                \
    Class::~Class() = default;                       \
    Class::Class(Class const&) = default;            \
    Class::Class(Class&&) noexcept = default;        \
    Class& Class::operator=(Class const&) = default; \
    Class& Class::operator=(Class&&) noexcept = default;

COPIES(ElevatorStop)
COPIES(ElevatorService)
COPIES(ElevatorCall)

ElevatorStop::ElevatorStop() = default;
ElevatorStop::ElevatorStop(std::string name) : name_(std::move(name)) {}
bool ElevatorStop::IsValid() { return !name_.empty(); }
void ElevatorStop::SetInvalid() { name_.clear(); }
std::string ElevatorStop::GetString() { return name_; }
bool ElevatorStop::InternalEquals(ElevatorStop const& other) const { return InternalCompare(other) == 0; }
int ElevatorStop::InternalCompare(ElevatorStop const& other) const { return compared(name_.compare(other.name_), 0); }
int ElevatorStop::InternalHashCode() const { return engine::hash_of_words({hash_of(name_)}); }

ElevatorService::ElevatorService() = default;
ElevatorService::ElevatorService(ElevatorStop const& stop, ElevatorDirection direction)
    : stop_(stop), direction_(checked(direction)) {}
ElevatorStop ElevatorService::GetStop() { return stop_; }
ElevatorDirection ElevatorService::GetDirection() { return direction_; }
bool ElevatorService::IsValid() { return stop_.IsValid(); }
std::string ElevatorService::GetString() {
    return stop_.GetString() + " " + std::string(engine::name_of_value(direction_));
}
bool ElevatorService::InternalEquals(ElevatorService const& other) const { return InternalCompare(other) == 0; }
int ElevatorService::InternalCompare(ElevatorService const& other) const {
    return first_difference({stop_.InternalCompare(other.stop_), compared(direction_, other.direction_)});
}
int ElevatorService::InternalHashCode() const {
    return engine::hash_of_words({bits_of(stop_.InternalHashCode()), bits_of(static_cast<int>(direction_))});
}

ElevatorCall::ElevatorCall() = default;
ElevatorCall::ElevatorCall(ElevatorStop origin, ElevatorDirection direction, std::optional<ElevatorStop> destination,
                           std::optional<int> callerId)
    : origin_(std::move(origin)), direction_(direction), destination_(std::move(destination)), callerId_(callerId) {}
ElevatorStop ElevatorCall::GetOriginStop() { return origin_; }
ElevatorStop ElevatorCall::GetDestinationStop() { return destination_.value_or(ElevatorStop()); }
bool ElevatorCall::HasDestinationStop() { return destination_.has_value(); }
int ElevatorCall::GetCallerId() {
    if (!callerId_) engine::refuse("ElevatorCall: the caller is not known; HasCallerId tells whether it is");
    return *callerId_;
}
bool ElevatorCall::HasCallerId() { return callerId_.has_value(); }
ElevatorDirection ElevatorCall::GetTripDirection() { return direction_; }
bool ElevatorCall::IsValid() { return origin_.IsValid(); }
std::string ElevatorCall::GetString() {
    return origin_.GetString() +
           (destination_ ? " to " + destination_->GetString() : " " + std::string(engine::name_of_value(direction_))) +
           (callerId_ ? " by " + std::to_string(*callerId_) : "");
}
bool ElevatorCall::InternalEquals(ElevatorCall const& other) const { return InternalCompare(other) == 0; }
int ElevatorCall::InternalCompare(ElevatorCall const& other) const {
    auto const stop = [](std::optional<ElevatorStop> const& known) { return known.value_or(ElevatorStop()); };
    return first_difference({origin_.InternalCompare(other.origin_),
                             compared(destination_.has_value(), other.destination_.has_value()),
                             stop(destination_).InternalCompare(stop(other.destination_)),
                             compared(direction_, other.direction_), compared(callerId_, other.callerId_)});
}
int ElevatorCall::InternalHashCode() const {
    return engine::hash_of_words({bits_of(origin_.InternalHashCode()), bits_of(destination_.has_value()),
                                  destination_ ? bits_of(destination_->InternalHashCode()) : 0,
                                  bits_of(static_cast<int>(direction_)), bits_of(callerId_.has_value()),
                                  bits_of(callerId_.value_or(0))});
}

}  // namespace pedflux
