#include "engine/analysis/visits.h"

#include "engine/behaviour/triggers/transition_program.h"

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

std::vector<Visit> visits_of(RunPlaces const& places, AgentRecord const& person,
                             std::vector<SurfaceVisit> const& surface_visits, Area const& area) {
    std::vector<Visit> visits;
    follow(places, person, surface_visits, [&](int frame, Crossing const& crossing) {
        bool const comes = enters(area, crossing);
        bool const goes = exits(area, crossing);
        if (area.portal) {
            if (comes || goes) visits.push_back({frame, frame});
        } else if (comes) {
            visits.push_back({frame, std::nullopt});
        } else if (goes) {
            visits.back().exit = frame;
        }
    });
    return visits;
}

}  // namespace pedflux::engine
