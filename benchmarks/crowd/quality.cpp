#include "tests/engine/crowd/scenarios.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

/// Prints how the crowd fares in the published cases. The argument is the number of seeds for the search for deadlocks.
namespace pedflux::engine::crowd::scenarios {

namespace {

void print(Faults const& faults) {
    std::printf("  overlap %.3f of a radius, speed %.3f of the own, walls crossed %zu\n", faults.overlap, faults.speed,
                faults.walls_crossed);
    std::fflush(stdout);
}

Settings young_adults() {
    Settings result;
    result.locomotion = Locomotion::young_adults();
    result.speed = 1.55;
    result.speed_deviation = 0.18;
    return result;
}

void print_speed_density(double width) {
    std::printf(
        "\nSpeed and density in an endless corridor %.0f m wide\npersons/m2  m/s  Weidmann  deviation  1/(m s)\n",
        width);
    for (double const density : {0.5, 1.0, 1.5, 1.75, 2.0, 2.25, 3.0, 4.0}) {
        RingResult const result = walk_ring({}, density, width);
        double const expected = weidmann_speed(density);
        std::printf("%10.2f %.3f    %.3f    %+6.1f%%    %.3f", density, result.speed, expected,
                    100 * (result.speed / expected - 1), density * result.speed);
        print(result.faults);
    }
}

void print_doors(char const* title, Settings settings, Beyond beyond) {
    std::printf("\n%s\nwidth  1/s    1/(m s), least and most of ten seeds\n", title);
    for (double const width : {0.8, 1.0, 1.2, 1.6, 2.0}) {
        Faults faults;
        double sum = 0;
        double least = 100;
        double most = 0;
        for (settings.seed = 1; settings.seed <= 10; ++settings.seed) {
            DoorResult const result = leave_room(settings, width, 150, beyond);
            sum += result.flow;
            least = std::min(least, result.flow);
            most = std::max(most, result.flow);
            faults.add(result.faults);
        }
        std::printf("%.1f m  %.3f  %.3f  %.3f %.3f", width, sum / 10, sum / 10 / width, least / width, most / width);
        print(faults);
    }
}

void print_counterflow() {
    std::printf(
        "\nCounterflow, 100 people against others in a corridor 2 m wide: seconds, mean and most of five seeds\n");
    for (int const against : {0, 10, 50, 100}) {
        Settings settings;
        Faults faults;
        double sum = 0;
        double most = 0;
        for (settings.seed = 1; settings.seed <= 5; ++settings.seed) {
            CounterflowResult const result = walk_against(settings, against);
            sum += result.seconds;
            most = std::max(most, result.seconds);
            faults.add(result.faults);
        }
        std::printf("%3d  %.1f  %.1f", against, sum / 5, most);
        print(faults);
    }
}

void print_deadlocks(int seeds) {
    Settings settings;
    Faults faults;
    int deadlocks = 0;
    double longest = 0;
    for (settings.seed = 1; settings.seed <= static_cast<std::uint32_t>(seeds); ++settings.seed) {
        DoorResult const result = leave_room(settings, 0.8);
        deadlocks += result.deadlock ? 1 : 0;
        longest = std::max(longest, result.longest_pause);
        faults.add(result.faults);
    }
    std::printf("\n%d seeds of the 0.8 m door: %d deadlocks, longest pause %.1f s", seeds, deadlocks, longest);
    print(faults);
}

void print_corner_and_threads() {
    CornerResult const corner = round_corner({});
    std::printf("\nTwenty people round a corner: %s", corner.all_arrived ? "all arrived" : "NOT all arrived");
    print(corner.faults);
    Settings settings;
    for (unsigned const threads : {1U, 2U, 5U}) {
        settings.threads = threads;
        std::printf("hash of the 1.2 m door with %u threads: %016llx\n", threads,
                    static_cast<unsigned long long>(leave_room(settings, 1.2).hash));
    }
}

}  // namespace

}  // namespace pedflux::engine::crowd::scenarios

int main(int count, char** arguments) {
    using namespace pedflux::engine::crowd::scenarios;
    int const seeds = count > 1 ? std::atoi(arguments[1]) : 1000;
    print_speed_density(4);
    print_speed_density(2);
    print_doors("Doors, everyday walkers", {}, Beyond::OPEN_SPACE);
    print_doors("Exits at which people depart, everyday walkers", {}, Beyond::NOTHING);
    print_doors("Doors, young adults", young_adults(), Beyond::OPEN_SPACE);
    print_counterflow();
    print_corner_and_threads();
    print_deadlocks(seeds);
}
