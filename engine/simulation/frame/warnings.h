#pragma once

#include "engine/simulation/agents/journal.h"
#include "engine/simulation/routing/routes.h"

#include <vector>

/// Issues about agents that cannot go on, each raised once.
namespace pedflux::engine {

struct Warnings {
    std::vector<bool> lost;     ///< of each destination, whether an issue says that agents have no way there
    std::vector<bool> crowded;  ///< of each place, whether an issue says that it is full
};

/// No way leads an agent to its destination.
void warn_of_lost(Warnings& warnings, Journal& journal, World const& world, Clock const& clock, Routes const& routes,
                  Agents const& agents, AgentMotion const& motion);
/// An area has no room for those who are to enter there. At portals that is nothing unusual.
void warn_of_crowded(Warnings& warnings, Journal& journal, Places const& places, Clock const& clock, PlaceIndex origin);

}  // namespace pedflux::engine
