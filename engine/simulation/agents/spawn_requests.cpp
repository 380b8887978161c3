#include "engine/simulation/agents/spawn_requests.h"

#include "engine/base/checks.h"
#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/behaviour/events/event_states.h"
#include "engine/behaviour/population/schedule.h"
#include "engine/model/document.h"
#include "engine/scene/profile_state.h"
#include "engine/simulation/routing/route_classes.h"

#include <algorithm>
#include <iterator>

namespace pedflux::engine {

namespace {

double side_of(AgentDirectionBias bias) {
    switch (bias) {
        case AgentDirectionBias::LEFT:
            return -1;
        case AgentDirectionBias::RIGHT:
            return 1;
        case AgentDirectionBias::NONE:
            break;
    }
    return 0;
}

class Planner {
  public:
    Planner(Document const& document, Places& places, std::uint64_t seed)
        : document_(document), places_(places), seed_(seed) {}
    /// Plans one further start of one event.
    Planner(Document const& document, Places& places, std::uint64_t seed, std::uint32_t source, std::uint32_t start,
            std::size_t first_key)
        : document_(document), places_(places), seed_(seed), source_(source), start_(start) {
        newcomers_.count = first_key;
    }

    void add(EventState const& event) try {
        Random const random(seed_, streams::of_events + (std::uint64_t{start_} << 20) + source_);
        Schedule const schedule = compile_schedule(event.population, document_.settings.population_multiplier, random);
        std::vector<PlaceIndex> origins;
        std::vector<PlaceIndex> destinations;
        for (auto const& origin : schedule.origins) origins.push_back(places_.of(origin));
        for (auto const& destination : schedule.destinations) destinations.push_back(places_.of(destination));
        auto const choices = source_;
        newcomers_.choices.push_back(destinations);
        auto const* const evacuation = dynamic_cast<EvacuationState const*>(&event);
        for (auto const& arrival : schedule.arrivals) {
            auto const key = static_cast<std::uint32_t>(newcomers_.count++);
            SpawnRequest info = person_of(document_, event.profile.value_or(GlobalId()), seed_, key);
            info.due = arrival.time;
            info.source = source_;
            info.origin = origins[static_cast<std::size_t>(arrival.origin)];
            info.event = event.id;
            info.color = agent_color_of(event);
            if (arrival.destination == LOWEST_COST_DESTINATION) info.choices = choices;
            if (arrival.destination >= 0) {
                info.destination = destinations[static_cast<std::size_t>(arrival.destination)];
            }
            if (evacuation && evacuation->pre_movement_wait) {
                Random wait(seed_, streams::of_pre_movement_times + key);
                info.wait = sample(*evacuation->pre_movement_wait, wait);
            }
            newcomers_.by_origin.resize(places_.size());
            newcomers_.by_origin[info.origin].push_back(std::move(info));
        }
        ++source_;
    } catch (Exception const& exception) {
        refuse(title_of(event) + ": " + exception.GetMessage());
    }

    SpawnRequests take() {
        newcomers_.by_origin.resize(places_.size());
        for (auto& waiting : newcomers_.by_origin) std::ranges::stable_sort(waiting, {}, &SpawnRequest::due);
        return std::move(newcomers_);
    }

  private:
    Document const& document_;
    Places& places_;
    std::uint64_t seed_;
    std::uint32_t source_ = 0;  ///< the number of the event
    std::uint32_t start_ = 0;   ///< of the event; 0 for the first
    SpawnRequests newcomers_;
};

}  // namespace

SpawnRequests spawn_requests_of(Document const& document, Places& places, std::uint64_t seed) {
    Planner planner(document, places, seed);
    for (auto const* const event : document.objects<EventState>()) {
        if (event->enabled) planner.add(*event);
    }
    return planner.take();
}

std::vector<SpawnRequest> people_of_start(Document const& document, Places& places, std::uint64_t seed,
                                          GlobalId const& event, std::uint32_t source, std::uint32_t start,
                                          std::size_t first_key) {
    Planner planner(document, places, seed, source, start, first_key);
    planner.add(*document.find<EventState>(event));
    std::vector<SpawnRequest> people;
    for (auto& waiting : planner.take().by_origin) std::ranges::move(waiting, std::back_inserter(people));
    std::ranges::sort(people, {}, &SpawnRequest::key);
    return people;
}

SpawnRequest person_of(Document const& document, GlobalId const& profile, std::uint64_t seed, std::uint32_t key) {
    static ProfileState const default_profile;
    auto const* const found = document.find<ProfileState>(profile);
    if (profile.IsValid() && !found) refuse("'" + GlobalId(profile).GetString() + "' is no profile of the project");
    ProfileState const& state = found ? *found : default_profile;
    Random random(seed, key);
    SpawnRequest info;
    info.key = key;
    info.profile = profile;
    info.speed = sample(*state.speed, random);
    info.radius = sample(*state.radius, random);
    info.side_bias = side_of(state.direction_bias);
    info.avatar = state.avatar;
    info.network = state.network;
    auto const costs = costs_of(state, seed, key);
    info.climbing = costs.climbing;
    info.waiting = costs.waiting;
    return info;
}

}  // namespace pedflux::engine
