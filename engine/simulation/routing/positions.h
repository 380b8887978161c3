#pragma once

#include "engine/simulation/agents/agents.h"
#include "engine/simulation/agents/journal.h"
#include "engine/simulation/routing/congestion_rerouting.h"
#include "engine/simulation/routing/connection_entrances.h"
#include "engine/simulation/routing/routes.h"

#include <vector>

namespace pedflux::engine {

/// An agent went from one surface onto another.
struct RegionChange {
    std::uint32_t agent;
    navigation::RegionIndex from;
};

/// Reads where the bodies of the crowd got to in a step, and puts those back who were pushed over a line that is closed
/// to them. Notes the surfaces that agents entered and exited, and counts those who entered connections.
/// @return the changes in the order of the agents' numbers
std::vector<RegionChange> read_positions(World const& world, Routes const& routes, ConnectionEntrances const& entrances,
                                         Agents& agents, crowd::Crowd& crowd, CongestionRerouting& rerouting,
                                         FrameChanges& changes);

/// Puts an agent back to where it was before the last step of the crowd.
void put_back(AgentMotion& motion, crowd::Crowd& crowd);

}  // namespace pedflux::engine
