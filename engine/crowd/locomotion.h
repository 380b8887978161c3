#pragma once

namespace pedflux::engine::crowd {

/// Constants of the locomotion model, the same for everybody in a crowd. Lengths in metres, times in seconds.
/// docs/locomotion.md describes the model, its sources and the calibration.
struct Locomotion {
    /// Steepness of the speed-density relation in persons per square metre: Weidmann's gamma.
    double steepness = 1.913;
    /// Density in persons per square metre at which walking stops: Weidmann's 5.4.
    double jam_density = 5.4;
    /// Share of the free speed that remains at any density, so that nobody stands forever.
    double least_speed = 0.02;

    /// Range ahead in which others slow a walker down.
    double sight = 1.6;
    /// Half the width of the strip ahead in which others slow a walker down.
    double lane_half_width = 0.42;
    /// Weight of oncoming people in the strip, relative to people who walk the same way.
    double oncoming_weight = 0.1;
    /// Time constant of acceleration; slowing down is immediate.
    double acceleration_time = 0.85;

    /// Time horizon within which a walker avoids others.
    double anticipation = 2;
    /// Gap that passing walkers keep between their bodies.
    double passing_gap = 0.15;
    /// Strength of avoidance: sideways per forward metre for one person straight ahead.
    double avoidance = 0.6;
    /// Additional strength of avoidance for an oncoming person.
    double oncoming_avoidance = 2.5;
    /// Local density, in persons per square metre, up to which a walker considers on which side walls leave room to
    /// overtake.
    double overtaking_density = 1.2;
    /// Offset to the left up to which an oncoming person is still passed on the right.
    double keep_right = 0.1;
    /// Share of the free speed at which a walker steps aside for oncoming people when there is no way forward.
    double side_speed = 0.3;
    /// Largest sideways part of a walking direction per forward metre.
    double widest_turn = 1.2;
    /// Time constant of changes of the sidestep.
    double turning = 0.3;

    /// The default: Weidmann's pedestrians, as used in planning.
    static Locomotion everyday() { return {}; }
    /// The young adults of Seyfried's bottleneck experiments (2009), who follow with smaller gaps: about 1.9 persons
    /// per metre and second through a door. Their free speed was 1.55 m/s, with a deviation of 0.18 m/s.
    static Locomotion young_adults();
};

/// Throws pedflux::Exception naming the constant, its value and the permitted range.
void validate(Locomotion const& locomotion);

}  // namespace pedflux::engine::crowd
