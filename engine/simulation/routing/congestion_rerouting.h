#pragma once

#include "engine/crowd/crowd.h"
#include "engine/navigation/navigation_input.h"
#include "engine/simulation/agents/agents.h"
#include "engine/simulation/routing/routes.h"
#include "engine/simulation/world/clock.h"
#include "engine/simulation/world/world.h"

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

/// Agents that take another way because of a queue.
///
/// At intervals the agents on a floor compare the connections that lead on from it: the way there, the wait before it,
/// and the way that remains behind it. The wait follows from who is on the way there and the rate at which agents
/// enter: at the head of a queue it is shorter than for an agent that would join it. A second of waiting costs what the
/// agent's profile says. Queues on other floors are not known.
namespace pedflux::engine {

struct CongestionRerouting {
    std::vector<std::vector<navigation::ConnectionIndex>> joints_of;  ///< of each floor
    std::vector<double> rate;         ///< of each joint, persons per second that enter while others wait
    std::vector<std::size_t> passed;  ///< of each joint, persons that entered since the last review
    std::vector<bool> has_queue;      ///< of each joint, from the last review to the next
    /// Over a joint, for a class.
    std::map<std::pair<navigation::ConnectionIndex, RouteClassIndex>, navigation::DestinationIndex> ways;
    double next_review = 0;  ///< seconds of the simulation
};

CongestionRerouting congestion_rerouting_of(FloorPlan const& plan);

/// Reviews the ways of all agents on floors with queues, when it is time.
void review_reroutes(CongestionRerouting& rerouting, Routes& routes, World const& world, Agents& agents,
                     crowd::Crowd const& crowd, Clock const& clock);

/// Counts an agent that went from a floor into a connection.
void count_passed(CongestionRerouting& rerouting, FloorPlan const& plan, navigation::RegionIndex floor,
                  navigation::RegionIndex connection, Point point);

/// Whether the agent's reroute leads to the destination and is still open.
bool takes_reroute(Routes const& routes, AgentMotion const& motion, navigation::DestinationIndex destination);

}  // namespace pedflux::engine
