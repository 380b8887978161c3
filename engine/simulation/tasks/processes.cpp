#include "engine/simulation/tasks/processes.h"

#include "engine/simulation/tasks/dispatches.h"
#include "engine/simulation/tasks/live_situation.h"
#include "engine/simulation/tasks/server_choice.h"
#include "engine/simulation/tasks/server_visits.h"

#include <algorithm>
#include <utility>

namespace pedflux::engine {

namespace {

std::optional<PlaceIndex> first_station(TaskContext& context, AgentMotion const& motion, ActionTask const& task) {
    auto const& program = context.program;
    auto const drawn = static_cast<std::size_t>(std::max(task.goal, 0));
    auto const weights = actions_of(program, task).program.weights_of(node_of(program, task));
    auto const start = choose_start(context, motion, places_of(program, task), drawn, weights);
    if (!start || !context.world.places[*start].is_dispatch()) return start;
    return sink_for(context, motion, program.dispatches[context.world.places[*start].dispatch], no_place);
}

/// Makes a place the next station. A portal or area becomes the agent's last goal, and so does what follows on a last
/// goal that it has passed.
void go_on(Places const& places, TaskState& tasks, PlaceIndex station) {
    auto& process = tasks.actions.frames.back();
    auto const last = tasks.last_goal;
    bool const leads_from_last =
        last != no_place && (places[last].is_server() || last == static_cast<PlaceIndex>(process.passed));
    if (leads_from_last || !places[station].is_server()) tasks.last_goal = station;
    process.station = static_cast<int>(station);
}

}  // namespace

bool advance_process(TaskContext& context, AgentMotion const& motion, ActionTask const& task) {
    auto const& places = context.world.places;
    auto& tasks = context.agents.tasks[motion.agent];
    auto& process = tasks.actions.frames.back();
    for (;;) {
        if (process.station == NONE) {
            auto const next = process.passed == NONE
                                  ? first_station(context, motion, task)
                                  : next_station(context, motion, static_cast<PlaceIndex>(process.passed));
            if (!next) return true;
            go_on(places, tasks, *next);
        }
        auto const station = static_cast<PlaceIndex>(process.station);
        tasks.task_goal = station;
        if (places[station].is_server()) {
            auto const& visit = tasks.visit;
            if (!visit.is_on() || visit.task != task) visit_server(context, motion, places[station].server, task);
            return false;
        }
        if (!is_at(context.world, context.agents, motion, station)) return false;
        process.passed = std::exchange(process.station, NONE);
    }
}

}  // namespace pedflux::engine
