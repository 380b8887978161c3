#include "engine/simulation/agents/agents.h"

namespace pedflux::engine {

void remove_gone(Agents& agents) {
    std::erase_if(agents.motions, [&](AgentMotion const& motion) { return !agents.is_here(motion.agent); });
    for (std::uint32_t i = 0; i < agents.motions.size(); ++i) agents.motion_of[agents.motions[i].agent] = i;
}

}  // namespace pedflux::engine
