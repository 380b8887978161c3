#pragma once

#include "engine/geometry/plane.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// Where both crowds are timed: people at given places with a rule for their directions, on a floor made of convex
/// pieces.
namespace pedflux::engine::crowd::benchmark {

struct Person {
    Point place;
    /// Chooses the stream that the person belongs to.
    int stream = 0;
};

struct Situation {
    std::string name;
    /// Convex, counter-clockwise; pieces that join share a whole edge.
    std::vector<Ring> pieces;
    std::vector<Segment> walls;
    std::vector<Person> people;
    std::function<Point(Person const&, Point)> direction;
};

/// One person per square metre, all one way.
Situation corridor(int people);
/// Two streams at right angles through each other, together one person per square metre.
Situation crossing(int people);
/// A crowd of three persons per square metre in front of an exit 1 m wide.
Situation bottleneck(int people);

}  // namespace pedflux::engine::crowd::benchmark
