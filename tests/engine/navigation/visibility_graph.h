#pragma once

#include "engine/geometry/plane.h"

#include <algorithm>
#include <limits>
#include <vector>

/// Shortest ways found the slow way: by every pair of corners that see each other.
namespace pedflux::engine::navigation::testing {

class VisibilityGraph {
  public:
    VisibilityGraph(Polygons const& plan, Segment goal) : plan_(plan), goal_(goal) {
        for (Polygon const& polygon : plan) {
            add(polygon.outline);
            for (Ring const& hole : polygon.holes) add(hole);
        }
        rest_.assign(nodes_.size(), std::numeric_limits<double>::infinity());
        for (std::size_t i = 0; i < nodes_.size(); ++i) rest_[i] = to_goal(nodes_[i]);
        std::vector<std::vector<double>> between(nodes_.size(), std::vector<double>(nodes_.size()));
        for (std::size_t i = 0; i < nodes_.size(); ++i)
            for (std::size_t j = 0; j < i; ++j)
                between[i][j] = between[j][i] = sees(nodes_[i], nodes_[j]) ? distance(nodes_[i], nodes_[j])
                                                                           : std::numeric_limits<double>::infinity();
        for (bool changed = true; changed;) {
            changed = false;
            for (std::size_t i = 0; i < nodes_.size(); ++i)
                for (std::size_t j = 0; j < nodes_.size(); ++j)
                    if (i != j && between[i][j] + rest_[j] < rest_[i]) {
                        rest_[i] = between[i][j] + rest_[j];
                        changed = true;
                    }
        }
    }

    double distance_from(Point point) const {
        double best = to_goal(point);
        for (std::size_t i = 0; i < nodes_.size(); ++i)
            if (sees(point, nodes_[i])) best = std::min(best, distance(point, nodes_[i]) + rest_[i]);
        return best;
    }

  private:
    void add(Ring const& ring) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            nodes_.push_back(ring[i]);
            edges_.push_back({ring[i], ring[(i + 1) % ring.size()]});
        }
    }

    bool sees(Point a, Point b) const {
        if (a == b) return true;
        constexpr double tolerance = 1e-9;
        for (Segment const edge : edges_) {
            if ((edge.from == a && edge.to == b) || (edge.from == b && edge.to == a)) return true;
            double const first = orientation(a, b, edge.from);
            double const second = orientation(a, b, edge.to);
            double const third = orientation(edge.from, edge.to, a);
            double const fourth = orientation(edge.from, edge.to, b);
            auto const apart = [](double left, double right) {
                return (left > tolerance && right < -tolerance) || (left < -tolerance && right > tolerance);
            };
            if (apart(first, second) && apart(third, fourth)) return false;
        }
        return contains(plan_, at({a, b}, 0.5)) && contains(plan_, at({a, b}, 1e-4)) &&
               contains(plan_, at({a, b}, 1 - 1e-4));
    }

    double to_goal(Point point) const {
        double best = std::numeric_limits<double>::infinity();
        for (Point const goal : {goal_.from, goal_.to, nearest_point(goal_, point)})
            if (sees(point, goal)) best = std::min(best, distance(point, goal));
        return best;
    }

    Polygons plan_;
    Segment goal_;
    std::vector<Point> nodes_;
    std::vector<Segment> edges_;
    std::vector<double> rest_;
};

}  // namespace pedflux::engine::navigation::testing
