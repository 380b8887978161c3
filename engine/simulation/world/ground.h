#pragma once

#include "engine/geometry/plane.h"
#include "engine/geometry/vector.h"

#include <array>
#include <vector>

namespace pedflux::engine {

using Triangle = std::array<Vector, 3>;

/// The height of a walkable surface over its plan.
class Ground {
  public:
    /// At least one face, each with an area in the plan.
    explicit Ground(std::vector<Triangle> const& faces);

    /// Metres; beside the faces, the height of the nearest.
    double height(Point point) const;
    double lowest() const { return lowest_; }
    double highest() const { return highest_; }
    /// The least and greatest height of the faces that reach into a box of the plan; false if none does.
    bool heights_in(Point least, Point most, double& low, double& high) const;

  private:
    /// A face as its plane over the plan, and the box of its plan.
    struct Plane {
        std::array<Point, 3> corners;
        double doubled_area;
        std::array<double, 3> heights;
        Point least;
        Point most;
    };

    std::vector<Plane> planes_;
    double lowest_;
    double highest_;
};

}  // namespace pedflux::engine
