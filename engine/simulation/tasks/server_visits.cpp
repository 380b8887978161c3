#include "engine/simulation/tasks/server_visits.h"

#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/simulation/tasks/live_situation.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace pedflux::engine {

namespace {

/// Agents go straight to the end of the line within this distance (metres) when they see it.
constexpr double sees_line = 8;
/// Agents stand in line within this distance (metres) of its end.
constexpr double at_end = 1.2;
/// Agents go straight to a place within this distance (metres), whether or not they see it.
constexpr double beside_place = 1;
/// The next agent may be served this much (metres) farther from the head of the line than the next place is.
constexpr double steps_up = 0.3;
/// Agents without a place spread by this distance (metres) times the root of their number: 1.3 persons per square
/// metre.
constexpr double spread = 0.5;

using Stage = Visit::Stage;

/// One server in one step.
class QueueService {
  public:
    QueueService(TaskContext& context, std::uint32_t server)
        : context_(context),
          number_(server),
          layout_(context.world.plan.servers[server]),
          program_(context.program.servers[server]),
          queue_(context.servers.queues[server]) {}

    /// Lets agents that come stand in line when they are at its end, the nearest first; sends the others there.
    void receive(std::vector<std::uint32_t> coming) {
        while (!coming.empty()) {
            auto const nearest = std::ranges::min_element(
                coming, {}, [&](std::uint32_t agent) { return std::pair(distance_to_end(agent), agent); });
            if (!is_at_end(*nearest)) break;
            visit_of(*nearest).stage = Stage::QUEUES;
            visit_of(*nearest).at_head = -1;
            queue_.line.push_back(*nearest);
            begin_episode(context_.journal.episodes, context_.clock, *nearest, EpisodeKind::AT_SERVER, layout_.id);
            coming.erase(nearest);
        }
        for (auto const agent : coming) send_to_end(agent);
    }

    /// Serves as many agents as it can at this moment.
    void serve() {
        for (;;) {
            note_who_is_next();
            if (queue_.serves ? !release_served() : !begin_to_serve()) return;
        }
    }

    void line_up() {
        for (std::size_t i = 0; i < queue_.line.size(); ++i) {
            auto& motion = motion_of(queue_.line[i]);
            motion.post.reset();
            if (motion.region == layout_.region) motion.post = post_of(motion, i);
        }
    }

  private:
    AgentMotion& motion_of(std::uint32_t agent) { return context_.agents.motion(agent); }
    Visit& visit_of(std::uint32_t agent) { return context_.agents.tasks[agent].visit; }

    Point place(std::size_t rank) const { return queue_.places[std::min(rank, queue_.places.size() - 1)]; }
    /// How many agents up to a rank have no place of their own.
    double without_place(std::size_t rank) const {
        return rank < queue_.places.size() ? 0 : static_cast<double>(rank + 1 - queue_.places.size());
    }

    double distance_to_end(std::uint32_t agent) {
        auto const& motion = motion_of(agent);
        if (motion.region != layout_.region) return std::numeric_limits<double>::infinity();
        return distance(motion.position, place(queue_.line.size()));
    }
    bool sees(AgentMotion const& motion, Point point) const {
        return context_.routes.navigation.in_sight(layout_.region, motion.position, point);
    }
    std::size_t nearest_place(AgentMotion const& motion) const {
        auto const nearest =
            std::ranges::min_element(queue_.places, {}, [&](Point point) { return distance(motion.position, point); });
        return static_cast<std::size_t>(nearest - queue_.places.begin());
    }

    /// An agent that comes upon the line where its end is out of sight stands in it, too, and goes along it to its
    /// place.
    bool is_at_end(std::uint32_t agent) {
        auto const& motion = motion_of(agent);
        double const way = distance_to_end(agent);
        if (std::isinf(way)) return false;
        if (way < at_end + spread * std::sqrt(without_place(queue_.line.size()))) return true;
        bool const is_on_line = distance(motion.position, queue_.places[nearest_place(motion)]) < layout_.spacing;
        return is_on_line && !sees(motion, place(queue_.line.size()));
    }

    void send_to_end(std::uint32_t agent) {
        auto& motion = motion_of(agent);
        motion.post.reset();
        Point const end = place(queue_.line.size());
        if (distance_to_end(agent) < sees_line && sees(motion, end)) motion.post = end;
    }

    Point post_of(AgentMotion const& motion, std::size_t rank) const {
        Point const wanted = place(rank);
        double const way = distance(motion.position, wanted);
        bool const stands_behind = rank >= queue_.places.size() && way < spread * (1 + std::sqrt(without_place(rank)));
        if (stands_behind) return motion.position;
        if (way < beside_place || sees(motion, wanted)) return wanted;
        auto const here = nearest_place(motion);
        auto const there = std::min(rank, queue_.places.size() - 1);
        return queue_.places[here == there ? there : here < there ? here + 1 : here - 1];
    }

    /// Notes which of the first two in line may be served at once when it is their turn.
    void note_who_is_next() {
        for (std::size_t i = 0; i < std::min<std::size_t>(2, queue_.line.size()); ++i) {
            auto const agent = queue_.line[i];
            auto const& motion = motion_of(agent);
            bool const is_near = motion.region == layout_.region &&
                                 distance(motion.position, queue_.places.front()) < layout_.spacing + steps_up;
            auto& at_head = visit_of(agent).at_head;
            if (!is_near) at_head = -1;
            if (is_near && at_head < 0) at_head = context_.clock.seconds();
        }
    }

    bool begin_to_serve() {
        if (queue_.line.empty() || !queue_.open[entrance_side]) return false;
        auto const agent = queue_.line.front();
        auto& visit = visit_of(agent);
        if (visit.at_head < 0) return false;
        // Frames do not delay an agent that was waiting when the server became free.
        double const begins = std::max({queue_.free_since, queue_.open_since, visit.at_head});
        visit.stage = Stage::IS_SERVED;
        queue_.serves = true;
        queue_.has_served = false;
        queue_.ends = begins + draw_contact_time(agent);
        context_.journal.server_crossings.push_back({number_, true});
        return true;
    }

    double draw_contact_time(std::uint32_t agent) {
        auto const draw = visit_of(agent).draws++;
        Random random(context_.world.seed,
                      streams::of_contact_times + (draw << 32) + context_.agents.infos[agent].origin.key);
        for (auto const& [test, seconds] : program_.contact_times) {
            if (put_test(context_, motion_of(agent), test)) return sample(seconds, random);
        }
        return program_.contact_time ? sample(*program_.contact_time, random) : 0;
    }

    bool release_served() {
        constexpr double rounding = 1e-9;
        if (context_.clock.seconds() + rounding < queue_.ends) return false;
        auto const agent = queue_.line.front();
        auto& actions = context_.agents.tasks[agent].actions;
        int const processed = program_.processed_action;
        bool const stayed = std::exchange(queue_.has_served, true);
        bool const leaves = queue_.open[exit_side];
        if (leaves) leave_server(context_, agent);
        if (!stayed && processed != NONE) start(actions, processed);
        if (leaves) queue_.free_since = stayed ? context_.clock.seconds() : queue_.ends;
        return leaves;
    }

    TaskContext& context_;
    std::uint32_t number_;
    ServerLayout const& layout_;
    ServerProgram const& program_;
    ServerQueue& queue_;
};

/// The process that a visit belongs to; none when the agent does something else instead.
ActionFrame* process_of(TaskState& tasks) {
    auto& frames = tasks.actions.frames;
    auto const is_process = [&](ActionFrame const& frame) {
        return frame.node == tasks.visit.task.node && frame.order == tasks.visit.task.order;
    };
    auto const found = std::find_if(frames.rbegin(), frames.rend(), is_process);
    return found == frames.rend() ? nullptr : &*found;
}

/// Whether a visitor still is to go through its server. One that has been served does something else there meanwhile.
bool goes_on(ServerQueues const& servers, TaskState& tasks, std::uint32_t agent) {
    auto const& server = servers.queues[tasks.visit.server];
    bool const stays = server.has_served && server.serves && server.line.front() == agent;
    return stays ? process_of(tasks) != nullptr : tasks.task == tasks.visit.task;
}

}  // namespace

void visit_server(TaskContext& context, AgentMotion const& motion, std::uint32_t server, ActionTask const& task) {
    leave_server(context, motion.agent);
    auto& visit = context.agents.tasks[motion.agent].visit;
    visit.stage = Stage::COMES;
    visit.task = task;
    visit.server = server;
    ++context.servers.queues[server].visitors;
}

void leave_server(TaskContext& context, std::uint32_t agent) {
    auto& tasks = context.agents.tasks[agent];
    auto& visit = tasks.visit;
    if (!visit.is_on()) return;
    auto& queue = context.servers.queues[visit.server];
    --queue.visitors;
    context.agents.motion(agent).post.reset();
    bool const was_in_line = visit.stage != Stage::COMES;
    bool const was_inside = visit.stage == Stage::IS_SERVED;
    visit.stage = Stage::NOWHERE;
    if (auto* const process = process_of(tasks)) {
        if (was_inside && queue.has_served) process->passed = process->station;
        process->station = NONE;
    }
    visit.task = {};
    if (was_in_line) {
        std::erase(queue.line, agent);
        end_episode(context.journal.episodes, context.clock, agent, EpisodeKind::AT_SERVER,
                    context.world.plan.servers[visit.server].id);
        int const release = context.program.servers[visit.server].release_action;
        if (release != NONE) start(tasks.actions, release);
    }
    if (was_inside) {
        queue.serves = queue.has_served = false;
        queue.free_since = context.clock.seconds();
        context.journal.server_crossings.push_back({visit.server, false});
    }
}

void step_servers(TaskContext& context) {
    auto const& queues = context.servers.queues;
    if (queues.empty()) return;
    std::vector<std::vector<std::uint32_t>> coming(queues.size());
    for (auto const& motion : context.agents.motions) {
        auto& tasks = context.agents.tasks[motion.agent];
        auto const& visit = tasks.visit;
        if (visit.is_on() && !goes_on(context.servers, tasks, motion.agent)) leave_server(context, motion.agent);
        if (visit.stage == Stage::COMES) coming[visit.server].push_back(motion.agent);
    }
    for (std::uint32_t server = 0; server < queues.size(); ++server) {
        if (queues[server].visitors == 0) continue;
        QueueService service(context, server);
        service.receive(std::move(coming[server]));
        service.serve();
        service.line_up();
    }
}

}  // namespace pedflux::engine
