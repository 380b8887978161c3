#include "engine/geometry/checks.h"

#include <pedflux/simulation.h>

#include <string>

/// Rules of a project that simulations do not follow yet. They refuse, so that nobody takes silence for a result.
namespace pedflux {

namespace {

[[noreturn]] void refuse_what_is_not_simulated(std::string const& what) {
    engine::refuse(what + " are not part of simulations of this engine yet");
}

}  // namespace

#define NOT_SIMULATED(Operation, what) \
    Operation { refuse_what_is_not_simulated(what); }

NOT_SIMULATED(void Simulation::OpenServerEntrance(GlobalId const&), "Servers")
NOT_SIMULATED(void Simulation::CloseServerEntrance(GlobalId const&), "Servers")
NOT_SIMULATED(void Simulation::ResetServerEntrance(GlobalId const&), "Servers")
NOT_SIMULATED(bool Simulation::IsServerEntranceOpenToAll(GlobalId const&), "Servers")
NOT_SIMULATED(bool Simulation::IsServerEntranceClosedToAll(GlobalId const&), "Servers")
NOT_SIMULATED(void Simulation::OpenServerExit(GlobalId const&), "Servers")
NOT_SIMULATED(void Simulation::CloseServerExit(GlobalId const&), "Servers")
NOT_SIMULATED(void Simulation::ResetServerExit(GlobalId const&), "Servers")
NOT_SIMULATED(bool Simulation::IsServerExitOpenToAll(GlobalId const&), "Servers")
NOT_SIMULATED(bool Simulation::IsServerExitClosedToAll(GlobalId const&), "Servers")

}  // namespace pedflux
