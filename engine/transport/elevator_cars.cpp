#include "engine/base/checks.h"
#include "engine/transport/car.h"

#include <pedflux/agents.h>
#include <pedflux/elevators.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <fmt/format.h>

namespace pedflux {

using engine::Car;
using engine::CarController;
using engine::CarStop;

namespace {

std::string title_of(Car const& car) { return "ElevatorCar '" + car.name + "'"; }

std::size_t require_stop(Car const& car, ElevatorStop stop) {
    auto const found = engine::index_of_stop(car, stop.GetString());
    if (!found) {
        std::string names;
        for (auto const& own : car.stops) names += (names.empty() ? "" : ", ") + own.name;
        engine::refuse(fmt::format("{}: the stop must be one of {}, not '{}'", title_of(car), names, stop.GetString()));
    }
    return *found;
}
CarStop const& stop_in(Car const& car, ElevatorStop const& stop) { return car.stops[require_stop(car, stop)]; }

CarStop const* find_floor(Car const& car, GlobalId const& floor) {
    auto const found =
        std::ranges::find_if(car.stops, [&](CarStop const& stop) { return stop.floor.InternalEquals(floor); });
    return found == car.stops.end() ? nullptr : &*found;
}

CarController& controller_of(Car const& car) {
    auto const controller = car.controller.lock();
    if (!controller) engine::refuse(fmt::format("{}: its simulation has ended", title_of(car)));
    return *controller;
}

template <class Enumeration>
void require_named(std::string const& who, std::string const& what, Enumeration value) {
    if (engine::name_of_value(value).empty()) {
        engine::refuse(fmt::format("{}: {} must be one of {}, not {}", who, what, engine::names_of<Enumeration>(),
                                   static_cast<int>(value)));
    }
}

}  // namespace

namespace engine {

std::shared_ptr<ElevatorCar> handle_of(std::shared_ptr<Car> const& car) { return std::make_shared<ElevatorCar>(car); }

}  // namespace engine

ElevatorCar::ElevatorCar(std::shared_ptr<Car> car) : car_(std::move(car)) {}
ElevatorCar::~ElevatorCar() = default;

// Properties of a moving car.
#define LIVE(Type, Name, what) \
    Type ElevatorCar::Name() { engine::refuse_live(title_of(*car_), what); }

LIVE(bool, IsMoving, "whether it moves")
LIVE(int, GetPopulation, "how many people are in it")
LIVE(int, GetAvailableCapacity, "for how many people there is room")
LIVE(double, GetElevation, "its elevation")
LIVE(double, GetSpeed, "its speed")
LIVE(double, GetAcceleration, "its acceleration")
LIVE(Vec3d, GetPositionOfCarCentre, "its position")
LIVE(ElevatorDirection, GetMovementDirection, "the direction of its movement")
LIVE(ElevatorDirection, GetServiceDirection, "the direction of its service")
LIVE(ElevatorDoorState, GetElevatorDoorState, "the state of its doors")
LIVE(ElevatorStop, GetCurrentStop, "its current stop")
LIVE(bool, HasCurrentStop, "whether it is at a stop")
LIVE(void, ActivateDoorOpenSensor, "what opens its doors")

#define LIVE_AT_STOP(Name, what)                       \
    bool ElevatorCar::Name(ElevatorStop const& stop) { \
        require_stop(*car_, stop);                     \
        engine::refuse_live(title_of(*car_), what);    \
    }

LIVE_AT_STOP(IsAtStop, "whether it is at the stop")
LIVE_AT_STOP(IsArrivingAtStop, "whether it arrives at the stop")
LIVE_AT_STOP(IsOpenAtStop, "whether it is open at the stop")

GlobalId ElevatorCar::GetId() { return car_->elevator; }
bool ElevatorCar::IsValid() { return car_->stops.size() >= 2; }
int ElevatorCar::GetTotalCapacity() { return car_->capacity; }
ElevatorControlStyle ElevatorCar::GetElevatorControlStyle() { return GetController()->GetElevatorControlStyle(); }
ElevatorOperationTypeId ElevatorCar::GetElevatorOperationTypeId() { return controller_of(*car_).operation; }
ElevatorComputer ElevatorCar::GetComputerType() { return car_->computer; }
void ElevatorCar::SetComputerType(ElevatorComputer computer) {
    require_named(title_of(*car_), "the computer", computer);
    car_->computer = computer;
}

// Stops.

std::vector<ElevatorStop> ElevatorCar::GetAllStops() {
    std::vector<ElevatorStop> stops;
    for (auto const& stop : car_->stops) stops.emplace_back(stop.name);
    return stops;
}
bool ElevatorCar::HasStop(ElevatorStop const& stop) {
    return engine::index_of_stop(*car_, ElevatorStop(stop).GetString()).has_value();
}
std::string ElevatorCar::GetStopName(ElevatorStop const& stop) { return stop_in(*car_, stop).name; }
double ElevatorCar::GetStopElevation(ElevatorStop const& stop) { return stop_in(*car_, stop).elevation; }
GlobalId ElevatorCar::GetFloorForStop(ElevatorStop const& stop) { return stop_in(*car_, stop).floor; }
bool ElevatorCar::HasStopForFloor(GlobalId const& floor) { return find_floor(*car_, floor) != nullptr; }
bool ElevatorCar::HasStopForFloor(std::string const& floorName) { return HasStop(ElevatorStop(floorName)); }
ElevatorStop ElevatorCar::GetStopForFloor(GlobalId const& floor) {
    auto const* const stop = find_floor(*car_, floor);
    if (stop == nullptr) {
        engine::refuse(
            fmt::format("{}: it does not serve the floor '{}'", title_of(*car_), GlobalId(floor).GetString()));
    }
    return ElevatorStop(stop->name);
}
ElevatorStop ElevatorCar::GetStopForFloor(std::string const& floorName) {
    return ElevatorStop(stop_in(*car_, ElevatorStop(floorName)).name);
}
ElevatorDirection ElevatorCar::GetDirectionOfTrip(ElevatorStop const& from, ElevatorStop const& to) {
    return engine::direction_between(stop_in(*car_, from), stop_in(*car_, to));
}
double ElevatorCar::GetTravelTimeInSeconds(ElevatorStop const& from, ElevatorStop const& to) {
    return engine::travel_time(car_->limits, std::abs(stop_in(*car_, to).elevation - stop_in(*car_, from).elevation));
}

ElevatorStop ElevatorCar::GetRestStop() {
    return car_->rest_stop ? ElevatorStop(car_->stops[*car_->rest_stop].name) : ElevatorStop();
}
bool ElevatorCar::HasRestStop() { return car_->rest_stop.has_value(); }
void ElevatorCar::SetRestStop(ElevatorStop const& stop) { car_->rest_stop = require_stop(*car_, stop); }
void ElevatorCar::ClearRestStop() { car_->rest_stop.reset(); }

// Services.

std::vector<ElevatorService> ElevatorCar::GetServiceList() { return car_->services; }
std::vector<ElevatorService> ElevatorCar::ClearServiceList() { return std::exchange(car_->services, {}); }
bool ElevatorCar::IsServiceListEmpty() { return car_->services.empty(); }
ElevatorService ElevatorCar::GetNextInServiceList() {
    return car_->services.empty() ? ElevatorService() : car_->services.front();
}
bool ElevatorCar::HasServiceInServiceList(ElevatorService const& service) {
    return std::ranges::any_of(car_->services,
                               [&](ElevatorService const& other) { return other.InternalEquals(service); });
}
bool ElevatorCar::HasStopInServiceList(ElevatorStop const& stop) {
    return std::ranges::any_of(car_->services,
                               [&](ElevatorService other) { return other.GetStop().InternalEquals(stop); });
}
bool ElevatorCar::HasStopInServiceList(ElevatorStop const& stop, ElevatorDirection direction) {
    return HasServiceInServiceList({stop, direction});
}
void ElevatorCar::AddServiceToServiceList(ElevatorService const& service) {
    require_stop(*car_, ElevatorService(service).GetStop());
    if (!HasServiceInServiceList(service)) car_->services.push_back(service);
}
void ElevatorCar::AddStopToServiceList(ElevatorStop const& stop, ElevatorDirection direction) {
    AddServiceToServiceList({stop, direction});
}
void ElevatorCar::AddStopToServiceList(ElevatorStop const& stop) {
    AddServiceToServiceList({stop, ElevatorDirection::NONE});
}
void ElevatorCar::AddTripToServiceList(ElevatorStop const& from, ElevatorStop const& to) {
    auto const direction = GetDirectionOfTrip(from, to);
    AddStopToServiceList(from, direction);
    AddStopToServiceList(to, direction);
}

// Control and access.

bool ElevatorCar::AssumeControl() { return !std::exchange(car_->manual_control, true); }
bool ElevatorCar::ReleaseControl() { return std::exchange(car_->manual_control, false); }
bool ElevatorCar::HasManualControl() { return car_->manual_control; }
std::shared_ptr<ElevatorController> ElevatorCar::GetController() {
    controller_of(*car_);
    return std::make_shared<ElevatorController>(car_->controller.lock());
}

std::vector<std::shared_ptr<Agent>> ElevatorCar::GetManualAccessAgents() {
    return car_->manual_access ? car_->manual_access->agents : std::vector<std::shared_ptr<Agent>>();
}
void ElevatorCar::SetManualAccessAgents(std::vector<std::shared_ptr<Agent>> const& agents, double costWhenDenied) {
    engine::require_not_negative(title_of(*car_) + ": the cost when access is denied", costWhenDenied);
    for (std::size_t index = 0; index < agents.size(); ++index) {
        if (!agents[index]) {
            engine::refuse(fmt::format("{}: agent {} must be given, not empty", title_of(*car_), index));
        }
    }
    car_->manual_access = engine::ManualAccess{agents, costWhenDenied};
}
bool ElevatorCar::IsManualAccessAgent(std::shared_ptr<Agent> const& agent) {
    if (!car_->manual_access || !agent) return false;
    return std::ranges::any_of(car_->manual_access->agents,
                               [&](auto const& other) { return other->GetId() == agent->GetId(); });
}
bool ElevatorCar::HasManualAccess() { return car_->manual_access.has_value(); }
void ElevatorCar::ClearManualAccess() { car_->manual_access.reset(); }
double ElevatorCar::GetCostWhenManualAccessDenied() {
    return car_->manual_access ? car_->manual_access->cost_when_denied : engine::cost_when_denied;
}

double ElevatorCar::GetEffectiveCycleDuration() {
    if (car_->manual_cycle_duration) return *car_->manual_cycle_duration;
    if (car_->cycle_duration_override) return *car_->cycle_duration_override;
    if (car_->stops.empty()) return 0;
    double const height = car_->stops.back().elevation - car_->stops.front().elevation;
    return 2 * (engine::travel_time(car_->limits, height) + car_->door_cycle);
}
bool ElevatorCar::IsAutoEffectiveCycleDuration() { return !car_->manual_cycle_duration; }
void ElevatorCar::SetAutoEffectiveCycleDuration() { car_->manual_cycle_duration.reset(); }
void ElevatorCar::SetManualEffectiveCycleDuration(double seconds) {
    car_->manual_cycle_duration = engine::require_positive(title_of(*car_) + ": the cycle duration", seconds);
}

// Controllers.

namespace {

std::string title_of(CarController const& controller) { return "ElevatorController '" + controller.name + "'"; }

Car* find_car(CarController const& controller, GlobalId const& id) {
    auto const found =
        std::ranges::find_if(controller.cars, [&](auto const& car) { return car->elevator.InternalEquals(id); });
    return found == controller.cars.end() ? nullptr : found->get();
}

}  // namespace

ElevatorController::ElevatorController(std::shared_ptr<CarController> controller)
    : controller_(std::move(controller)) {}
ElevatorController::~ElevatorController() = default;

bool ElevatorController::IsValid() { return !controller_->cars.empty(); }
ElevatorControlStyle ElevatorController::GetElevatorControlStyle() {
    return controller_->manual_style.value_or(ElevatorControlStyle::DIRECTION_CALLS);
}
ElevatorOperationTypeId ElevatorController::GetElevatorOperationTypeId() { return controller_->operation; }
bool ElevatorController::HasManualControl() { return controller_->manual_style.has_value(); }
void ElevatorController::AssumeControl(ElevatorControlStyle style) {
    require_named(title_of(*controller_), "the control style", style);
    controller_->manual_style = style;
}
void ElevatorController::ReleaseControl() { controller_->manual_style.reset(); }

// Calls.
#define CALLS(Type, Name, ...) \
    Type ElevatorController::Name(__VA_ARGS__) { engine::refuse_live(title_of(*controller_), "who calls"); }

CALLS(std::vector<ElevatorCall>, GetTripCallsThisFrame)
CALLS(void, RegisterCallReceived, ElevatorCall const&)
CALLS(void, RegisterCallAssigned, ElevatorCall const&, GlobalId const&)
CALLS(void, AssignCallToElevatorCar, ElevatorCall const&, GlobalId const&)
CALLS(void, CallForTrip, int, ElevatorStop const&, ElevatorStop const&)
CALLS(void, ClearCallForTrip, ElevatorCall const&)
CALLS(void, ClearAllRegisteredCalls)
CALLS(void, DirectToTripDestination, GlobalId const&, ElevatorStop const&)
CALLS(bool, IsCallForTripRequired, int, ElevatorStop const&, ElevatorStop const&)
CALLS(bool, IsCarStartingTrip, GlobalId const&, int, ElevatorStop const&, ElevatorStop const&)
CALLS(bool, IsTripDestinationRequired, GlobalId const&, ElevatorStop const&)

bool ElevatorController::HasElevatorCar(GlobalId const& car) { return find_car(*controller_, car) != nullptr; }
bool ElevatorController::IsControllingElevatorCar(GlobalId const& car) {
    auto const* const found = find_car(*controller_, car);
    return found != nullptr && !found->manual_control;
}
ElevatorDirection ElevatorController::GetDirectionOfTrip(ElevatorStop const& from, ElevatorStop const& to) {
    auto const from_name = ElevatorStop(from).GetString();
    auto const to_name = ElevatorStop(to).GetString();
    for (auto const& car : controller_->cars) {
        auto const start = engine::index_of_stop(*car, from_name);
        auto const end = engine::index_of_stop(*car, to_name);
        if (start && end) return engine::direction_between(car->stops[*start], car->stops[*end]);
    }
    engine::refuse(
        fmt::format("{}: no car stops both at '{}' and at '{}'", title_of(*controller_), from_name, to_name));
}
bool ElevatorController::IsIgnoreDirectionWhenBoardingForTrip() { return controller_->ignore_direction; }
void ElevatorController::SetIgnoreDirectionWhenBoardingForTrip(bool ignore) { controller_->ignore_direction = ignore; }

}  // namespace pedflux
