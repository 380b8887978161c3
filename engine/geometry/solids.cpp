#include "engine/geometry/solids.h"

#include "engine/geometry/checks.h"
#include "engine/geometry/simple_ring.h"
#include "engine/geometry/triangulation.h"

#include <numbers>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

using Faces = std::vector<std::array<int, 3>>;

constexpr int largest_side_count = 10000;

/// Two directions that complete `along` to a right-handed system (first, second, along).
struct Across {
    Vector first;
    Vector second;
};

Across across(Vector along) {
    Vector const other = std::abs(along.y) < 0.9 ? up : Vector{0, 0, 1};
    Vector const first = normalized(cross(other, along));
    return {first, cross(along, first)};
}

void require_side_count(int count) {
    if (count < 3 || count > largest_side_count)
        refuse(fmt::format("side count is {}; it must be from 3 to {}", count, largest_side_count));
}

Vector require_apart(std::string_view what, Vector from, Vector to) {
    return require_direction(fmt::format("direction from the {}", what), to - from);
}

/// A regular polygon, counter-clockwise as seen from the end of `along`.
void add_ring(std::vector<Vector>& vertices, double radius, Vector center, Vector along, int side_count) {
    auto const [first, second] = across(along);
    for (int i = 0; i < side_count; ++i) {
        auto const [sine, cosine] = sine_cosine(360.0 * i / side_count);
        vertices.push_back(center + radius * (cosine * first + sine * second));
    }
}

/// A body given by the four corners of its upper side, counter-clockwise from above.
Mesh slab(std::array<Vector, 4> const& top, double thickness) {
    std::vector<Vector> vertices(top.begin(), top.end());
    for (Vector const corner : top) vertices.push_back(corner - thickness * up);
    Faces faces{{0, 1, 2}, {0, 2, 3}, {4, 6, 5}, {4, 7, 6}};
    for (int i = 0; i < 4; ++i) {
        int const next = (i + 1) % 4;
        faces.push_back({i, i + 4, next + 4});
        faces.push_back({i, next + 4, next});
    }
    return make_mesh(std::move(vertices), std::move(faces));
}

std::array<Vector, 4> ramp_surface(Vector start, Vector end, double width) {
    require_positive("width of the ramp", width);
    Vector const level{end.x - start.x, 0, end.z - start.z};
    Vector const right = cross(require_direction("plan direction of the ramp", level), up);
    Vector const half = 0.5 * width * right;
    return {start - half, start + half, end + half, end - half};
}

}  // namespace

Mesh box(Vector corner, Vector opposite_corner) {
    Vector const low = smaller(corner, opposite_corner);
    Vector const high = larger(corner, opposite_corner);
    Vector const size = high - low;
    if (!(size.x > 0 && size.y > 0 && size.z > 0))
        refuse(fmt::format("box has the size {}; its corners must differ in x, y and z", text_of(size)));
    return slab({{{low.x, high.y, high.z}, {high.x, high.y, high.z}, {high.x, high.y, low.z}, {low.x, high.y, low.z}}},
                size.y);
}

Mesh vertical_rectangle(Vector corner, Vector opposite_corner) {
    auto const [low, high] = std::minmax(corner.y, opposite_corner.y);
    require_direction("plan direction of the rectangle",
                      {opposite_corner.x - corner.x, 0, opposite_corner.z - corner.z});
    require_positive("height of the rectangle", high - low);
    return make_mesh({{corner.x, low, corner.z},
                      {opposite_corner.x, low, opposite_corner.z},
                      {opposite_corner.x, high, opposite_corner.z},
                      {corner.x, high, corner.z}},
                     {{0, 1, 2}, {0, 2, 3}});
}

Mesh cone(double radius, Vector base_center, Vector apex, int side_count) {
    require_positive("radius of the cone", radius);
    require_side_count(side_count);
    std::vector<Vector> vertices{base_center, apex};
    add_ring(vertices, radius, base_center, require_apart("cone's base to its apex", base_center, apex), side_count);
    Faces faces;
    for (int i = 0; i < side_count; ++i) {
        int const here = 2 + i;
        int const next = 2 + (i + 1) % side_count;
        faces.push_back({0, next, here});
        faces.push_back({1, here, next});
    }
    return make_mesh(std::move(vertices), std::move(faces));
}

Mesh cylinder(double radius, Vector base_center, Vector top_center, int side_count) {
    require_positive("radius of the cylinder", radius);
    require_side_count(side_count);
    Vector const along = require_apart("cylinder's base to its top", base_center, top_center);
    std::vector<Vector> vertices{base_center, top_center};
    add_ring(vertices, radius, base_center, along, side_count);
    add_ring(vertices, radius, top_center, along, side_count);
    Faces faces;
    for (int i = 0; i < side_count; ++i) {
        int const here = 2 + i;
        int const next = 2 + (i + 1) % side_count;
        int const here_above = here + side_count;
        int const next_above = next + side_count;
        faces.push_back({0, next, here});
        faces.push_back({1, here_above, next_above});
        faces.push_back({here, next, next_above});
        faces.push_back({here, next_above, here_above});
    }
    return make_mesh(std::move(vertices), std::move(faces));
}

Mesh ramp(Vector start, Vector end, double width) {
    auto const surface = ramp_surface(start, end, width);
    return make_mesh({surface.begin(), surface.end()}, {{0, 1, 2}, {0, 2, 3}});
}

Mesh ramp(Vector start, Vector end, double width, double thickness) {
    return slab(ramp_surface(start, end, width), require_positive("thickness of the ramp", thickness));
}

Mesh flat_polygon(double y, Ring ring) {
    std::vector<Vector> vertices;
    if (ring.size() > 1 && ring.front() == ring.back()) ring.pop_back();
    for (Point const corner : ring)
        vertices.push_back(
            require_point(fmt::format("corner {} of the polygon", vertices.size()), Vector{corner.x, y, corner.z}));
    require_simple(ring);
    auto faces = triangulate(ring);
    // A ring that is counter-clockwise in x and z faces downwards.
    if (signed_area(ring) > 0)
        for (auto& face : faces) std::swap(face[1], face[2]);
    return make_mesh(std::move(vertices), std::move(faces));
}

}  // namespace pedflux::engine
