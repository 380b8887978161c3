#include "engine/simulation/present_agent.h"

#include "engine/base/checks.h"

#include <utility>

#include <fmt/format.h>

namespace pedflux::engine {

PresentAgent present_agent(std::weak_ptr<SimulationState> const& weak, int id) {
    auto state = weak.lock();
    if (!state) refuse(fmt::format("Agent {} belongs to a simulation that is gone", id));
    auto const number = static_cast<std::uint32_t>(id);
    auto& agents = state->agents;
    if (!agents.is_here(number)) refuse(fmt::format("Agent {} has left the simulation", id));
    return {std::move(state), agents.infos[number], agents.tasks[number], agents.motion(number)};
}

}  // namespace pedflux::engine
