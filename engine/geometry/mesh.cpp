#include "engine/geometry/mesh.h"

#include "engine/base/hashing.h"
#include "engine/geometry/checks.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

std::size_t index_of(int index) { return static_cast<std::size_t>(index); }

void require_vertices(std::vector<Vector> const& vertices) {
    for (std::size_t i = 0; i < vertices.size(); ++i) require_point(fmt::format("vertex {}", i), vertices[i]);
}

/// Whether a triangle is so flat that rounding decides the direction of its normal: its height is negligible beside its
/// length, or beside its distance from the origin.
bool is_degenerate(std::array<Vector, 3> const& corners) {
    auto const& [a, b, c] = corners;
    double const longest = std::max({distance(a, b), distance(b, c), distance(c, a)});
    Vector const reach = larger(larger(larger(a, -a), larger(b, -b)), larger(c, -c));
    double const farthest = std::max({reach.x, reach.y, reach.z});
    double const height = longest > 0 ? length(cross(b - a, c - a)) / longest : 0;
    return height <= 1e-12 * longest + 4e-16 * farthest;
}

std::string corners_text(std::array<Vector, 3> const& corners) {
    return fmt::format("{}, {}, {}", text_of(corners[0]), text_of(corners[1]), text_of(corners[2]));
}

[[noreturn]] void refuse_flat(std::size_t face, std::array<Vector, 3> const& corners) {
    refuse(fmt::format("face {} with the corners {} has no area; a face must have one", face, corners_text(corners)));
}

void require_faces(Mesh const& mesh) {
    if (mesh.faces.empty()) refuse("mesh has no faces; it must have at least one");
    for (std::size_t face = 0; face < mesh.faces.size(); ++face) {
        for (int const vertex : mesh.faces[face]) require_index("vertex", vertex, mesh.vertices.size());
        if (auto const corners = corners_of(mesh, face); is_degenerate(corners)) refuse_flat(face, corners);
    }
}

void connect(Mesh& mesh) {
    std::unordered_map<std::uint64_t, int> edge_of_vertices;
    mesh.face_edges.reserve(mesh.faces.size());
    for (auto const& face : mesh.faces) {
        auto& face_edges = mesh.face_edges.emplace_back();
        for (std::size_t i = 0; i < 3; ++i) {
            int const from = face[i];
            int const to = face[(i + 1) % 3];
            auto const [low, high] = std::minmax(from, to);
            auto const key = static_cast<std::uint64_t>(low) << 32 | static_cast<std::uint64_t>(high);
            auto const [entry, is_new] = edge_of_vertices.try_emplace(key, static_cast<int>(mesh.edges.size()));
            if (is_new) {
                mesh.edges.push_back({from, to});
                mesh.edge_faces.emplace_back();
            }
            face_edges[i] = entry->second;
            mesh.edge_faces[index_of(entry->second)].push_back(static_cast<int>(mesh.face_edges.size()) - 1);
        }
    }
}

/// Vertices by cell of space, to find those close to a point. Cells are wide compared to the tolerance, so that most
/// searches look into one. Unlike UniformGrid it is three-dimensional, and its cells are numbered by doubles, which
/// also hold whole numbers beyond 64 bits.
class VertexGrid {
  public:
    explicit VertexGrid(double tolerance)
        : tolerance_(tolerance), cell_width_(std::max(64 * tolerance, 64 * default_weld_tolerance)) {}

    /// The first vertex within the tolerance of the point, which is added when there is none.
    int find_or_add(Vector point, std::vector<Vector>& vertices) {
        int found = -1;
        // NOLINTBEGIN(clang-analyzer-security.FloatLoopCounter): cells are whole numbers, also beyond 64 bits.
        for (double x = cell(point.x - tolerance_); x <= cell(point.x + tolerance_); ++x)
            for (double y = cell(point.y - tolerance_); y <= cell(point.y + tolerance_); ++y)
                for (double z = cell(point.z - tolerance_); z <= cell(point.z + tolerance_); ++z)
                    for (int const vertex : vertices_in({x, y, z}))
                        if (distance(vertices[index_of(vertex)], point) <= tolerance_ && (found < 0 || vertex < found))
                            found = vertex;
        // NOLINTEND(clang-analyzer-security.FloatLoopCounter)
        if (found >= 0) return found;
        auto const added = static_cast<int>(vertices.size());
        vertices.push_back(point);
        cells_[{cell(point.x), cell(point.y), cell(point.z)}].push_back(added);
        return added;
    }

  private:
    struct Hash {
        std::size_t operator()(Vector cell) const {
            return static_cast<std::size_t>(
                hash_of_words({hashed_bits(cell.x), hashed_bits(cell.y), hashed_bits(cell.z)}));
        }
    };

    double cell(double coordinate) const { return std::floor(coordinate / cell_width_); }

    std::span<int const> vertices_in(Vector cell) const {
        auto const entry = cells_.find(cell);
        return entry == cells_.end() ? std::span<int const>() : entry->second;
    }

    double tolerance_;
    double cell_width_;
    std::unordered_map<Vector, std::vector<int>, Hash> cells_;
};

}  // namespace

Mesh make_mesh(std::vector<Vector> vertices, std::vector<std::array<int, 3>> faces, double tolerance) {
    require_vertices(vertices);
    Mesh mesh;
    mesh.vertices = std::move(vertices);
    mesh.faces = std::move(faces);
    mesh.tolerance = require_not_negative("weld tolerance", tolerance);
    require_faces(mesh);
    connect(mesh);
    return mesh;
}

Mesh weld(std::span<std::array<Vector, 3> const> triangles, double tolerance) {
    VertexGrid grid(require_not_negative("weld tolerance", tolerance));
    std::vector<Vector> vertices;
    std::vector<std::array<int, 3>> faces;
    faces.reserve(triangles.size());
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        auto& face = faces.emplace_back();
        for (std::size_t corner = 0; corner < 3; ++corner) {
            require_point(fmt::format("corner {} of triangle {}", corner, i), triangles[i][corner]);
            face[corner] = grid.find_or_add(triangles[i][corner], vertices);
        }
        // Checked here, to report the corners as given and not as welded.
        if (face[0] == face[1] || face[1] == face[2] || face[2] == face[0]) refuse_flat(i, triangles[i]);
    }
    return make_mesh(std::move(vertices), std::move(faces), tolerance);
}

Mesh with_vertices(Mesh const& mesh, std::vector<Vector> vertices) {
    require_vertices(vertices);
    Mesh result = mesh;
    result.vertices = std::move(vertices);
    require_faces(result);
    return result;
}

Mesh mapped(Mesh const& mesh, AffineMap const& map) {
    auto vertices = mesh.vertices;
    std::transform(vertices.begin(), vertices.end(), vertices.begin(), map);
    if (!map.mirrors()) return with_vertices(mesh, std::move(vertices));
    auto faces = mesh.faces;
    for (auto& face : faces) std::swap(face[1], face[2]);
    return make_mesh(std::move(vertices), std::move(faces), mesh.tolerance);
}

std::array<Vector, 3> corners_of(Mesh const& mesh, std::size_t face) {
    auto const& [a, b, c] = mesh.faces[face];
    return {mesh.vertices[index_of(a)], mesh.vertices[index_of(b)], mesh.vertices[index_of(c)]};
}

Vector normal_of(Mesh const& mesh, std::size_t face) {
    auto const [a, b, c] = corners_of(mesh, face);
    return normalized(cross(b - a, c - a));
}

}  // namespace pedflux::engine
