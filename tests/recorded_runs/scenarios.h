#pragma once

#include "tests/recorded_runs/drawing.h"
#include "tests/recorded_runs/live_run.h"

#include <string>
#include <vector>

namespace pedflux::recorded {

/// A run to record: what is drawn, what a program does while it runs, and how it is simulated.
struct Scenario {
    std::string name;
    int seconds;                          ///< at most
    void (*draw)(Drawing&);               ///< into an empty project
    void (*steer)(LiveRun&) = nullptr;    ///< before each frame
    std::vector<std::string> goals = {};  ///< names of portals that only the program sends people to
    int seed = 1;
    int threads = 1;          ///< at least; the number must not matter
    bool is_refused = false;  ///< as no simulation can be created; its message is recorded
};

std::vector<Scenario> movement_scenarios();
std::vector<Scenario> rule_scenarios();
std::vector<Scenario> action_scenarios();
std::vector<Scenario> program_scenarios();
std::vector<Scenario> refused_scenarios();

}  // namespace pedflux::recorded
