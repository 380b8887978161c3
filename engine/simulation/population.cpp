#include "engine/simulation/population.h"

#include "engine/behaviour/event_states.h"
#include "engine/behaviour/random.h"
#include "engine/behaviour/schedule.h"
#include "engine/geometry/checks.h"
#include "engine/model/document.h"
#include "engine/model/profile_state.h"
#include "engine/simulation/random_streams.h"
#include "engine/simulation/route_classes.h"

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
            Newcomer person = person_of(document_, event.profile.value_or(GlobalId()), seed_, key);
            person.due = arrival.time;
            person.source = source_;
            person.origin = origins[static_cast<std::size_t>(arrival.origin)];
            person.event = event.id;
            person.color = agent_color_of(event);
            if (arrival.destination == LOWEST_COST_DESTINATION) person.choices = choices;
            if (arrival.destination >= 0) {
                person.destination = destinations[static_cast<std::size_t>(arrival.destination)];
            }
            if (evacuation && evacuation->pre_movement_wait) {
                Random wait(seed_, streams::of_pre_movement_times + key);
                person.wait = sample(*evacuation->pre_movement_wait, wait);
            }
            newcomers_.by_origin.resize(places_.size());
            newcomers_.by_origin[person.origin].push_back(std::move(person));
        }
        ++source_;
    } catch (Exception const& exception) {
        refuse(title_of(event) + ": " + exception.GetMessage());
    }

    Newcomers take() {
        newcomers_.by_origin.resize(places_.size());
        for (auto& waiting : newcomers_.by_origin) std::ranges::stable_sort(waiting, {}, &Newcomer::due);
        return std::move(newcomers_);
    }

  private:
    Document const& document_;
    Places& places_;
    std::uint64_t seed_;
    std::uint32_t source_ = 0;  ///< the number of the event
    std::uint32_t start_ = 0;   ///< of the event; 0 for the first
    Newcomers newcomers_;
};

}  // namespace

Newcomers newcomers_of(Document const& document, Places& places, std::uint64_t seed) {
    Planner planner(document, places, seed);
    for (auto const* const event : document.objects<EventState>()) {
        if (event->enabled) planner.add(*event);
    }
    return planner.take();
}

std::vector<Newcomer> people_of_start(Document const& document, Places& places, std::uint64_t seed,
                                      GlobalId const& event, std::uint32_t source, std::uint32_t start,
                                      std::size_t first_key) {
    Planner planner(document, places, seed, source, start, first_key);
    planner.add(*document.find<EventState>(event));
    std::vector<Newcomer> people;
    for (auto& waiting : planner.take().by_origin) std::ranges::move(waiting, std::back_inserter(people));
    std::ranges::sort(people, {}, &Newcomer::key);
    return people;
}

Newcomer person_of(Document const& document, GlobalId const& profile, std::uint64_t seed, std::uint32_t key) {
    static ProfileState const default_profile;
    auto const* const found = document.find<ProfileState>(profile);
    if (profile.IsValid() && !found) refuse("'" + GlobalId(profile).GetString() + "' is no profile of the project");
    ProfileState const& state = found ? *found : default_profile;
    Random random(seed, key);
    Newcomer person;
    person.key = key;
    person.profile = profile;
    person.speed = sample(*state.speed, random);
    person.radius = sample(*state.radius, random);
    person.side_bias = side_of(state.direction_bias);
    person.avatar = state.avatar;
    person.network = state.network;
    auto const costs = costs_of(state, seed, key);
    person.climbing = costs.climbing;
    person.waiting = costs.waiting;
    return person;
}

}  // namespace pedflux::engine
