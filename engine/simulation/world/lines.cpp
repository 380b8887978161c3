#include "engine/simulation/world/lines.h"

#include <algorithm>

namespace pedflux::engine {

namespace {

template <class Visit>
void for_each_edge(Polygons const& area, Visit const& visit) {
    auto const visit_ring = [&](Ring const& ring) {
        for (std::size_t i = 0; i < ring.size(); ++i) visit(Segment{ring[i], ring[(i + 1) % ring.size()]});
    };
    for (auto const& polygon : area) {
        visit_ring(polygon.outline);
        for (auto const& hole : polygon.holes) visit_ring(hole);
    }
}

std::optional<Segment> line_along_edge(Polygons const& area, Segment line, double reach) {
    std::optional<Segment> best;
    double least_offset = reach;
    for_each_edge(area, [&](Segment edge) {
        Segment const along{nearest_point(edge, line.from), nearest_point(edge, line.to)};
        double const offset = std::max(distance(along.from, line.from), distance(along.to, line.to));
        if (offset >= least_offset || length(along) < 0.5 * length(line)) return;
        least_offset = offset;
        best = along;
    });
    return best;
}

}  // namespace

std::vector<Segment> parts_inside(Segment line, Polygons const& area) {
    std::vector<double> cuts{0, 1};
    for_each_edge(area, [&](Segment edge) {
        auto const crossing = line_crossing(line.from, line.to - line.from, edge);
        if (!crossing) return;
        auto const [on_line, on_edge] = *crossing;
        if (on_line > 0 && on_line < 1 && on_edge >= 0 && on_edge <= 1) cuts.push_back(on_line);
    });
    std::ranges::sort(cuts);
    std::vector<Segment> parts;
    double end_of_last = -1;
    for (std::size_t i = 0; i + 1 < cuts.size(); ++i) {
        if (cuts[i + 1] - cuts[i] < 1e-12 || !contains(area, at(line, (cuts[i] + cuts[i + 1]) / 2))) continue;
        if (cuts[i] == end_of_last) {
            parts.back().to = at(line, cuts[i + 1]);
        } else {
            parts.push_back({at(line, cuts[i]), at(line, cuts[i + 1])});
        }
        end_of_last = cuts[i + 1];
    }
    return parts;
}

std::optional<Segment> line_on(Polygons const& area, Segment line, double reach) {
    if (auto const along = line_along_edge(area, line, reach)) return along;
    auto const parts = parts_inside(line, area);
    auto const longest = std::ranges::max_element(parts, {}, [](Segment const& part) { return length(part); });
    if (longest == parts.end() || length(*longest) < 0.5 * length(line)) return std::nullopt;
    return *longest;
}

}  // namespace pedflux::engine
