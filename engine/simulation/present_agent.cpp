#include "engine/simulation/present_agent.h"

#include "engine/base/checks.h"

#include <string>

namespace pedflux::engine {

Here here(std::weak_ptr<SimulationState> const& weak, int id) {
    std::string const title = "Agent " + std::to_string(id);
    auto run = weak.lock();
    if (!run) refuse(title + " belongs to a simulation that is gone");
    auto const number = static_cast<std::size_t>(id);
    auto const motion = run->motion_of[number];
    if (motion == gone) refuse(title + " has left the simulation");
    auto& world = *run;
    return {std::move(run), world.infos[number], world.motions[motion]};
}

}  // namespace pedflux::engine
