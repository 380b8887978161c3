#include "engine/navigation/walls.h"

#include "engine/navigation/openings.h"

#include <algorithm>

namespace pedflux::engine::navigation {

namespace {

/// The part of a wall that the line covers; empty (`from` not below `to`) when they do not coincide.
Part covered(Segment wall, Segment line) {
    Point const along = wall.to - wall.from;
    Point const aside = turned_left(unit(along));
    double const size = squared_length(along);
    double first = dot(line.from - wall.from, along) / size;
    double last = dot(line.to - wall.from, along) / size;
    double first_aside = dot(line.from - wall.from, aside);
    double last_aside = dot(line.to - wall.from, aside);
    if (first > last) {
        std::swap(first, last);
        std::swap(first_aside, last_aside);
    }
    Part const part{std::max(first, 0.0), std::min(last, 1.0)};
    if (part.from >= part.to) return {1, 0};
    auto const aside_at = [&](double fraction) {
        return first_aside + (fraction - first) / (last - first) * (last_aside - first_aside);
    };
    bool const lies_on = std::max(std::abs(aside_at(part.from)), std::abs(aside_at(part.to))) <= line_tolerance;
    return lies_on && (part.to - part.from) * std::sqrt(size) > line_tolerance ? part : Part{1, 0};
}

void add_walls(std::vector<Wall>& walls, Segment side, std::vector<Opening> const& openings) {
    std::vector<double> cuts{0, 1};
    for (Opening const& opening : openings) {
        Part const part = covered(side, opening.line);
        if (part.from < part.to) cuts.insert(cuts.end(), {part.from, part.to});
    }
    std::sort(cuts.begin(), cuts.end());
    for (std::size_t i = 0; i + 1 < cuts.size(); ++i) {
        if (cuts[i] >= cuts[i + 1]) continue;
        double const middle = (cuts[i] + cuts[i + 1]) / 2;
        Wall wall{{at(side, cuts[i]), at(side, cuts[i + 1])}, none, none};
        auto const opening = std::find_if(openings.begin(), openings.end(), [&](Opening const& candidate) {
            Part const part = covered(side, candidate.line);
            return part.from < middle && middle < part.to;
        });
        if (opening != openings.end()) {
            wall.connection = opening->connection;
            wall.destination = opening->destination;
        }
        walls.push_back(wall);
    }
}

}  // namespace

std::vector<Wall> walls_of(Polygons const& area, std::vector<Opening> const& openings) {
    std::vector<Wall> walls;
    auto const add_ring = [&](Ring const& ring) {
        for (std::size_t i = 0; i < ring.size(); ++i)
            add_walls(walls, {ring[i], ring[(i + 1) % ring.size()]}, openings);
    };
    for (Polygon const& polygon : area) {
        add_ring(polygon.outline);
        for (Ring const& hole : polygon.holes) add_ring(hole);
    }
    return walls;
}

}  // namespace pedflux::engine::navigation
