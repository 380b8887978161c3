#include "engine/simulation/tasks/evacuation.h"

#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/simulation/routing/path_queries.h"
#include "engine/simulation/tasks/goals.h"
#include "engine/simulation/tasks/live_situation.h"

#include <algorithm>
#include <utility>

namespace pedflux::engine {

namespace {

/// Sends an agent out that is in one of the zones. Those whom the event itself has brought know it already.
/// @param start of the event, from 0
void clear(TaskContext& context, AgentMotion& motion, Clearance const& clearance, std::uint64_t start) {
    auto const& origin = context.agents.infos[motion.agent].origin;
    bool const is_inside = std::ranges::any_of(
        clearance.zones, [&](PlaceIndex zone) { return is_at(context.world, context.agents, motion, zone); });
    if (!is_inside || origin.event.InternalEquals(clearance.event)) return;
    Random random(context.world.seed, streams::of_clearances + (start << 32) + origin.key);
    auto& tasks = context.agents.tasks[motion.agent];
    tasks.actions.frames.clear();
    tasks.task.reset();
    tasks.circulation = no_place;
    tasks.wait_after.reset();
    tasks.evacuates = true;
    tasks.wait_style = clearance.wait_style;
    motion.starts_at = context.clock.seconds() + sample(clearance.wait, random);
    send_to(context, motion,
            nearest_place(context.routes, context.world, {motion.region, motion.position}, motion.route_class,
                          clearance.exits));
}

}  // namespace

void clear_zones(TaskContext& context, std::vector<std::size_t>& starts) {
    auto const& clearances = context.program.clearances;
    starts.resize(clearances.size());
    for (std::size_t i = 0; i < clearances.size(); ++i) {
        auto const now = context.events.start_count(clearances[i].event);
        if (now == std::exchange(starts[i], now)) continue;
        for (auto& motion : context.agents.motions) clear(context, motion, clearances[i], now - 1);
    }
}

}  // namespace pedflux::engine
