#pragma once

#include "engine/navigation/navigation_input.h"
#include "engine/simulation/world/floor_plan.h"
#include "engine/simulation/world/places.h"

#include <pedflux/identifiers.h>

#include <compare>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// People who find their ways alike share the routes to each destination: a class of them for every combination of
/// network, costs and closed gates that occurs.
namespace pedflux::engine {

class Document;
struct SimulationState;
struct SpawnRequest;
struct ProfileState;
struct AgentMotion;

using NetworkIndex = std::uint32_t;
inline constexpr NetworkIndex no_network = std::numeric_limits<NetworkIndex>::max();

/// 0 is the class of those who take all ways at their length.
using RouteClassIndex = std::uint32_t;

/// A network of the project, as it was when the simulation was created.
struct SimulatedNetwork {
    GlobalId id;
    std::string title;
    std::vector<bool> members;  ///< of each region, whether people of the network enter it
};

/// What tells the ways of people apart.
struct RoutingPreferences {
    NetworkIndex network = no_network;  ///< none: all ways
    double climbing = 1;                ///< what a metre on stairs and slopes counts as, in metres on the level
    std::vector<std::uint32_t> closed;  ///< ways into passageways that rules close to the person, see way_into()

    // NOLINTNEXTLINE(modernize-use-nullptr): the linter takes what the compiler writes for code.
    auto operator<=>(RoutingPreferences const&) const = default;
};

/// The number of a way into a passageway. Ways are 0, from ball to box, and 1, from box to ball.
constexpr std::uint32_t way_into(std::size_t passageway, std::size_t way) {
    return static_cast<std::uint32_t>(2 * passageway + way);
}

struct RouteClasses {
    struct Class {
        RoutingPreferences preferences;
        navigation::RouteClass people;
        std::vector<navigation::DestinationIndex> destinations{};  ///< of places; those of the first stand there
    };
    std::vector<SimulatedNetwork> networks;
    std::vector<Class> classes;
    std::map<RoutingPreferences, RouteClassIndex> class_of_preferences;
};

/// The networks of a project, and the class of those who take all ways.
///
/// Members are the floors and connections that the network says. One that lists its only members, and no floor among
/// them, restricts connections alone: people walk on all floors.
RouteClasses route_classes_of(Document const& document, FloorPlan const& plan);

/// What a person weighs ways by, against a metre or second of walking on the level.
struct RouteCosts {
    double climbing = 1;  ///< a metre on stairs and slopes
    double waiting = 1;   ///< a second in a queue
};

/// The vertical and the queue cost of a person of the profile over the horizontal one, from 0.01 and 0 to 100. Costs
/// that vary are drawn for each person; that of climbing is rounded to powers of the square root of 2, so that few
/// classes arise.
RouteCosts costs_of(ProfileState const& profile, std::uint64_t seed, std::uint32_t key);

/// Throws Exception unless the simulated project has the network.
NetworkIndex require_network(SimulationState const& run, GlobalId const& network);

/// What a person wishes as it comes in.
RoutingPreferences preferences_of(SimulationState const& run, SpawnRequest const& request);

/// The class of those who wish so; a new one when there was none.
RouteClassIndex class_of(SimulationState& run, RoutingPreferences const& preferences);

/// The destination of a place for people of a class; found when nobody asked for it before.
navigation::DestinationIndex destination_at(SimulationState& run, PlaceIndex place, RouteClassIndex people);

/// Lets somebody go on by other ways.
void set_network(SimulationState& run, AgentMotion& motion, NetworkIndex network);
void set_closed(SimulationState& run, AgentMotion& motion, std::vector<std::uint32_t> closed);

/// Whether a region is closed to the walker on the way into it there, though it may be open to others. The crowd does
/// not know whom it lets through.
bool is_shut_out(SimulationState const& run, AgentMotion const& motion, navigation::RegionIndex region, Point point);

/// " in Network 'N'", for messages about the ways of a class; empty without a network.
std::string in_network(SimulationState const& run, RouteClassIndex people);

}  // namespace pedflux::engine
