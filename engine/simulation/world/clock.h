#pragma once

/// The time of a simulation.
namespace pedflux::engine {

struct Clock {
    int frame_rate = 1;   ///< frames per second
    int start_time = 0;   ///< seconds after midnight
    double duration = 0;  ///< seconds
    int substeps = 1;     ///< of the crowd in a frame
    int frame = 0;        ///< frames taken

    double frame_length() const { return 1.0 / frame_rate; }
    /// Since the start of the simulation.
    double seconds() const { return static_cast<double>(frame) / frame_rate; }
    /// Seconds after midnight.
    double time_of_day() const { return start_time + seconds(); }
};

}  // namespace pedflux::engine
