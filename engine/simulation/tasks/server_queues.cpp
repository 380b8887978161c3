#include "engine/base/random.h"
#include "engine/base/random_streams.h"
#include "engine/simulation/events/event_engine.h"
#include "engine/simulation/frame/recording.h"
#include "engine/simulation/tasks/live_situation.h"
#include "engine/simulation/tasks/servers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace pedflux::engine {

namespace {

/// From so far (metres) people who come go straight to the end of the line when they see it.
constexpr double sees_line = 8;
/// So near to the end of the line (metres) people stand in it.
constexpr double at_end = 1.2;
/// So near to a place (metres) people go there without looking around.
constexpr double beside_place = 1;
/// So much farther from the head than the next place (metres) may be who steps up to be served.
constexpr double steps_up = 0.3;
/// Metres by which those who find no place spread with the root of their number: 1.3 persons per square metre.
constexpr double spread = 0.5;

using Stage = Visit::Stage;

/// One server with its plan, in one step.
class QueueService {
  public:
    QueueService(SimulationState& run, std::uint32_t number)
        : run_(run), number_(number), plan_(run.plan.servers[number]), server_(run.servers[number]) {}

    /// Lets those who come stand in line when they are at its end, the nearest first; sends the others there.
    void receive(std::vector<std::uint32_t> coming) {
        while (!coming.empty()) {
            auto const nearest = std::ranges::min_element(
                coming, {}, [&](std::uint32_t agent) { return std::pair(distance_to_end(agent), agent); });
            if (!is_at_end(*nearest)) break;
            visit_of(*nearest).stage = Stage::QUEUES;
            visit_of(*nearest).at_head = -1;
            server_.line.push_back(*nearest);
            begin_episode(run_, *nearest, EpisodeKind::AT_SERVER, plan_.id);
            coming.erase(nearest);
        }
        for (auto const agent : coming) send_to_end(agent);
    }

    /// Serves as many as it can at this moment.
    void serve() {
        for (;;) {
            note_who_is_next();
            if (server_.serves ? !release_served() : !begin_to_serve()) return;
        }
    }

    void line_up() {
        for (std::size_t i = 0; i < server_.line.size(); ++i) {
            auto& motion = motion_of(server_.line[i]);
            motion.post.reset();
            if (motion.region == plan_.region) motion.post = post_of(motion, i);
        }
    }

  private:
    AgentMotion& motion_of(std::uint32_t agent) { return run_.motions[run_.motion_of[agent]]; }
    Visit& visit_of(std::uint32_t agent) { return run_.infos[agent].tasks.visit; }

    Point place(std::size_t rank) const { return server_.places[std::min(rank, server_.places.size() - 1)]; }
    /// How many of so many have no place of their own.
    double without_place(std::size_t rank) const {
        return rank < server_.places.size() ? 0 : static_cast<double>(rank + 1 - server_.places.size());
    }

    double distance_to_end(std::uint32_t agent) {
        auto const& motion = motion_of(agent);
        if (motion.region != plan_.region) return std::numeric_limits<double>::infinity();
        return distance(motion.position, place(server_.line.size()));
    }
    bool sees(AgentMotion const& motion, Point point) const {
        return run_.navigation.in_sight(plan_.region, motion.position, point);
    }
    std::size_t nearest_place(AgentMotion const& motion) const {
        auto const nearest =
            std::ranges::min_element(server_.places, {}, [&](Point point) { return distance(motion.position, point); });
        return static_cast<std::size_t>(nearest - server_.places.begin());
    }

    /// Who comes upon the line where its end is out of sight stands in it, too, and goes along it to its place.
    bool is_at_end(std::uint32_t agent) {
        auto const& motion = motion_of(agent);
        double const way = distance_to_end(agent);
        if (std::isinf(way)) return false;
        if (way < at_end + spread * std::sqrt(without_place(server_.line.size()))) return true;
        bool const is_on_line = distance(motion.position, server_.places[nearest_place(motion)]) < plan_.spacing;
        return is_on_line && !sees(motion, place(server_.line.size()));
    }

    void send_to_end(std::uint32_t agent) {
        auto& motion = motion_of(agent);
        motion.post.reset();
        Point const end = place(server_.line.size());
        if (distance_to_end(agent) < sees_line && sees(motion, end)) motion.post = end;
    }

    Point post_of(AgentMotion const& motion, std::size_t rank) const {
        Point const wanted = place(rank);
        double const way = distance(motion.position, wanted);
        bool const stands_behind = rank >= server_.places.size() && way < spread * (1 + std::sqrt(without_place(rank)));
        if (stands_behind) return motion.position;
        if (way < beside_place || sees(motion, wanted)) return wanted;
        auto const here = nearest_place(motion);
        auto const there = std::min(rank, server_.places.size() - 1);
        return server_.places[here == there ? there : here < there ? here + 1 : here - 1];
    }

    /// Those who may be served at once when it is their turn: the one who is at the head of the line, and the next.
    void note_who_is_next() {
        for (std::size_t i = 0; i < std::min<std::size_t>(2, server_.line.size()); ++i) {
            auto const agent = server_.line[i];
            auto const& motion = motion_of(agent);
            bool const is_near = motion.region == plan_.region &&
                                 distance(motion.position, server_.places.front()) < plan_.spacing + steps_up;
            auto& at_head = visit_of(agent).at_head;
            if (!is_near) at_head = -1;
            if (is_near && at_head < 0) at_head = run_.seconds();
        }
    }

    bool begin_to_serve() {
        if (server_.line.empty() || !server_.open[entrance_side]) return false;
        auto const agent = server_.line.front();
        auto& visit = visit_of(agent);
        if (visit.at_head < 0) return false;
        // Frames do not delay who was waiting when the server became free.
        double const begins = std::max({server_.free_since, server_.open_since, visit.at_head});
        visit.stage = Stage::IS_SERVED;
        server_.serves = true;
        server_.has_served = false;
        server_.ends = begins + contact_time(agent);
        run_.events->crossings.passed({number_, true});
        return true;
    }

    double contact_time(std::uint32_t agent) {
        auto const& rules = run_.rules.servers[number_];
        auto& info = run_.infos[agent];
        Random random(run_.seed, streams::of_contact_times + (info.tasks.visit.draws++ << 32) + info.origin.key);
        for (auto const& [test, law] : rules.contact_rules) {
            if (passes(test, LiveSituation(run_, motion_of(agent), info.tasks.tests++))) return sample(law, random);
        }
        return rules.contact_time ? sample(*rules.contact_time, random) : 0;
    }

    bool release_served() {
        constexpr double rounding = 1e-9;
        if (run_.seconds() + rounding < server_.ends) return false;
        auto const agent = server_.line.front();
        auto& actions = run_.infos[agent].tasks.actions;
        int const processed = run_.rules.servers[number_].processed_action;
        bool const stayed = std::exchange(server_.has_served, true);
        bool const leaves = server_.open[exit_side];
        if (leaves) leave_server(run_, agent);
        if (!stayed && processed != NONE) start(actions, processed);
        if (leaves) server_.free_since = stayed ? run_.seconds() : server_.ends;
        return leaves;
    }

    SimulationState& run_;
    std::uint32_t number_;
    ServerLayout const& plan_;
    ServerQueue& server_;
};

/// The process that a visit belongs to; none when the agent does something else instead.
ActionFrame* process_of(TaskState& tasks) {
    auto& frames = tasks.actions.frames;
    auto const is_process = [&](ActionFrame const& frame) { return frame.node == tasks.visit.task.node; };
    auto const found = std::find_if(frames.rbegin(), frames.rend(), is_process);
    return found == frames.rend() ? nullptr : &*found;
}

/// Whether a visitor still is to go through its server. Who has been served does something else there meanwhile.
bool goes_on(SimulationState& run, std::uint32_t agent) {
    auto& tasks = run.infos[agent].tasks;
    auto const& server = run.servers[tasks.visit.server];
    bool const stays = server.has_served && server.serves && server.line.front() == agent;
    return stays ? process_of(tasks) != nullptr : tasks.task == tasks.visit.task;
}

}  // namespace

void visit_server(SimulationState& run, AgentMotion const& motion, std::uint32_t server, ActionTask const& task) {
    leave_server(run, motion.agent);
    auto& visit = run.infos[motion.agent].tasks.visit;
    visit.stage = Stage::COMES;
    visit.task = task;
    visit.server = server;
    ++run.servers[server].visitors;
}

void leave_server(SimulationState& run, std::uint32_t agent) {
    auto& tasks = run.infos[agent].tasks;
    auto& visit = tasks.visit;
    if (!visit.is_on()) return;
    auto& server = run.servers[visit.server];
    --server.visitors;
    run.motions[run.motion_of[agent]].post.reset();
    bool const was_in_line = visit.stage != Stage::COMES;
    bool const was_inside = visit.stage == Stage::IS_SERVED;
    visit.stage = Stage::NOWHERE;
    if (auto* const process = process_of(tasks)) {
        if (was_inside && server.has_served) process->passed = process->station;
        process->station = NONE;
    }
    if (was_in_line) {
        std::erase(server.line, agent);
        end_episode(run, agent, EpisodeKind::AT_SERVER, run.plan.servers[visit.server].id);
        int const release = run.rules.servers[visit.server].release_action;
        if (release != NONE) start(tasks.actions, release);
    }
    if (was_inside) {
        server.serves = server.has_served = false;
        server.free_since = run.seconds();
        run.events->crossings.passed({visit.server, false});
    }
}

void step_servers(SimulationState& run) {
    if (run.servers.empty()) return;
    std::vector<std::vector<std::uint32_t>> coming(run.servers.size());
    for (auto const& motion : run.motions) {
        auto& tasks = run.infos[motion.agent].tasks;
        auto& visit = tasks.visit;
        if (visit.is_on() && !goes_on(run, motion.agent)) leave_server(run, motion.agent);
        if (visit.stage == Stage::COMES) coming[visit.server].push_back(motion.agent);
    }
    for (std::uint32_t number = 0; number < run.servers.size(); ++number) {
        if (run.servers[number].visitors == 0) continue;
        QueueService desk(run, number);
        desk.receive(std::move(coming[number]));
        desk.serve();
        desk.line_up();
    }
}

}  // namespace pedflux::engine
