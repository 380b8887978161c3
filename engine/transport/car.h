#pragma once

#include "engine/transport/elevator_states.h"
#include "engine/transport/lift_kinematics.h"

#include <pedflux/elevators.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The elevator cars of a simulation. Cars do not move yet, so this is their static part.
namespace pedflux::engine {

struct CarStop {
    std::string name;  ///< of the floor
    GlobalId floor;
    double elevation;  ///< metres
};

/// The agents that may use a car while a program controls access.
struct ManualAccess {
    std::vector<std::shared_ptr<Agent>> agents;
    double cost_when_denied;  ///< seconds
};

struct Car {
    GlobalId elevator;
    std::string name;
    std::vector<CarStop> stops;  ///< from the lowest to the highest
    LiftLimits limits{};
    double door_cycle = 0;                          ///< seconds for which the doors open, stay open unused and close
    int capacity = 1;                               ///< persons
    std::optional<double> cycle_duration_override;  ///< seconds, from the project
    std::weak_ptr<CarController> controller;

    ElevatorComputer computer = ElevatorComputer::COLLECTIVE;
    std::optional<std::size_t> rest_stop;
    std::vector<ElevatorService> services;
    bool manual_control = false;
    std::optional<ManualAccess> manual_access;
    std::optional<double> manual_cycle_duration;  ///< seconds
};

struct CarController {
    std::string name;  ///< of the bank or, without one, of the elevator
    ElevatorOperationTypeId operation = ElevatorOperationTypeId::CALL_ANSWER;
    std::vector<std::shared_ptr<Car>> cars;
    std::optional<ElevatorControlStyle> manual_style;  ///< while a program has control
    bool ignore_direction = false;
};

/// The controllers of all enabled elevators of a project, with their cars: one for each bank, and one for each elevator
/// without a bank. Throws Exception when a rest floor is none of the floors that its elevator serves.
std::vector<std::shared_ptr<CarController>> make_controllers(Document const& document);

/// The handle of a car of `make_controllers`. The controller owns the car and lives as long as the handle.
std::shared_ptr<ElevatorCar> handle_of(std::shared_ptr<Car> const& car);

/// Up, down, or none between stops of one elevation.
ElevatorDirection direction_between(CarStop const& from, CarStop const& to);

/// The index of a stop of a car; none if the car has no such stop.
std::optional<std::size_t> index_of_stop(Car const& car, std::string const& name);

/// Throws Exception: ElevatorCar 'Lift': the position is only known while the car moves, ...
[[noreturn]] void refuse_live(std::string const& who, std::string const& what);

}  // namespace pedflux::engine
