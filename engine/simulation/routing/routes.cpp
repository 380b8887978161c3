#include "engine/simulation/routing/routes.h"

#include "engine/base/checks.h"
#include "engine/model/document.h"
#include "engine/scene/network_state.h"
#include "engine/simulation/routing/path_queries.h"

#include <algorithm>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

bool names_no_floor(NetworkState const& network, Document const& document) {
    auto const* const only = std::get_if<OnlyMembers>(&network.members);
    return only != nullptr && std::ranges::none_of(only->objects, [&](GlobalId const& id) {
               return document.find<FloorState>(id) != nullptr;
           });
}

std::vector<bool> members_of(NetworkState const& network, Document const& document, FloorPlan const& plan) {
    bool const all_floors = names_no_floor(network, document);
    std::vector<bool> members;
    for (std::size_t region = 0; region < plan.surfaces.size(); ++region) {
        auto const& object = *document.find<NetworkObjectState>(plan.surfaces[region].id);
        members.push_back(is_member(network, object) || (all_floors && region < plan.floor_count));
    }
    return members;
}

navigation::RouteClass route_class_of(Routes const& routes, FloorPlan const& plan,
                                      RoutingPreferences const& preferences) {
    navigation::RouteClass people;
    if (preferences.network != no_network || !preferences.closed.empty()) {
        auto const is_member = [&](navigation::RegionIndex region) {
            return preferences.network == no_network || routes.networks[preferences.network].members[region];
        };
        for (auto const& joint : plan.joints) {
            auto const way = way_into(joint.connection - plan.floor_count, joint.at_ball ? 0 : 1);
            bool const is_closed = std::ranges::binary_search(preferences.closed, way);
            people.closed.push_back({!is_member(joint.floor), is_closed || !is_member(joint.connection)});
        }
    }
    if (preferences.climbing != 1) {
        for (auto const& incline : plan.inclines) {
            people.weights.push_back(incline.uphill == Point{} ? 1 : preferences.climbing);
        }
    }
    return people;
}

/// An agent that passes a connection because of a sign goes on to its far end.
void set_preferences(Routes& routes, World const& world, Agents& agents, AgentMotion& motion,
                     RoutingPreferences preferences) {
    auto& info = agents.infos[motion.agent];
    if (preferences == info.preferences) return;
    info.preferences = std::move(preferences);
    motion.route_class = class_of(routes, world.plan, info.preferences);
    bool const follows_sign = motion.destination == agents.tasks[motion.agent].sign.far_end;
    if (info.goal != no_place && !follows_sign) {
        motion.destination = destination_at(routes, world, info.goal, motion.route_class);
    }
}

}  // namespace

Routes routes_of(Document const& document, FloorPlan const& plan, navigation::Navigation navigation,
                 std::vector<navigation::DestinationIndex> destinations) {
    Routes routes{std::move(navigation), {}, {}, {}, {}};
    for (auto const* const network : document.objects<NetworkState>()) {
        routes.networks.push_back({network->id, title_of(*network), members_of(*network, document, plan)});
    }
    routes.classes.push_back({{}, {}, std::move(destinations)});
    routes.class_of_preferences[{}] = 0;
    return routes;
}

NetworkIndex require_network(Routes const& routes, GlobalId const& id) {
    auto const found =
        std::ranges::find_if(routes.networks, [&](auto const& network) { return network.id.InternalEquals(id); });
    if (found == routes.networks.end()) {
        refuse(fmt::format("'{}' is no network of the project as it was when the simulation was created",
                           GlobalId(id).GetString()));
    }
    return static_cast<NetworkIndex>(found - routes.networks.begin());
}

RoutingPreferences preferences_of(Routes const& routes, SpawnRequest const& request) {
    return {request.network ? require_network(routes, *request.network) : no_network, request.climbing, {}};
}

RouteClassIndex class_of(Routes& routes, FloorPlan const& plan, RoutingPreferences const& preferences) {
    auto const [entry, is_new] =
        routes.class_of_preferences.emplace(preferences, static_cast<RouteClassIndex>(routes.classes.size()));
    if (is_new) routes.classes.push_back({preferences, route_class_of(routes, plan, preferences)});
    return entry->second;
}

navigation::DestinationIndex destination_at(Routes& routes, World const& world, PlaceIndex place,
                                            RouteClassIndex people) {
    auto& route_class = routes.classes[people];
    auto& destinations = route_class.destinations;
    if (destinations.size() <= place) destinations.resize(place + std::size_t{1}, navigation::none);
    auto& destination = destinations[place];
    if (destination == navigation::none) {
        destination =
            routes.navigation.add_destination(destination_of(world.places[place], world.plan), route_class.people);
    }
    return destination;
}

navigation::DestinationIndex end_of_connection(Routes& routes, FloorPlan const& plan,
                                               navigation::RegionIndex connection, bool at_ball) {
    auto const [entry, is_new] = routes.connection_ends.emplace(std::pair(connection, at_ball), navigation::none);
    if (is_new) {
        navigation::Destination end{plan.surfaces[connection].name, {}, {}};
        for (auto const& joint : plan.joints) {
            if (joint.connection == connection && joint.at_ball == at_ball) {
                end.lines.push_back({connection, joint.line});
            }
        }
        entry->second = routes.navigation.add_destination(end);
    }
    return entry->second;
}

void set_network(Routes& routes, World const& world, Agents& agents, AgentMotion& motion, NetworkIndex network) {
    auto preferences = agents.infos[motion.agent].preferences;
    preferences.network = network;
    set_preferences(routes, world, agents, motion, std::move(preferences));
}

void set_closed(Routes& routes, World const& world, Agents& agents, AgentMotion& motion,
                std::vector<std::uint32_t> closed) {
    if (closed == agents.infos[motion.agent].preferences.closed) return;
    auto preferences = agents.infos[motion.agent].preferences;
    preferences.closed = std::move(closed);
    set_preferences(routes, world, agents, motion, std::move(preferences));
}

bool is_shut_out(Routes const& routes, FloorPlan const& plan, AgentMotion const& motion, navigation::RegionIndex region,
                 Point point) {
    auto const& closed = routes.classes[motion.route_class].people.closed;
    if (closed.empty()) return false;
    auto const joint = joint_at(plan, motion.region, region, point);
    if (joint == navigation::none) return false;
    bool const enters_floor = plan.joints[joint].floor == region;
    return enters_floor ? closed[joint].forward : closed[joint].backward;
}

std::string in_network(Routes const& routes, RouteClassIndex people) {
    auto const network = routes.classes[people].preferences.network;
    return network == no_network ? "" : fmt::format(" in {}", routes.networks[network].title);
}

}  // namespace pedflux::engine
