#include "engine/simulation/agents/spawn_requests.h"

#include "engine/base/checks.h"
#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/behaviour/population/schedule.h"
#include "engine/simulation/agents/spawn_program.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

/// Bounds of costs relative to the cost of a metre on the level.
constexpr double least_climbing = 0.01;
constexpr double most_expensive = 100;
/// The least cost of a metre on the level.
constexpr double least_level = 1e-9;

double checked_sample(DistributionSpec const& distribution, Random& random) {
    require_valid(distribution);
    return sample(distribution, random);
}

bool varies(DistributionSpec const& distribution) { return minimum(distribution) < maximum(distribution); }

/// Costs that vary among agents are rounded to steps of half an octave, so that agents share routes.
void draw_costs(SpawnRequest& request, ProfileProgram const& profile, std::uint64_t seed) {
    Random random(seed, streams::of_costs + request.key);
    double const level = std::max(sample(profile.horizontal_cost, random), least_level);
    double const climbing = std::clamp(sample(profile.vertical_cost, random) / level, least_climbing, most_expensive);
    double const waiting = std::min(sample(profile.queue_cost, random) / level, most_expensive);
    bool const climbing_varies = varies(profile.horizontal_cost) || varies(profile.vertical_cost);
    request.climbing = climbing_varies ? std::exp2(std::round(2 * std::log2(climbing)) / 2) : climbing;
    request.waiting = waiting;
}

/// The agents of one start of an event, in the order of their arrival and keys.
struct EventStart {
    std::vector<PlaceIndex> destinations;
    std::vector<SpawnRequest> requests;
};

EventStart plan_start(SpawnProgram const& program, Places& places, std::uint64_t seed, std::uint32_t source,
                      std::uint32_t start, std::size_t first_key) {
    auto const& event = program.events[source];
    try {
        Random const random(seed, streams::of_events + (std::uint64_t{start} << 20) + source);
        Schedule const schedule = compile_schedule(event.population, program.population_multiplier, random);
        std::vector<PlaceIndex> origins;
        EventStart planned;
        for (auto const& origin : schedule.origins) origins.push_back(places.of(origin));
        for (auto const& destination : schedule.destinations) planned.destinations.push_back(places.of(destination));
        for (auto const& arrival : schedule.arrivals) {
            auto const key = static_cast<std::uint32_t>(first_key + planned.requests.size());
            SpawnRequest request = person_of(program, event.profile, seed, key);
            request.due = arrival.time;
            request.source = source;
            request.origin = origins[static_cast<std::size_t>(arrival.origin)];
            request.event = event.id;
            request.color = event.color;
            if (arrival.destination == LOWEST_COST_DESTINATION) request.choices = source;
            if (arrival.destination >= 0) {
                request.destination = planned.destinations[static_cast<std::size_t>(arrival.destination)];
            }
            if (event.pre_movement_wait) {
                Random wait(seed, streams::of_pre_movement_times + key);
                request.wait = checked_sample(*event.pre_movement_wait, wait);
            }
            planned.requests.push_back(std::move(request));
        }
        return planned;
    } catch (Exception const& exception) {
        refuse(fmt::format("{}: {}", event.title, exception.GetMessage()));
    }
}

}  // namespace

SpawnRequests spawn_requests_of(SpawnProgram const& program, Places& places, std::uint64_t seed) {
    SpawnRequests requests;
    for (std::uint32_t source = 0; source < program.events.size(); ++source) {
        auto planned = plan_start(program, places, seed, source, 0, requests.count);
        requests.choices.push_back(std::move(planned.destinations));
        requests.count += planned.requests.size();
        requests.by_origin.resize(places.size());
        for (auto& request : planned.requests) requests.by_origin[request.origin].push_back(std::move(request));
    }
    requests.by_origin.resize(places.size());
    for (auto& waiting : requests.by_origin) std::ranges::stable_sort(waiting, {}, &SpawnRequest::due);
    return requests;
}

std::vector<SpawnRequest> people_of_start(SpawnProgram const& program, Places& places, std::uint64_t seed,
                                          std::uint32_t source, std::uint32_t start, std::size_t first_key) {
    return plan_start(program, places, seed, source, start, first_key).requests;
}

SpawnRequest person_of(SpawnProgram const& program, GlobalId const& id, std::uint64_t seed, std::uint32_t key) {
    auto const found =
        std::ranges::find_if(program.profiles, [&](auto const& profile) { return profile.id.InternalEquals(id); });
    bool const is_known = found != program.profiles.end();
    if (id.IsValid() && !is_known) {
        refuse(fmt::format("'{}' is no profile of the project", GlobalId(id).GetString()));
    }
    auto const& profile = is_known ? *found : program.default_profile;
    Random random(seed, key);
    SpawnRequest request;
    request.key = key;
    request.profile = id;
    request.speed = checked_sample(profile.speed, random);
    request.radius = checked_sample(profile.radius, random);
    request.side_bias = profile.side_bias;
    request.avatar = profile.avatar;
    request.network = profile.network;
    draw_costs(request, profile, seed);
    return request;
}

}  // namespace pedflux::engine
