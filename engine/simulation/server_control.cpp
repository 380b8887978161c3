#include "engine/base/checks.h"
#include "engine/simulation/events/server_access.h"
#include "engine/simulation/frame/simulation_state.h"

#include <pedflux/simulation.h>

#include <optional>

/// What programs do with the entrances and exits of servers.
namespace pedflux {

namespace {

using engine::entrance_side;
using engine::exit_side;
using engine::SimulationState;

std::uint32_t require_server(SimulationState const& state, GlobalId const& id) {
    auto const server = server_of(state.world.plan, id);
    if (server == engine::no_server) {
        engine::refuse("'" + GlobalId(id).GetString() + "' is no enabled server of the simulated project");
    }
    return server;
}

void set_open(SimulationState& state, GlobalId const& id, std::size_t side, std::optional<bool> open) {
    set_server_by_program(state.events->servers, state.clock, state.servers, require_server(state, id), side, open);
}

bool is_open(SimulationState const& state, GlobalId const& id, std::size_t side) {
    return state.servers.queues[require_server(state, id)].open[side];
}

}  // namespace

#define SIDE(Side, side)                                                                                        \
    void Simulation::OpenServer##Side(GlobalId const& server) { set_open(*run_, server, side, true); }          \
    void Simulation::CloseServer##Side(GlobalId const& server) { set_open(*run_, server, side, false); }        \
    void Simulation::ResetServer##Side(GlobalId const& server) { set_open(*run_, server, side, std::nullopt); } \
    bool Simulation::IsServer##Side##OpenToAll(GlobalId const& server) { return is_open(*run_, server, side); } \
    bool Simulation::IsServer##Side##ClosedToAll(GlobalId const& server) { return !is_open(*run_, server, side); }

SIDE(Entrance, entrance_side)
SIDE(Exit, exit_side)

}  // namespace pedflux
