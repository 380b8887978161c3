#include "engine/simulation/routing/route_classes.h"

#include "engine/base/checks.h"
#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/model/document.h"
#include "engine/scene/network_state.h"
#include "engine/scene/profile_state.h"
#include "engine/simulation/frame/simulation_state.h"
#include "engine/simulation/routing/path_queries.h"

#include <algorithm>
#include <cmath>

namespace pedflux::engine {

namespace {

constexpr double least_climbing = 0.01;
constexpr double most_expensive = 100;

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

navigation::RouteClass people_of(RouteClasses const& routes, FloorPlan const& plan,
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
        for (auto const& incline : plan.inclines)
            people.weights.push_back(incline.uphill == Point{} ? 1 : preferences.climbing);
    }
    return people;
}

void set_wish(SimulationState& run, AgentMotion& motion, RoutingPreferences preferences) {
    auto& info = run.infos[motion.agent];
    if (preferences == info.preferences) return;
    info.preferences = std::move(preferences);
    motion.route_class = class_of(run, info.preferences);
    bool const follows_sign = motion.destination == info.tasks.sign.far_end;
    if (info.goal != no_place && !follows_sign) {
        motion.destination = destination_at(run, info.goal, motion.route_class);
    }
}

}  // namespace

RouteClasses route_classes_of(Document const& document, FloorPlan const& plan) {
    RouteClasses routes;
    for (auto const* const network : document.objects<NetworkState>()) {
        routes.networks.push_back({network->id, title_of(*network), members_of(*network, document, plan)});
    }
    routes.classes.push_back({{}, {}});
    routes.class_of_preferences[{}] = 0;
    return routes;
}

RouteCosts costs_of(ProfileState const& profile, std::uint64_t seed, std::uint32_t key) {
    DistributionSpec const horizontal = spec_of(*profile.horizontal_cost);
    DistributionSpec const vertical = spec_of(*profile.vertical_cost);
    auto const varies = [](DistributionSpec const& law) { return minimum(law) < maximum(law); };
    Random random(seed, streams::of_costs + key);
    double const level = std::max(sample(horizontal, random), 1e-9);
    double const climbing = std::clamp(sample(vertical, random) / level, least_climbing, most_expensive);
    double const waiting = std::min(sample(spec_of(*profile.queue_cost), random) / level, most_expensive);
    bool const climbing_varies = varies(horizontal) || varies(vertical);
    return {climbing_varies ? std::exp2(std::round(2 * std::log2(climbing)) / 2) : climbing, waiting};
}

NetworkIndex require_network(SimulationState const& run, GlobalId const& id) {
    auto const& networks = run.routes.networks;
    auto const found =
        std::ranges::find_if(networks, [&](auto const& network) { return network.id.InternalEquals(id); });
    if (found == networks.end()) {
        refuse("'" + GlobalId(id).GetString() +
               "' is no network of the project as it was when the simulation was created");
    }
    return static_cast<NetworkIndex>(found - networks.begin());
}

RoutingPreferences preferences_of(SimulationState const& run, SpawnRequest const& request) {
    return {request.network ? require_network(run, *request.network) : no_network, request.climbing, {}};
}

RouteClassIndex class_of(SimulationState& run, RoutingPreferences const& preferences) {
    auto& routes = run.routes;
    auto const [entry, is_new] =
        routes.class_of_preferences.emplace(preferences, static_cast<RouteClassIndex>(routes.classes.size()));
    if (is_new) routes.classes.push_back({preferences, people_of(routes, run.plan, preferences)});
    return entry->second;
}

navigation::DestinationIndex destination_at(SimulationState& run, PlaceIndex place, RouteClassIndex people) {
    if (people == 0) return destination_at(run, place);
    auto& destinations = run.routes.classes[people].destinations;
    if (destinations.size() <= place) destinations.resize(place + 1, navigation::none);
    auto& destination = destinations[place];
    if (destination == navigation::none) {
        destination = run.navigation.add_destination(destination_of(run.places[place], run.plan),
                                                     run.routes.classes[people].people);
    }
    return destination;
}

void set_network(SimulationState& run, AgentMotion& motion, NetworkIndex network) {
    auto preferences = run.infos[motion.agent].preferences;
    preferences.network = network;
    set_wish(run, motion, std::move(preferences));
}

void set_closed(SimulationState& run, AgentMotion& motion, std::vector<std::uint32_t> closed) {
    if (closed == run.infos[motion.agent].preferences.closed) return;
    auto preferences = run.infos[motion.agent].preferences;
    preferences.closed = std::move(closed);
    set_wish(run, motion, std::move(preferences));
}

bool is_shut_out(SimulationState const& run, AgentMotion const& motion, navigation::RegionIndex region, Point point) {
    auto const& closed = run.routes.classes[motion.route_class].people.closed;
    if (closed.empty()) return false;
    auto const joint = joint_at(run, motion.region, region, point);
    if (joint == navigation::none) return false;
    bool const enters_floor = run.plan.joints[joint].floor == region;
    return enters_floor ? closed[joint].forward : closed[joint].backward;
}

std::string in_network(SimulationState const& run, RouteClassIndex people) {
    auto const network = run.routes.classes[people].preferences.network;
    return network == no_network ? "" : " in " + run.routes.networks[network].title;
}

}  // namespace pedflux::engine
