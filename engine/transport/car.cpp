#include "engine/transport/car.h"

#include "engine/base/checks.h"
#include "engine/geometry/access.h"
#include "engine/model/node.h"
#include "engine/scene/banks.h"

#include <pedflux/geometry.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include <fmt/format.h>

namespace pedflux::engine {
namespace {

/// The area of the upward triangles of a mesh, projected to the plan (m²).
double plan_area(Mesh const& mesh) {
    double area = 0;
    for (auto const& face : mesh.faces) {
        auto const corner = [&](std::size_t index) { return mesh.vertices[static_cast<std::size_t>(face[index])]; };
        area += std::max(0.0, cross(corner(1) - corner(0), corner(2) - corner(0)).y / 2);
    }
    return area;
}

int capacity_of(ElevatorState const& elevator) {
    auto const& capacity = elevator.capacity;
    if (capacity.type == ElevatorCapacityType::AGENT_COUNT) return capacity.agent_count;
    bool const custom = capacity.type == ElevatorCapacityType::CUSTOM_AREA;
    double const area = custom ? capacity.custom_area : plan_area(mesh_of(*elevator.geometry->AsMeshGeometry()));
    double const each = 2 * std::numbers::sqrt3 * capacity.agent_radius * capacity.agent_radius;
    return static_cast<int>(std::clamp(area / each, 1.0, double(std::numeric_limits<int>::max())));
}

std::vector<CarStop> stops_of(ElevatorState const& elevator) {
    std::vector<CarStop> stops;
    for (auto const* const side : {&elevator.ball, &elevator.box}) {
        for (auto const& id : floors_of(*side)) {
            auto const* const floor = elevator.document->find<FloorState>(id);
            if (floor == nullptr) continue;
            bool const there =
                std::ranges::any_of(stops, [&](CarStop const& stop) { return stop.floor.InternalEquals(id); });
            if (!there) stops.push_back({floor->name, id, floor->geometry->GetBoundingBox().GetMin().GetY()});
        }
    }
    std::ranges::stable_sort(stops, {}, &CarStop::elevation);
    return stops;
}

std::shared_ptr<Car> make_car(ElevatorState const& elevator) {
    auto car = std::make_shared<Car>();
    car->elevator = elevator.id;
    car->name = elevator.name;
    car->stops = stops_of(elevator);
    car->limits = {elevator.speed, elevator.acceleration, elevator.jerk};
    car->door_cycle =
        elevator.doors.opening_duration + elevator.doors.open_duration_when_unused + elevator.doors.closing_duration;
    car->capacity = capacity_of(elevator);
    car->cycle_duration_override = elevator.cycle_duration;
    if (elevator.rest_floor) {
        auto const rest = std::ranges::find_if(
            car->stops, [&](CarStop const& stop) { return stop.floor.InternalEquals(*elevator.rest_floor); });
        if (rest == car->stops.end()) {
            Subject{owner_of(elevator), "restFloor"}.refuse("a floor that the elevator serves", "another one");
        }
        car->rest_stop = static_cast<std::size_t>(rest - car->stops.begin());
    }
    return car;
}

}  // namespace

std::vector<std::shared_ptr<CarController>> make_controllers(Document const& document) {
    std::vector<std::shared_ptr<CarController>> controllers;
    std::vector<ElevatorBankState const*> banks;  // of each controller; none for that of a single elevator
    for (auto const* const elevator : document.objects<ElevatorState>()) {
        if (!elevator->enabled) continue;
        auto const* const bank = bank_with<ElevatorBankState>(*elevator);
        auto const known = bank == nullptr ? banks.end() : std::ranges::find(banks, bank);
        auto const index = static_cast<std::size_t>(known - banks.begin());
        if (known == banks.end()) {
            auto const& operation = bank == nullptr ? elevator->operation : bank->operation;
            auto made = std::make_shared<CarController>();
            made->name = bank == nullptr ? elevator->name : bank->name;
            made->operation = static_cast<ElevatorOperationTypeId>(type_of(*operation));
            controllers.push_back(std::move(made));
            banks.push_back(bank);
        }
        auto const& controller = controllers[index];
        controller->cars.push_back(make_car(*elevator));
        controller->cars.back()->controller = controller;
    }
    return controllers;
}

ElevatorDirection direction_between(CarStop const& from, CarStop const& to) {
    if (from.elevation == to.elevation) return ElevatorDirection::NONE;
    return from.elevation < to.elevation ? ElevatorDirection::UP : ElevatorDirection::DOWN;
}

std::optional<std::size_t> index_of_stop(Car const& car, std::string const& name) {
    auto const found = std::ranges::find(car.stops, name, &CarStop::name);
    if (found == car.stops.end()) return std::nullopt;
    return static_cast<std::size_t>(found - car.stops.begin());
}

void refuse_live(std::string const& who, std::string const& what) {
    refuse(fmt::format("{}: {} cannot be told, as elevators do not run in this engine yet", who, what));
}

}  // namespace pedflux::engine
