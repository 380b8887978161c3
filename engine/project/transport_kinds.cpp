#include "engine/behaviour/distribution_face.h"
#include "engine/project/kind_table.h"
#include "engine/transport/elevator_states.h"

#include <pedflux/elevators.h>

namespace pedflux {

KIND_WITH_GEOMETRY(Elevator, Elevators, MeshGeometry)
KIND(ElevatorBank, ElevatorBanks)

}  // namespace pedflux
