#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/project/kind_table.h"
#include "engine/transport/elevator_states.h"
#include "engine/transport/timetable_states.h"
#include "engine/transport/vehicle_states.h"

#include <pedflux/elevators.h>
#include <pedflux/timetables.h>
#include <pedflux/vehicles.h>

namespace pedflux {

KIND_WITH_GEOMETRY(Elevator, Elevators, MeshGeometry)
KIND(ElevatorBank, ElevatorBanks)
KIND(Timetable, Timetables)
KIND(Vehicle, Vehicles)

}  // namespace pedflux
