#pragma once

namespace pedflux::engine::crowd {

/// How people walk: the constants of the locomotion model, equal for everyone in a crowd. Lengths in metres, times in
/// seconds. docs/locomotion.md tells the model, its sources and how these values were found.
struct Locomotion {
    /// Steepness of the speed-density relation in persons per square metre: Weidmann's gamma.
    double steepness = 1.913;
    /// Density in persons per square metre at which walking stops: Weidmann's 5.4.
    double jam_density = 5.4;
    /// Share of the free speed that remains in any crush, so that nobody stands for ever.
    double least_speed = 0.02;

    /// How far ahead others slow a walker down.
    double sight = 1.6;
    /// Half the width of the strip ahead in which others slow a walker down.
    double lane_half_width = 0.42;
    /// Weight of oncoming people in the strip, against one of those who walk the same way.
    double oncoming_weight = 0.1;
    /// Time in which a walker gains the speed that the crowd ahead leaves; slowing down takes none.
    double acceleration_time = 0.85;

    /// Time ahead within which the meeting with another person makes a walker step aside.
    double anticipation = 2;
    /// Gap between two bodies that passing walkers want to keep.
    double passing_gap = 0.15;
    /// Strength of stepping aside, as sideways per forward metre for one person right ahead.
    double avoidance = 0.6;
    /// The same for an oncoming person, added to it.
    double oncoming_avoidance = 2.5;
    /// Density felt, in persons per square metre, up to which a walker looks on which side walls leave room to
    /// overtake.
    double overtaking_density = 1.2;
    /// How far to the left of the middle an oncoming person still is passed on the right.
    double keep_right = 0.1;
    /// Share of the free speed at which a walker steps aside from oncoming people when there is no way forward.
    double side_speed = 0.3;
    /// Largest sideways part of a walking direction per forward metre.
    double widest_turn = 1.2;
    /// Time in which a walker turns aside or back.
    double turning = 0.3;

    /// The default: Weidmann's pedestrians, used in planning.
    static Locomotion everyday() { return {}; }
    /// The young adults of Seyfried's bottleneck experiments (2009), who follow each other with smaller gaps: about 1.9
    /// persons per metre and second through a door. Their free speed was 1.55 m/s, with a deviation of 0.18 m/s.
    static Locomotion young_adults();
};

/// Throws pedflux::Exception, naming the constant, its value and what would be right.
void validate(Locomotion const& locomotion);

}  // namespace pedflux::engine::crowd
