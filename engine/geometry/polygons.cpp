#include "engine/geometry/polygons.h"

#include "engine/base/checks.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>
#include <polyclipping/clipper.hpp>

namespace pedflux::engine {

namespace {

using ClipperLib::IntPoint;
using ClipperLib::Path;
using ClipperLib::Paths;

/// The exact inverse of the resolution, so that 0.1 m stays 0.1 m.
constexpr double steps_per_metre = 1e5;
constexpr double reach = 5000;
/// Gaps up to twice this width are closed when triangles are united (metres).
constexpr double seam = 5e-4;

/// Integer coordinates about an origin, which is 0 unless the area lies far from it, as in national grids.
class Lattice {
  public:
    void cover(Ring const& ring) {
        for (Point const point : ring) {
            if (!is_finite(point)) refuse("a corner of a plan is not a number; every coordinate must be finite");
            bounds_.cover(point);
        }
    }
    void cover(Polygons const& polygons) {
        for (Polygon const& polygon : polygons) {
            cover(polygon.outline);
            for (Ring const& hole : polygon.holes) cover(hole);
        }
    }
    void settle() {
        if (bounds_.empty()) return;
        auto const& [low, high] = bounds_;
        if (high.x - low.x > 2 * reach || high.z - low.z > 2 * reach)
            refuse(fmt::format("a plan reaches from {} to {}; at most 10,000 m can be computed", text_of(low),
                               text_of(high)));
        origin_ = {settled(low.x, high.x), settled(low.z, high.z)};
    }

    IntPoint on(Point point) const {
        return {std::llround((point.x - origin_.x) * steps_per_metre),
                std::llround((point.z - origin_.z) * steps_per_metre)};
    }
    Point off(IntPoint const& point) const {
        return {origin_.x + static_cast<double>(point.X) / steps_per_metre,
                origin_.z + static_cast<double>(point.Y) / steps_per_metre};
    }

  private:
    /// 0 where it is near, so that round coordinates stay round.
    static double settled(double low, double high) {
        return std::max(-low, high) <= reach ? 0 : std::round((low + high) / 2);
    }
    Bounds bounds_;
    Point origin_;
};

void add_ring(Paths& paths, Ring const& ring, bool counter_clockwise, Lattice const& lattice) {
    Path path;
    path.reserve(ring.size());
    for (Point const point : ring) path.push_back(lattice.on(point));
    if (ClipperLib::Orientation(path) != counter_clockwise) ClipperLib::ReversePath(path);
    paths.push_back(std::move(path));
}

Paths on_lattice(Polygons const& polygons, Lattice const& lattice) {
    Paths paths;
    for (Polygon const& polygon : polygons) {
        add_ring(paths, polygon.outline, true, lattice);
        for (Ring const& hole : polygon.holes) add_ring(paths, hole, false, lattice);
    }
    return paths;
}

Ring off_lattice(Path const& path, Lattice const& lattice) {
    Ring ring;
    ring.reserve(path.size());
    for (IntPoint const& point : path) ring.push_back(lattice.off(point));
    return ring;
}

Polygons off_lattice(ClipperLib::PolyTree const& tree, Lattice const& lattice) {
    Polygons polygons;
    for (auto const* node = tree.GetFirst(); node != nullptr; node = node->GetNext()) {
        if (node->IsHole() || node->Contour.empty()) continue;
        Polygon& polygon = polygons.emplace_back();
        polygon.outline = off_lattice(node->Contour, lattice);
        for (auto const* hole : node->Childs) polygon.holes.push_back(off_lattice(hole->Contour, lattice));
    }
    return polygons;
}

/// Positive filling: an outline counts 1 and a hole -1, so the hole of one polygon does not cut another.
Polygons combined(ClipperLib::ClipType type, Paths const& subject, Paths const& clip, Lattice const& lattice) {
    ClipperLib::Clipper clipper;
    clipper.AddPaths(subject, ClipperLib::ptSubject, true);
    clipper.AddPaths(clip, ClipperLib::ptClip, true);
    ClipperLib::PolyTree tree;
    clipper.Execute(type, tree, ClipperLib::pftPositive, ClipperLib::pftPositive);
    return off_lattice(tree, lattice);
}

Polygons combined(ClipperLib::ClipType type, Polygons const& left, Polygons const& right) {
    Lattice lattice;
    lattice.cover(left);
    lattice.cover(right);
    lattice.settle();
    return combined(type, on_lattice(left, lattice), on_lattice(right, lattice), lattice);
}

Paths grown(Paths const& paths, double margin) {
    ClipperLib::ClipperOffset offset;
    offset.AddPaths(paths, ClipperLib::jtMiter, ClipperLib::etClosedPolygon);
    Paths result;
    offset.Execute(result, margin * steps_per_metre);
    return result;
}

bool before(IntPoint const& left, IntPoint const& right) {
    return left.X != right.X ? left.X < right.X : left.Y < right.Y;
}

/// Growing and shrinking displaces corners by a step or two; this restores them.
void restore_corners(Paths& paths, Paths const& originals) {
    constexpr ClipperLib::cInt near = 5;
    Path corners;
    for (Path const& path : originals) corners.insert(corners.end(), path.begin(), path.end());
    std::sort(corners.begin(), corners.end(), before);
    for (Path& path : paths)
        for (IntPoint& point : path) {
            auto corner = std::lower_bound(corners.begin(), corners.end(), IntPoint(point.X - near, point.Y), before);
            for (; corner != corners.end() && corner->X <= point.X + near; ++corner)
                if (std::abs(corner->Y - point.Y) <= near) {
                    point = *corner;
                    break;
                }
        }
}

}  // namespace

Polygons united(Polygons const& polygons) { return combined(ClipperLib::ctUnion, polygons, {}); }

Polygons united(std::vector<std::array<Point, 3>> const& triangles) {
    Polygons polygons;
    for (auto const& corners : triangles) polygons.push_back({{corners.begin(), corners.end()}, {}});
    Lattice lattice;
    lattice.cover(polygons);
    lattice.settle();
    Paths const originals = on_lattice(polygons, lattice);
    Paths merged;
    ClipperLib::Clipper clipper;
    clipper.AddPaths(originals, ClipperLib::ptSubject, true);
    clipper.Execute(ClipperLib::ctUnion, merged, ClipperLib::pftPositive, ClipperLib::pftPositive);
    Paths closed = grown(grown(merged, seam), -seam);
    restore_corners(closed, originals);
    return combined(ClipperLib::ctUnion, closed, {}, lattice);
}

Polygons difference(Polygons const& polygons, Polygons const& taken_away) {
    return combined(ClipperLib::ctDifference, polygons, taken_away);
}

Polygons intersection(Polygons const& left, Polygons const& right) {
    return combined(ClipperLib::ctIntersection, left, right);
}

Polygons offset(Polygons const& polygons, double margin) {
    if (!std::isfinite(margin)) refuse("the margin around a plan is not a number; it must be finite");
    Lattice lattice;
    lattice.cover(polygons);
    lattice.settle();
    Paths const whole = on_lattice(united(polygons), lattice);
    return combined(ClipperLib::ctUnion, grown(whole, margin), {}, lattice);
}

}  // namespace pedflux::engine
