#include "tests/recorded_runs/scenarios.h"

#include <pedflux/exception.h>

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

// Simulates scenarios that between them use all that a simulation can do, and writes down what came of each: the
// database, and what the SDK said meanwhile. Two builds of the engine whose files are the same simulate the same.
namespace {

using pedflux::recorded::Scenario;

std::vector<Scenario> all_scenarios() {
    using namespace pedflux::recorded;
    std::vector<Scenario> all;
    for (auto const& part :
         {movement_scenarios(), rule_scenarios(), action_scenarios(), program_scenarios(), refused_scenarios()}) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

bool is_recorded(Scenario const& scenario, std::filesystem::path const& directory, int threads) {
    std::string problem;
    try {
        record(scenario, directory, threads);
        return true;
    } catch (pedflux::Exception const& exception) {
        problem = exception.GetMessage();
    } catch (std::exception const& exception) {
        problem = exception.what();
    }
    std::cerr << scenario.name << ": " << problem << '\n';
    return false;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2 || count > 3) {
        std::cerr << "usage: pedflux_recorded_runs DIRECTORY [THREADS]\n";
        return 2;
    }
    std::filesystem::path const directory = arguments[1];
    int const threads = count == 3 ? std::atoi(arguments[2]) : 1;
    std::filesystem::create_directories(directory);
    int failures = 0;
    for (auto const& scenario : all_scenarios()) failures += is_recorded(scenario, directory, threads) ? 0 : 1;
    return failures == 0 ? 0 : 1;
}
