#include "engine/base/checks.h"
#include "engine/simulation/present_agent.h"
#include "engine/transport/car.h"

#include <pedflux/agents.h>
#include <pedflux/elevators.h>
#include <pedflux/simulation.h>

#include <string>

/// Elevators in simulations: cars that a program finds, plans and takes control of. They stand still and nobody rides.
namespace pedflux {

namespace {

/// The handle of the first car that fits; throws Exception when there is none.
template <class Fits>
std::shared_ptr<ElevatorCar> car_of(engine::SimulationState const& state, std::string const& sought, Fits const& fits) {
    for (auto const& controller : state.elevators) {
        for (auto const& car : controller->cars) {
            if (fits(*car)) return handle_of(car);
        }
    }
    engine::refuse("'" + sought + "' is no enabled elevator of the simulated project");
}

}  // namespace

std::shared_ptr<ElevatorCar> Simulation::GetElevatorCar(GlobalId const& elevator) {
    return car_of(*run_, GlobalId(elevator).GetString(),
                  [&](engine::Car const& car) { return car.elevator.InternalEquals(elevator); });
}
std::shared_ptr<ElevatorCar> Simulation::GetElevatorCar(std::string const& elevator) {
    return car_of(*run_, elevator, [&](engine::Car const& car) { return car.name == elevator; });
}

bool Agent::HasElevatorTripDestinationStop() {
    engine::present_agent(run_, id_);
    return false;
}
ElevatorStop Agent::GetElevatorTripDestinationStop() {
    engine::present_agent(run_, id_);
    engine::refuse("Agent " + std::to_string(id_) + " neither waits for an elevator nor rides in one");
}

}  // namespace pedflux
