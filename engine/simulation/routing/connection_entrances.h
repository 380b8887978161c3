#pragma once

#include "engine/behaviour/distributions/distribution_spec.h"
#include "engine/navigation/navigation_input.h"
#include "engine/simulation/agents/agents.h"
#include "engine/simulation/world/clock.h"
#include "engine/simulation/world/world.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// What holds agents up at the ends of connections: flow limits, delays and priority.
///
/// An agent on the way over an end stops half a metre before its line until it is admitted. Of those who wait to enter
/// a connection, the nearest to the line is admitted first. An agent that yields to those coming out steps aside.
namespace pedflux::engine {

class Document;

/// Who goes first at a connection. Ways are 0, from ball to box, and 1, from box to ball.
struct PriorityRule {
    std::size_t first_way = 0;
    double distance = 0;                  ///< metres from the entrance within which agents of the first way count
    bool yields_to_those_inside = false;  ///< whether agents of the first way, too, let those inside come out
};

/// What the project says of the ends of a connection.
struct Entrance {
    double interval = 0;                          ///< seconds between admissions; 0: no limit
    double interval_and_metre = 0;                ///< the same for each metre of the end's width
    std::optional<DistributionSpec> entry_delay;  ///< seconds
    std::optional<DistributionSpec> exit_delay;   ///< seconds
    std::optional<PriorityRule> priority;

    bool lets_in_at_once() const { return interval == 0 && interval_and_metre == 0 && !entry_delay && !priority; }
    bool lets_out_at_once() const { return !exit_delay; }
};

/// An agent's wait for its turn at the end of a connection, and its admission.
struct AdmissionTicket {
    navigation::ConnectionIndex joint = navigation::none;
    bool enters = true;
    bool admitted = false;
    double ready_at = 0;       ///< seconds of the simulation; the end of its delay
    std::uint32_t number = 0;  ///< of the agent's tickets
};

struct ConnectionEntrances {
    // Const once compiled.
    std::vector<Entrance> entrances;  ///< of each passageway
    bool any = false;                 ///< whether an agent is ever held up

    std::vector<double> next_admission;    ///< of each passageway, the earliest, in seconds of the simulation
    std::vector<AdmissionTicket> tickets;  ///< of each agent
};

ConnectionEntrances connection_entrances_of(Document const& document, FloorPlan const& plan);

/// Stops agents that may not go on now. Comes after ways were chosen.
void hold_at_entrances(ConnectionEntrances& entrances, World const& world, Agents& agents, Clock const& clock);

/// Whether an agent that was pushed into a region was not admitted to it.
bool is_before_its_turn(ConnectionEntrances const& entrances, FloorPlan const& plan, AgentMotion const& motion,
                        navigation::RegionIndex region);

}  // namespace pedflux::engine
