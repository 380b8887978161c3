#pragma once

#include "engine/navigation/navigation_input.h"
#include "engine/simulation/routing/route_classes.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

/// People who go another way because of a queue.
///
/// From time to time those on a floor compare the connections that lead on from it: the way there, the wait before it,
/// and the way that remains behind it. The wait follows from who is on the way there and how many are let in: who
/// stands at the head of a queue waits less than one who would join it. A second of waiting counts as the person's
/// profile says. Queues on other floors are not known.
namespace pedflux::engine {

struct FloorPlan;
struct SimulationState;
struct AgentMotion;

/// Another connection than that of the shortest way.
struct Reroute {
    navigation::ConnectionIndex joint = navigation::none;  ///< over which it leaves the floor; none: no detour
    navigation::RegionIndex floor = 0;
    navigation::DestinationIndex instead_of = navigation::none;  ///< the destination that it then goes to
    navigation::DestinationIndex way = navigation::none;         ///< the destination that the joint is
};

struct CongestionRerouting {
    std::vector<std::vector<navigation::ConnectionIndex>> joints_of;  ///< of each floor
    std::vector<double> rate;         ///< of each joint, the persons per second that go in while others wait
    std::vector<std::size_t> passed;  ///< of each joint, who went in since people last compared
    std::vector<bool> has_queue;      ///< of each joint, until people compare again
    std::map<std::pair<navigation::ConnectionIndex, RouteClassIndex>, navigation::DestinationIndex> ways;
    double next = 0;  ///< seconds of the simulation at which people compare again
};

CongestionRerouting congestion_rerouting_of(FloorPlan const& plan);

/// Lets people compare, when it is time.
void review_reroutes(SimulationState& run);

/// Somebody went over a joint from its floor.
void count_passed(SimulationState& run, navigation::RegionIndex floor, navigation::RegionIndex connection, Point point);

/// Whether the walker's detour leads to the destination and is still open.
bool takes_reroute(SimulationState const& run, AgentMotion const& motion, navigation::DestinationIndex destination);

}  // namespace pedflux::engine
