#include "engine/project/kinds.h"

#include "engine/behaviour/distribution_face.h"
#include "engine/model/group_states.h"
#include "engine/model/kind.h"
#include "engine/model/profile_state.h"
#include "engine/model/scene_states.h"
#include "engine/model/simulation_run_state.h"

namespace pedflux::engine {

namespace {

/// The kinds of several states.
template <class... States>
Kinds table_of() {
    static Kind const* const table[] = {&kind_of<States>()...};
    return table;
}

}  // namespace

Kinds object_kinds() {
    return table_of<FloorState, PortalState, LinkState, StairState, RampState, BarrierState, ZoneState, CollectionState,
                    PerimeterState, RouteBankState, TransformState, ProfileState, SimulationRunState>();
}

}  // namespace pedflux::engine
