#include "engine/simulation/route_classes.h"

#include "engine/behaviour/distribution_face.h"
#include "engine/behaviour/random.h"
#include "engine/geometry/checks.h"
#include "engine/model/document.h"
#include "engine/model/network_state.h"
#include "engine/model/profile_state.h"
#include "engine/simulation/live_run.h"
#include "engine/simulation/random_streams.h"
#include "engine/simulation/ways.h"

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

navigation::RouteClass people_of(RouteClasses const& routes, FloorPlan const& plan, RouteWish const& wish) {
    navigation::RouteClass people;
    if (wish.network != no_network || !wish.closed.empty()) {
        auto const is_member = [&](navigation::RegionIndex region) {
            return wish.network == no_network || routes.networks[wish.network].members[region];
        };
        for (auto const& joint : plan.joints) {
            auto const way = way_into(joint.connection - plan.floor_count, joint.at_ball ? 0 : 1);
            bool const is_closed = std::ranges::binary_search(wish.closed, way);
            people.closed.push_back({!is_member(joint.floor), is_closed || !is_member(joint.connection)});
        }
    }
    if (wish.climbing != 1) {
        for (auto const& incline : plan.inclines)
            people.weights.push_back(incline.uphill == Point{} ? 1 : wish.climbing);
    }
    return people;
}

void set_wish(LiveRun& run, Walker& walker, RouteWish wish) {
    auto& person = run.persons[walker.agent];
    if (wish == person.wish) return;
    person.wish = std::move(wish);
    walker.route_class = class_of(run, person.wish);
    bool const follows_sign = walker.destination == person.doings.sign.far_end;
    if (person.goal != no_place && !follows_sign) {
        walker.destination = destination_at(run, person.goal, walker.route_class);
    }
}

}  // namespace

RouteClasses route_classes_of(Document const& document, FloorPlan const& plan) {
    RouteClasses routes;
    for (auto const* const network : document.objects<NetworkState>()) {
        routes.networks.push_back({network->id, title_of(*network), members_of(*network, document, plan)});
    }
    routes.classes.push_back({{}, {}});
    routes.class_of_wish[{}] = 0;
    return routes;
}

RouteCosts costs_of(ProfileState const& profile, std::uint64_t seed, std::uint32_t key) {
    Law const horizontal = law_of(*profile.horizontal_cost);
    Law const vertical = law_of(*profile.vertical_cost);
    auto const varies = [](Law const& law) { return minimum(law) < maximum(law); };
    Random random(seed, streams::of_costs + key);
    double const level = std::max(sample(horizontal, random), 1e-9);
    double const climbing = std::clamp(sample(vertical, random) / level, least_climbing, most_expensive);
    double const waiting = std::min(sample(law_of(*profile.queue_cost), random) / level, most_expensive);
    bool const climbing_varies = varies(horizontal) || varies(vertical);
    return {climbing_varies ? std::exp2(std::round(2 * std::log2(climbing)) / 2) : climbing, waiting};
}

NetworkIndex require_network(LiveRun const& run, GlobalId const& id) {
    auto const& networks = run.routes.networks;
    auto const found =
        std::ranges::find_if(networks, [&](auto const& network) { return network.id.InternalEquals(id); });
    if (found == networks.end()) {
        refuse("'" + GlobalId(id).GetString() +
               "' is no network of the project as it was when the simulation was created");
    }
    return static_cast<NetworkIndex>(found - networks.begin());
}

RouteWish wish_of(LiveRun const& run, Newcomer const& newcomer) {
    return {newcomer.network ? require_network(run, *newcomer.network) : no_network, newcomer.climbing, {}};
}

RouteClassIndex class_of(LiveRun& run, RouteWish const& wish) {
    auto& routes = run.routes;
    auto const [entry, is_new] =
        routes.class_of_wish.emplace(wish, static_cast<RouteClassIndex>(routes.classes.size()));
    if (is_new) routes.classes.push_back({wish, people_of(routes, run.plan, wish)});
    return entry->second;
}

navigation::DestinationIndex destination_at(LiveRun& run, PlaceIndex place, RouteClassIndex people) {
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

void set_network(LiveRun& run, Walker& walker, NetworkIndex network) {
    auto wish = run.persons[walker.agent].wish;
    wish.network = network;
    set_wish(run, walker, std::move(wish));
}

void set_closed(LiveRun& run, Walker& walker, std::vector<std::uint32_t> closed) {
    if (closed == run.persons[walker.agent].wish.closed) return;
    auto wish = run.persons[walker.agent].wish;
    wish.closed = std::move(closed);
    set_wish(run, walker, std::move(wish));
}

bool is_shut_out(LiveRun const& run, Walker const& walker, navigation::RegionIndex region, Point point) {
    auto const& closed = run.routes.classes[walker.route_class].people.closed;
    if (closed.empty()) return false;
    auto const joint = joint_at(run, walker.region, region, point);
    if (joint == navigation::none) return false;
    bool const enters_floor = run.plan.joints[joint].floor == region;
    return enters_floor ? closed[joint].forward : closed[joint].backward;
}

std::string in_network(LiveRun const& run, RouteClassIndex people) {
    auto const network = run.routes.classes[people].wish.network;
    return network == no_network ? "" : " in " + run.routes.networks[network].title;
}

}  // namespace pedflux::engine
