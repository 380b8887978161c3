#include "engine/behaviour/random.h"
#include "engine/simulation/agent_situation_live.h"
#include "engine/simulation/random_streams.h"
#include "engine/simulation/recording.h"
#include "engine/simulation/rules_run.h"
#include "engine/simulation/servers.h"

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
class Desk {
  public:
    Desk(LiveRun& run, std::uint32_t number)
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
            auto& walker = walker_of(server_.line[i]);
            walker.post.reset();
            if (walker.region == plan_.region) walker.post = post_of(walker, i);
        }
    }

  private:
    Walker& walker_of(std::uint32_t agent) { return run_.walkers[run_.walker_of[agent]]; }
    Visit& visit_of(std::uint32_t agent) { return run_.persons[agent].doings.visit; }

    Point place(std::size_t rank) const { return server_.places[std::min(rank, server_.places.size() - 1)]; }
    /// How many of so many have no place of their own.
    double without_place(std::size_t rank) const {
        return rank < server_.places.size() ? 0 : static_cast<double>(rank + 1 - server_.places.size());
    }

    double distance_to_end(std::uint32_t agent) {
        auto const& walker = walker_of(agent);
        if (walker.region != plan_.region) return std::numeric_limits<double>::infinity();
        return distance(walker.position, place(server_.line.size()));
    }
    bool sees(Walker const& walker, Point point) const {
        return run_.navigation.in_sight(plan_.region, walker.position, point);
    }
    std::size_t nearest_place(Walker const& walker) const {
        auto const nearest =
            std::ranges::min_element(server_.places, {}, [&](Point point) { return distance(walker.position, point); });
        return static_cast<std::size_t>(nearest - server_.places.begin());
    }

    /// Who comes upon the line where its end is out of sight stands in it, too, and goes along it to its place.
    bool is_at_end(std::uint32_t agent) {
        auto const& walker = walker_of(agent);
        double const way = distance_to_end(agent);
        if (std::isinf(way)) return false;
        if (way < at_end + spread * std::sqrt(without_place(server_.line.size()))) return true;
        bool const is_on_line = distance(walker.position, server_.places[nearest_place(walker)]) < plan_.spacing;
        return is_on_line && !sees(walker, place(server_.line.size()));
    }

    void send_to_end(std::uint32_t agent) {
        auto& walker = walker_of(agent);
        walker.post.reset();
        Point const end = place(server_.line.size());
        if (distance_to_end(agent) < sees_line && sees(walker, end)) walker.post = end;
    }

    Point post_of(Walker const& walker, std::size_t rank) const {
        Point const wanted = place(rank);
        double const way = distance(walker.position, wanted);
        bool const stands_behind = rank >= server_.places.size() && way < spread * (1 + std::sqrt(without_place(rank)));
        if (stands_behind) return walker.position;
        if (way < beside_place || sees(walker, wanted)) return wanted;
        auto const here = nearest_place(walker);
        auto const there = std::min(rank, server_.places.size() - 1);
        return server_.places[here == there ? there : here < there ? here + 1 : here - 1];
    }

    /// Those who may be served at once when it is their turn: the one who is at the head of the line, and the next.
    void note_who_is_next() {
        for (std::size_t i = 0; i < std::min<std::size_t>(2, server_.line.size()); ++i) {
            auto const agent = server_.line[i];
            auto const& walker = walker_of(agent);
            bool const is_near = walker.region == plan_.region &&
                                 distance(walker.position, server_.places.front()) < plan_.spacing + steps_up;
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
        run_.timed->crossings.passed({number_, true});
        return true;
    }

    double contact_time(std::uint32_t agent) {
        auto const& rules = run_.rules.servers[number_];
        auto& person = run_.persons[agent];
        Random random(run_.seed, streams::of_contact_times + (person.doings.visit.draws++ << 32) + person.origin.key);
        for (auto const& [test, law] : rules.contact_rules) {
            if (passes(test, LiveSituation(run_, walker_of(agent), person.doings.tests++))) return sample(law, random);
        }
        return rules.contact_time ? sample(*rules.contact_time, random) : 0;
    }

    bool release_served() {
        constexpr double rounding = 1e-9;
        if (run_.seconds() + rounding < server_.ends) return false;
        auto const agent = server_.line.front();
        auto& actions = run_.persons[agent].doings.actions;
        int const processed = run_.rules.servers[number_].processed_action;
        bool const stayed = std::exchange(server_.has_served, true);
        bool const leaves = server_.open[exit_side];
        if (leaves) leave_server(run_, agent);
        if (!stayed && processed != NONE) start(actions, processed);
        if (leaves) server_.free_since = stayed ? run_.seconds() : server_.ends;
        return leaves;
    }

    LiveRun& run_;
    std::uint32_t number_;
    ServerPlan const& plan_;
    LiveServer& server_;
};

/// The process that a visit belongs to; none when the agent does something else instead.
ActionFrame* process_of(Doings& doings) {
    auto& frames = doings.actions.frames;
    auto const is_process = [&](ActionFrame const& frame) { return frame.node == doings.visit.task.node; };
    auto const found = std::find_if(frames.rbegin(), frames.rend(), is_process);
    return found == frames.rend() ? nullptr : &*found;
}

/// Whether a visitor still is to go through its server. Who has been served does something else there meanwhile.
bool goes_on(LiveRun& run, std::uint32_t agent) {
    auto& doings = run.persons[agent].doings;
    auto const& server = run.servers[doings.visit.server];
    bool const stays = server.has_served && server.serves && server.line.front() == agent;
    return stays ? process_of(doings) != nullptr : doings.task == doings.visit.task;
}

}  // namespace

void visit_server(LiveRun& run, Walker const& walker, std::uint32_t server, ActionTask const& task) {
    leave_server(run, walker.agent);
    auto& visit = run.persons[walker.agent].doings.visit;
    visit.stage = Stage::COMES;
    visit.task = task;
    visit.server = server;
    ++run.servers[server].visitors;
}

void leave_server(LiveRun& run, std::uint32_t agent) {
    auto& doings = run.persons[agent].doings;
    auto& visit = doings.visit;
    if (!visit.is_on()) return;
    auto& server = run.servers[visit.server];
    --server.visitors;
    run.walkers[run.walker_of[agent]].post.reset();
    bool const was_in_line = visit.stage != Stage::COMES;
    bool const was_inside = visit.stage == Stage::IS_SERVED;
    visit.stage = Stage::NOWHERE;
    if (auto* const process = process_of(doings)) {
        if (was_inside && server.has_served) process->passed = process->station;
        process->station = NONE;
    }
    if (was_in_line) {
        std::erase(server.line, agent);
        end_episode(run, agent, EpisodeKind::AT_SERVER, run.plan.servers[visit.server].id);
        int const release = run.rules.servers[visit.server].release_action;
        if (release != NONE) start(doings.actions, release);
    }
    if (was_inside) {
        server.serves = server.has_served = false;
        server.free_since = run.seconds();
        run.timed->crossings.passed({visit.server, false});
    }
}

void step_servers(LiveRun& run) {
    if (run.servers.empty()) return;
    std::vector<std::vector<std::uint32_t>> coming(run.servers.size());
    for (auto const& walker : run.walkers) {
        auto& doings = run.persons[walker.agent].doings;
        auto& visit = doings.visit;
        if (visit.is_on() && !goes_on(run, walker.agent)) leave_server(run, walker.agent);
        if (visit.stage == Stage::COMES) coming[visit.server].push_back(walker.agent);
    }
    for (std::uint32_t number = 0; number < run.servers.size(); ++number) {
        if (run.servers[number].visitors == 0) continue;
        Desk desk(run, number);
        desk.receive(std::move(coming[number]));
        desk.serve();
        desk.line_up();
    }
}

}  // namespace pedflux::engine
