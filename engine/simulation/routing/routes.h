#pragma once

#include "engine/navigation/navigation.h"
#include "engine/simulation/agents/agents.h"
#include "engine/simulation/world/world.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

/// Routes to places. Agents whose preferences are equal share the routes to each destination: there is a route class
/// for every combination of network, costs and closed gates that occurs.
namespace pedflux::engine {

class Document;

/// A network of the project, as it was when the simulation was created.
struct SimulatedNetwork {
    GlobalId id;
    std::string title;
    std::vector<bool> members;  ///< of each region, whether agents of the network enter it
};

struct Routes {
    struct Class {
        RoutingPreferences preferences;
        navigation::RouteClass people;
        std::vector<navigation::DestinationIndex> destinations{};  ///< of places
    };

    navigation::Navigation navigation;
    std::vector<SimulatedNetwork> networks;
    std::vector<Class> classes;
    std::map<RoutingPreferences, RouteClassIndex> class_of_preferences;
    /// Of connections, where their ball end (true) or box end leads out of them.
    std::map<std::pair<navigation::RegionIndex, bool>, navigation::DestinationIndex> connection_ends;
};

/// The networks of a project, and the class of those who take all ways.
///
/// Members are the floors and connections that the network says. One that lists its only members, and no floor among
/// them, restricts connections alone: agents walk on all floors.
/// @param destinations of places for those who take all ways; `none` where nobody has asked yet
Routes routes_of(Document const& document, FloorPlan const& plan, navigation::Navigation navigation,
                 std::vector<navigation::DestinationIndex> destinations);

/// Throws Exception unless the simulated project has the network.
NetworkIndex require_network(Routes const& routes, GlobalId const& network);

/// The preferences of an agent that enters.
RoutingPreferences preferences_of(Routes const& routes, SpawnRequest const& request);

/// The class of those with these preferences; a new one when there was none.
RouteClassIndex class_of(Routes& routes, FloorPlan const& plan, RoutingPreferences const& preferences);

/// The destination of a place for agents of a class; found when nobody asked for it before.
navigation::DestinationIndex destination_at(Routes& routes, World const& world, PlaceIndex place,
                                            RouteClassIndex people = 0);

/// The destination at one end of a connection, for agents on it.
navigation::DestinationIndex end_of_connection(Routes& routes, FloorPlan const& plan,
                                               navigation::RegionIndex connection, bool at_ball);

/// Lets an agent go on by other routes.
void set_network(Routes& routes, World const& world, Agents& agents, AgentMotion& motion, NetworkIndex network);
void set_closed(Routes& routes, World const& world, Agents& agents, AgentMotion& motion,
                std::vector<std::uint32_t> closed);

/// Whether a region is closed to the agent on the way into it there, though it may be open to others. The crowd does
/// not know whom it lets through.
bool is_shut_out(Routes const& routes, FloorPlan const& plan, AgentMotion const& motion, navigation::RegionIndex region,
                 Point point);

/// " in Network 'N'", for messages about the routes of a class; empty without a network.
std::string in_network(Routes const& routes, RouteClassIndex people);

}  // namespace pedflux::engine
