#include "benchmarks/crowd/detour.h"
#include "benchmarks/crowd/situations.h"
#include "engine/crowd/crowd.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

/// Nanoseconds of processor time per agent and step of our crowd and of DetourCrowd, both with one thread, and how many
/// times faster two threads are by the clock. All in the same situations and the same run; rounds alternate and the
/// median counts, so that a busy machine burdens all of them. Both crowds are asked for positions and told directions
/// in every step. Arguments: numbers of people.
namespace pedflux::engine::crowd::benchmark {

namespace {

constexpr double seconds_per_step = 0.1;

/// Our crowd in a situation.
class OurRun {
  public:
    OurRun(Situation const& situation, unsigned threads)
        : situation_(situation), crowd_(plan(situation), Locomotion::everyday(), threads) {
        for (Person const& person : situation.people) {
            Entrant entrant;
            entrant.position = person.place;
            entrant.key = static_cast<std::uint32_t>(crowd_.size());
            crowd_.add(entrant);
        }
    }

    void step(double seconds) {
        for (AgentIndex agent = 0; agent < situation_.people.size(); ++agent)
            crowd_.set_direction(agent, situation_.direction(situation_.people[agent], crowd_.position(agent)));
        crowd_.step(seconds);
    }

    double mean_way() const {
        double sum = 0;
        for (AgentIndex agent = 0; agent < situation_.people.size(); ++agent)
            sum += distance(crowd_.position(agent), situation_.people[agent].place);
        return sum / static_cast<double>(situation_.people.size());
    }

  private:
    static FloorPlan plan(Situation const& situation) {
        FloorPlan result;
        result.regions.emplace_back();
        for (Segment const& wall : situation.walls) result.regions[0].walls.push_back({wall.from, wall.to});
        return result;
    }

    Situation const& situation_;
    Crowd crowd_;
};

struct Nanoseconds {
    double processor = 0;
    double clock = 0;
};

template <typename Run>
Nanoseconds timed(Run& run, int steps) {
    auto const start = std::chrono::steady_clock::now();
    std::clock_t const processor_start = std::clock();
    for (int i = 0; i < steps; ++i) run.step(seconds_per_step);
    double const processor = static_cast<double>(std::clock() - processor_start) / CLOCKS_PER_SEC * 1e9;
    double const clock = std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
    return {processor / steps, clock / steps};
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void compare(Situation const& situation) {
    auto const people = static_cast<double>(situation.people.size());
    OurRun ours(situation, 1);
    OurRun two(situation, 2);
    DetourRun detour(situation);
    int const steps = people > 20000 ? 1 : people > 5000 ? 4 : 20;
    std::vector<double> one_thread;
    std::vector<double> other;
    std::vector<double> speed_up;
    for (int round = 0; round < 10; ++round) {
        Nanoseconds const our_time = timed(ours, steps);
        Nanoseconds const two_time = timed(two, steps);
        Nanoseconds const other_time = timed(detour, steps);
        // The first rounds warm caches up and let the crowds leave their lattice.
        if (round < 2) continue;
        one_thread.push_back(our_time.processor / people);
        other.push_back(other_time.processor / people);
        speed_up.push_back(our_time.clock / two_time.clock);
    }
    std::printf("%-11s %7.0f %8.0f %8.0f %8.3f %8.2f     %5.2f %5.2f\n", situation.name.c_str(), people,
                median(one_thread), median(other), median(one_thread) / median(other), median(speed_up),
                ours.mean_way(), detour.mean_way());
    std::fflush(stdout);
}

}  // namespace

}  // namespace pedflux::engine::crowd::benchmark

int main(int count, char** arguments) {
    using namespace pedflux::engine::crowd::benchmark;
    std::vector<int> sizes;
    for (int i = 1; i < count; ++i) sizes.push_back(std::atoi(arguments[i]));
    if (sizes.empty()) sizes = {1000, 10000, 50000};
    std::printf("%-11s %7s %8s %8s %8s %8s     %s\n", "situation", "people", "ours", "Detour", "ratio", "threads",
                "metres walked: ours, Detour");
    for (int const size : sizes)
        for (auto const& situation : {corridor(size), crossing(size), bottleneck(size)}) compare(situation);
}
