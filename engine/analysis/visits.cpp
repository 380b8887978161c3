#include "engine/analysis/visits.h"

#include <algorithm>

namespace pedflux::engine {

Visits visits_of(RunReader& reader) {
    Visits visits(reader.agents().size());
    for (int frame = first_frame; frame <= reader.last_frame(); ++frame) {
        for (auto const& person : reader.frame(frame)) {
            auto& known = visits[person.agent];
            if (!known.empty() && known.back().surface == person.surface && known.back().last == frame - 1) {
                known.back().last = frame;
            } else {
                known.push_back({person.surface, frame, frame});
            }
        }
    }
    return visits;
}

std::optional<int> departure_of(RunReader const& reader, AgentRecord const& person) {
    bool const stayed = !person.arrived && person.last_frame == reader.last_frame();
    return stayed ? std::nullopt : std::optional(person.last_frame + 1);
}

std::vector<Visit> visits_of(RunReader const& reader, AgentRecord const& person,
                             std::vector<SurfaceVisit> const& surface_visits, RunPlace const& place) {
    std::vector<Visit> visits;
    bool const is_portal = std::ranges::find(place.surfaces, true) == place.surfaces.end();
    if (is_portal && person.origin.InternalEquals(place.id)) visits.push_back({person.first_frame, person.first_frame});
    auto const departure = departure_of(reader, person);
    for (auto const& visit : surface_visits) {
        if (!place.has(visit.surface)) continue;
        bool const is_last = &visit == &surface_visits.back();
        auto const exit = is_last ? departure : std::optional(visit.last + 1);
        if (!visits.empty() && visits.back().exit == visit.first) {
            visits.back().exit = exit;
        } else {
            visits.push_back({visit.first, exit});
        }
    }
    if (is_portal && person.arrived && person.destination.InternalEquals(place.id)) {
        visits.push_back({*departure, departure});
    }
    return visits;
}

}  // namespace pedflux::engine
