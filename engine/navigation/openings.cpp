#include "engine/navigation/openings.h"

#include "engine/geometry/polygons.h"

#include <algorithm>

namespace pedflux::engine::navigation {

namespace {

void add_crossings(std::vector<double>& fractions, Segment line, Ring const& ring) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
        Segment const edge{ring[i], ring[(i + 1) % ring.size()]};
        if (!cross_each_other(edge, line)) continue;
        double const from = orientation(edge.from, edge.to, line.from);
        double const to = orientation(edge.from, edge.to, line.to);
        fractions.push_back(from / (from - to));
    }
}

/// A rectangle around a part of a line, `depth` metres to both sides.
Polygon around(Segment part, double depth) {
    Point const aside = depth * turned_left(unit(part.to - part.from));
    return {{part.from - aside, part.to - aside, part.to + aside, part.from + aside}, {}};
}

}  // namespace

std::vector<Part> parts_inside(Segment line, Polygons const& polygons) {
    std::vector<double> fractions{0, 1};
    for (Polygon const& polygon : polygons) {
        add_crossings(fractions, line, polygon.outline);
        for (Ring const& hole : polygon.holes) add_crossings(fractions, line, hole);
    }
    std::sort(fractions.begin(), fractions.end());
    std::vector<Part> parts;
    for (std::size_t i = 0; i + 1 < fractions.size(); ++i) {
        double const from = fractions[i];
        double const to = fractions[i + 1];
        if (from >= to || !contains(polygons, at(line, (from + to) / 2))) continue;
        if (!parts.empty() && parts.back().to == from)
            parts.back().to = to;
        else
            parts.push_back({from, to});
    }
    return parts;
}

std::vector<Part> common_parts(std::vector<Part> const& left, std::vector<Part> const& right) {
    std::vector<Part> parts;
    for (Part const& a : left)
        for (Part const& b : right)
            if (Part const both{std::max(a.from, b.from), std::min(a.to, b.to)}; both.from < both.to)
                parts.push_back(both);
    return parts;
}

Polygons clear_area(Polygons const& walkable, std::vector<Segment> const& lines, double clearance) {
    if (clearance == 0) return walkable;
    // Deep enough to overlap the shrunk area however coordinates are rounded.
    double const depth = clearance + 2 * line_tolerance;
    Polygons const reached = offset(walkable, line_tolerance);
    Polygons mouths;
    for (Segment const line : lines) {
        double const trim = clearance / length(line);
        for (Part const& part : parts_inside(line, reached))
            if (part.from + trim < part.to - trim)
                mouths.push_back(around({at(line, part.from + trim), at(line, part.to - trim)}, depth));
    }
    Polygons all = offset(walkable, -clearance);
    Polygons const opened = intersection(mouths, walkable);
    all.insert(all.end(), opened.begin(), opened.end());
    return united(all);
}

}  // namespace pedflux::engine::navigation
