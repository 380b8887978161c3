#pragma once

#include "engine/behaviour/distributions/distribution_spec.h"
#include "engine/navigation/navigation_input.h"

#include <pedflux/objects.h>

#include <cstdint>
#include <optional>
#include <vector>

/// What holds people up at the ends of connections: limits of flow, delays and priority.
///
/// Whoever is on the way over an end stops half a metre before its line until it is let through. Of those who wait to
/// enter a connection, the nearest to the line is let in first. Who lets others come out first steps aside for them.
namespace pedflux::engine {

class Document;
struct FloorPlan;
struct SimulationState;
struct AgentMotion;

/// Who goes first at a connection. Ways are 0, from ball to box, and 1, from box to ball.
struct PriorityRule {
    std::size_t first_way = 0;
    double distance = 0;                  ///< metres from the entrance within which those who go first count
    bool yields_to_those_inside = false;  ///< whether also those who go first let those come off who walk against them
};

struct Entrance {
    double interval = 0;                          ///< seconds between people who are let in; 0: without a limit
    double interval_and_metre = 0;                ///< the same for each metre of the end's width
    std::optional<DistributionSpec> entry_delay;  ///< seconds
    std::optional<DistributionSpec> exit_delay;   ///< seconds
    std::optional<PriorityRule> priority;
    double next = 0;  ///< seconds of the simulation at which the next one is let in

    bool lets_in_at_once() const { return interval == 0 && interval_and_metre == 0 && !entry_delay && !priority; }
    bool lets_out_at_once() const { return !exit_delay; }
};

/// Where somebody waits to be let over the end of a connection, or is let.
struct AdmissionTicket {
    navigation::ConnectionIndex joint = navigation::none;
    bool enters = true;
    bool admitted = false;
    double ready_at = 0;  ///< seconds of the simulation
    std::uint32_t number = 0;
};

struct Entrances {
    std::vector<Entrance> of;              ///< each passageway
    std::vector<AdmissionTicket> tickets;  ///< of each person
    bool any = false;                      ///< whether anybody is ever held up
};

/// Reads what the connections of the plan say.
Entrances entrances_of(Document const& document, FloorPlan const& plan);

/// Lets stop whoever is not to go on now, after ways were chosen.
void hold_at_entrances(SimulationState& run);

/// Whether the walker was pushed over a line before its turn.
bool is_before_its_turn(SimulationState const& run, AgentMotion const& motion, navigation::RegionIndex region);

}  // namespace pedflux::engine
