#pragma once

#include "engine/crowd/crowd.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Published situations in which a crowd is measured. Each runs a crowd of its own and watches it in every step.
namespace pedflux::engine::crowd::scenarios {

/// The worst that a run has shown.
struct Faults {
    /// Overlap of two bodies as a part of the smaller radius.
    double overlap = 0;
    /// Speed as a part of the agent's own.
    double speed = 0;
    std::size_t walls_crossed = 0;

    void add(Faults const& other);
};

struct Settings {
    Locomotion locomotion;
    std::uint32_t seed = 1;
    unsigned threads = 1;
    double seconds_per_step = 0.1;
    double radius = 0.2;
    /// Free speeds are normally distributed, cut at two and a half deviations (Weidmann 1993).
    double speed = 1.34;
    double speed_deviation = 0.26;
};

/// Weidmann's mean speed in metres per second at a density in persons per square metre.
double weidmann_speed(double density);

struct RingResult {
    double speed = 0;
    Faults faults;
};
/// An endless corridor: a ring of the given width, followed at the given density. The mean speed over 30 s after 30 s.
RingResult walk_ring(Settings const& settings, double density, double width = 4, double middle_radius = 12);

struct DoorResult {
    /// Persons per second between 20 and 80 % of those out.
    double flow = 0;
    double last_out = 0;
    /// Seconds in which nobody came through while people waited.
    double longest_pause = 0;
    /// Nobody came through for half a minute.
    bool deadlock = false;
    Faults faults;
    std::uint64_t hash = 0;
};
enum class Beyond { OPEN_SPACE, NOTHING };
/// A room of 8 by 8 m with `people` in it leaves through a door of the given width, walks on for 3 m or departs in it.
DoorResult leave_room(Settings const& settings, double door_width, int people = 150,
                      Beyond beyond = Beyond::OPEN_SPACE);

struct CounterflowResult {
    /// Seconds until the last of the first group has reached the other room, infinite when somebody never does.
    double seconds = 0;
    Faults faults;
};
/// Two rooms of 10 by 10 m joined by a corridor 10 m long and 2 m wide; 100 people walk one way, `against` the other
/// (IMO MSC.1/Circ.1533, test 8).
CounterflowResult walk_against(Settings const& settings, int against);

struct CornerResult {
    bool all_arrived = false;
    Faults faults;
};
/// Twenty people round a left-hand corner of a corridor 2 m wide (RiMEA test 6).
CornerResult round_corner(Settings const& settings);

}  // namespace pedflux::engine::crowd::scenarios
