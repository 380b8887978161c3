#pragma once

#include "engine/analysis/places.h"
#include "engine/behaviour/triggers/crossing.h"
#include "engine/results/run_reader.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Where each person of a run was, from frame to frame.
namespace pedflux::engine {

/// A time without a break on one surface.
struct SurfaceVisit {
    std::uint16_t surface = 0;
    int first = 0;  ///< frame
    int last = 0;   ///< frame
};

/// The visits of each person, in the order of time. Reads the whole run.
using Visits = std::vector<std::vector<SurfaceVisit>>;
Visits visits_of(RunReader& reader);

/// Where somebody was whom no frame shows.
inline constexpr SurfaceIndex unknown_surface = no_surface - 1;

/// The first frame that does not show a person any more; none for one who was there to the end of the run.
std::optional<int> departure_of(RunReader const& reader, AgentRecord const& person);

/// Tells the crossings of a person in the order of time, each with the first frame that shows it:
/// told(int frame, Crossing const&). Somebody whom no frame shows enters and leaves at an unknown surface.
template <class Told>
void follow(RunPlaces const& places, AgentRecord const& person, std::vector<SurfaceVisit> const& visits,
            Told const& told) {
    Trail trail;
    auto const at = [&](int frame) { return [&told, frame](Crossing const& crossing) { told(frame, crossing); }; };
    auto const origin = places.portal(person.origin);
    if (visits.empty()) trail.enter({.surface = unknown_surface}, origin, at(person.first_frame));
    for (auto const& visit : visits) {
        Whereabouts const here{.surface = visit.surface, .on_connection = places.is_connection(visit.surface)};
        if (&visit == &visits.front()) {
            trail.enter(here, origin, at(visit.first));
        } else {
            trail.move(here, at(visit.first));
        }
    }
    auto const departure = departure_of(places.reader(), person);
    if (!departure) return;
    trail.leave(person.arrived ? places.portal(person.destination) : std::nullopt, at(*departure));
}

/// A time without a break in an area, from the first frame in it to the first one that is not; a portal is passed at
/// once.
struct Visit {
    int enter = 0;
    std::optional<int> exit;  ///< none for who was there to the end of the run
};
std::vector<Visit> visits_of(RunPlaces const& places, AgentRecord const& person,
                             std::vector<SurfaceVisit> const& surface_visits, Area const& area);

}  // namespace pedflux::engine
