#include "engine/simulation/agents_here.h"

#include "engine/geometry/checks.h"

#include <string>

namespace pedflux::engine {

Here here(std::weak_ptr<LiveRun> const& weak, int id) {
    std::string const title = "Agent " + std::to_string(id);
    auto run = weak.lock();
    if (!run) refuse(title + " belongs to a simulation that is gone");
    auto const number = static_cast<std::size_t>(id);
    auto const walker = run->walker_of[number];
    if (walker == gone) refuse(title + " has left the simulation");
    auto& world = *run;
    return {std::move(run), world.persons[number], world.walkers[walker]};
}

}  // namespace pedflux::engine
