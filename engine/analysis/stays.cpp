#include "engine/analysis/stays.h"

#include <algorithm>

namespace pedflux::engine {

Stays stays_of(RunReader& reader) {
    Stays stays(reader.agents().size());
    for (int frame = first_frame; frame <= reader.last_frame(); ++frame) {
        for (auto const& person : reader.frame(frame)) {
            auto& known = stays[person.agent];
            if (!known.empty() && known.back().surface == person.surface && known.back().last == frame - 1) {
                known.back().last = frame;
            } else {
                known.push_back({person.surface, frame, frame});
            }
        }
    }
    return stays;
}

std::optional<int> departure_of(RunReader const& reader, AgentRecord const& person) {
    bool const stayed = !person.arrived && person.last_frame == reader.last_frame();
    return stayed ? std::nullopt : std::optional(person.last_frame + 1);
}

std::vector<Visit> visits_of(RunReader const& reader, AgentRecord const& person, std::vector<Stay> const& stays,
                             RunPlace const& place) {
    std::vector<Visit> visits;
    bool const is_portal = std::ranges::find(place.surfaces, true) == place.surfaces.end();
    if (is_portal && person.origin.InternalEquals(place.id)) visits.push_back({person.first_frame, person.first_frame});
    auto const departure = departure_of(reader, person);
    for (auto const& stay : stays) {
        if (!place.has(stay.surface)) continue;
        bool const is_last = &stay == &stays.back();
        auto const exit = is_last ? departure : std::optional(stay.last + 1);
        if (!visits.empty() && visits.back().exit == stay.first) {
            visits.back().exit = exit;
        } else {
            visits.push_back({stay.first, exit});
        }
    }
    if (is_portal && person.arrived && person.destination.InternalEquals(place.id)) {
        visits.push_back({*departure, departure});
    }
    return visits;
}

}  // namespace pedflux::engine
