#include "engine/project/kinds.h"

#include "engine/analysis/query_states.h"
#include "engine/behaviour/distribution_face.h"
#include "engine/behaviour/event_states.h"
#include "engine/model/group_states.h"
#include "engine/model/kind.h"
#include "engine/model/profile_state.h"
#include "engine/model/scene_states.h"
#include "engine/model/simulation_run_state.h"

namespace pedflux::engine {

// The kinds whose states have no home of their own; those of behaviour are instantiated beside their faces.
#define PEDFLUX_KINDS(KIND)             \
    KIND(Floor)                         \
    KIND(Portal)                        \
    KIND(Link)                          \
    KIND(Stair)                         \
    KIND(Ramp)                          \
    KIND(Barrier)                       \
    KIND(Zone)                          \
    KIND(Collection)                    \
    KIND(Perimeter)                     \
    KIND(RouteBank)                     \
    KIND(Transform)                     \
    KIND(Profile)                       \
    KIND(SimulationRun)                 \
    KIND(AverageDensityMapQuery)        \
    KIND(MaxDensityMapQuery)            \
    KIND(InstantaneousDensityMapQuery)  \
    KIND(ExperiencedDensityMapQuery)    \
    KIND(NonZeroAverageDensityMapQuery) \
    KIND(AgentCountMapQuery)            \
    KIND(PopulationCountGraphQuery)

#define INSTANTIATE(Name) template Kind const& kind_of<Name##State>();
PEDFLUX_KINDS(INSTANTIATE)

Kinds object_kinds() {
#define ENTRY(Name) &kind_of<Name##State>(),
    static Kind const* const table[] = {&kind_of<JourneyState>(), &kind_of<EvacuationState>(), PEDFLUX_KINDS(ENTRY)};
    return table;
}

}  // namespace pedflux::engine
