#include "engine/simulation/frame/warnings.h"

#include "engine/base/checks.h"

#include <string>

#include <fmt/format.h>

namespace pedflux::engine {

void warn_of_lost(Warnings& warnings, Journal& journal, World const& world, Clock const& clock, Routes const& routes,
                  Agents const& agents, AgentMotion const& motion) {
    warnings.lost.resize(routes.navigation.destination_count());
    if (warnings.lost[motion.destination]) return;
    warnings.lost[motion.destination] = true;
    auto const time = clock.frame == 0 ? std::string("at the start") : fmt::format("at {} s", text_of(clock.seconds()));
    journal.issues.emplace_back(
        IssueCategory::WARNING, "No way",
        fmt::format("No way{} leads from {} to {} {}; those who go there wait.", in_network(routes, motion.route_class),
                    world.plan.surfaces[motion.region].name, world.places[agents.infos[motion.agent].goal].title,
                    time));
}

void warn_of_crowded(Warnings& warnings, Journal& journal, Places const& places, Clock const& clock,
                     PlaceIndex origin) {
    warnings.crowded.resize(places.size());
    if (places[origin].is_portal() || warnings.crowded[origin]) return;
    warnings.crowded[origin] = true;
    journal.issues.emplace_back(
        IssueCategory::WARNING, "No room at the start",
        fmt::format("{} has no room for all who start there at {} s; the others come when there is.",
                    places[origin].title, text_of(clock.seconds())));
}

}  // namespace pedflux::engine
