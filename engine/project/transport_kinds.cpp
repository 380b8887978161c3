#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/project/kind_list.h"
#include "engine/project/kind_table.h"
#include "engine/transport/elevator_states.h"
#include "engine/transport/timetable_states.h"
#include "engine/transport/vehicle_states.h"

#include <pedflux/elevators.h>
#include <pedflux/timetables.h>
#include <pedflux/vehicles.h>

namespace pedflux {

PEDFLUX_TRANSPORT_KINDS(OBJECT_KIND)

}  // namespace pedflux
