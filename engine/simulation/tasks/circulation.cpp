#include "engine/simulation/tasks/circulation.h"

#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/simulation/tasks/goals.h"
#include "engine/simulation/tasks/live_situation.h"

#include <cmath>
#include <limits>

namespace pedflux::engine {

namespace {

/// Clocks add up fractions of seconds, so that they can be a little behind the time that they show.
constexpr double clock_tolerance = 1e-6;

/// The next portal of an agent: another one than the last, each with the same chance.
PlaceIndex next_portal(TaskContext const& context, TaskState const& tasks, std::uint32_t key) {
    auto portals = context.program.circulations[tasks.circulation].portals;
    if (portals.size() > 1) std::erase(portals, tasks.portal);
    Random random(context.world.seed, streams::of_circulation + (std::uint64_t{tasks.portals_drawn} << 32) + key);
    return portals[random.below(static_cast<std::uint32_t>(portals.size()))];
}

bool circulates_on(TaskContext const& context, TaskState const& tasks) {
    constexpr double without_end = std::numeric_limits<double>::infinity();
    auto const& program = context.program.circulations[tasks.circulation];
    auto const end = program.time ? clock_time(context.clock, context.events, *program.time).value_or(without_end)
                                  : tasks.circulates_until;
    bool const is_counted = tasks.portals_left <= 0;
    bool const is_over = context.clock.time_of_day() + clock_tolerance >= end;
    bool const has_time = program.duration || program.time;
    if (program.until_both && program.count && has_time) return !is_counted || !is_over;
    return !is_counted && !is_over;
}

}  // namespace

void begin_circulation(TaskContext& context, AgentMotion const& motion, std::uint32_t circulation) {
    if (circulation == no_place) return;
    auto const& origin = context.agents.infos[motion.agent].origin;
    auto& tasks = context.agents.tasks[motion.agent];
    auto const& program = context.program.circulations[circulation];
    Random random(context.world.seed, streams::of_circulation - 1 - origin.key);
    tasks.circulation = circulation;
    tasks.portal = origin.origin;
    if (program.count) tasks.portals_left = static_cast<int>(std::lround(sample(*program.count, random)));
    if (program.duration) tasks.circulates_until = context.clock.time_of_day() + sample(*program.duration, random);
}

void circulate(TaskContext& context, AgentMotion& motion) {
    auto& tasks = context.agents.tasks[motion.agent];
    bool const begins = tasks.portals_drawn == 0;
    bool const has_reached = !begins && is_at(context.world, context.agents, motion, tasks.portal);
    if (has_reached) {
        --tasks.portals_left;
        int const waypoint = context.program.doorways[context.world.places[tasks.portal].doorway].waypoint;
        if (waypoint != NONE) start(tasks.actions, waypoint);
    }
    if (!circulates_on(context, tasks)) {
        tasks.circulation = no_place;
        return;
    }
    if (begins || has_reached) {
        tasks.portal = next_portal(context, tasks, context.agents.infos[motion.agent].origin.key);
        ++tasks.portals_drawn;
    }
    head_for(context, motion, tasks.portal);
}

}  // namespace pedflux::engine
