#include "benchmarks/crowd/detour.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include <recastnavigation/DetourAlloc.h>
#include <recastnavigation/DetourCrowd.h>
#include <recastnavigation/DetourNavMesh.h>
#include <recastnavigation/DetourNavMeshBuilder.h>

namespace pedflux::engine::crowd::benchmark {

namespace {

constexpr float cell = 0.05F;
constexpr int most_corners = 6;
constexpr std::uint16_t no_corner = 0xffff;

void require(bool holds, std::string const& what) {
    if (!holds) throw std::runtime_error("DetourCrowd: " + what);
}

/// Detour's mesh of the situation's pieces. Its z axis points down the page, which turns counter-clockwise into
/// clockwise.
struct Mesh {
    std::vector<std::uint16_t> corners;
    std::vector<std::uint16_t> polygons;
    std::uint16_t polygon_count = 0;

    std::uint16_t corner(Point point) {
        auto const x = static_cast<std::uint16_t>(std::lround(point.x / static_cast<double>(cell)));
        auto const z = static_cast<std::uint16_t>(std::lround(point.z / static_cast<double>(cell)));
        for (std::size_t i = 0; i < corners.size(); i += 3)
            if (corners[i] == x && corners[i + 2] == z) return static_cast<std::uint16_t>(i / 3);
        corners.insert(corners.end(), {x, 0, z});
        return static_cast<std::uint16_t>(corners.size() / 3 - 1);
    }

    void add(Ring const& ring, Point low) {
        std::size_t const at = polygons.size();
        polygons.resize(at + std::size_t{2} * most_corners, no_corner);
        for (std::size_t i = 0; i < ring.size(); ++i) polygons[at + i] = corner(ring[ring.size() - 1 - i] - low);
        ++polygon_count;
    }

    int size_of(std::size_t polygon) const {
        int size = 0;
        while (size < most_corners &&
               polygons[polygon * 2 * most_corners + static_cast<std::size_t>(size)] != no_corner)
            ++size;
        return size;
    }

    void join() {
        auto const edge = [this](std::size_t polygon, int i) {
            std::size_t const at = polygon * 2 * most_corners;
            int const next = (i + 1) % size_of(polygon);
            return std::pair(polygons[at + static_cast<std::size_t>(i)], polygons[at + static_cast<std::size_t>(next)]);
        };
        for (std::size_t a = 0; a < polygon_count; ++a)
            for (std::size_t b = 0; b < polygon_count; ++b)
                for (int i = 0; i < size_of(a); ++i)
                    for (int j = 0; j < size_of(b); ++j)
                        if (a != b && edge(a, i) == std::pair(edge(b, j).second, edge(b, j).first))
                            polygons[(a * 2 + 1) * most_corners + static_cast<std::size_t>(i)] =
                                static_cast<std::uint16_t>(b);
    }
};

}  // namespace

struct DetourRun::State {
    explicit State(Situation const& it) : situation(it) {}
    ~State() {
        dtFreeCrowd(crowd);
        dtFreeNavMesh(mesh);
    }
    Situation const& situation;
    dtNavMesh* mesh = dtAllocNavMesh();
    dtCrowd* crowd = dtAllocCrowd();
    Point low;
};

DetourRun::DetourRun(Situation const& situation) : state_(std::make_unique<State>(situation)) {
    Point high = situation.pieces[0][0];
    Point& low = state_->low = high;
    for (Ring const& piece : situation.pieces)
        for (Point const corner : piece) {
            low = {std::min(low.x, corner.x), std::min(low.z, corner.z)};
            high = {std::max(high.x, corner.x), std::max(high.z, corner.z)};
        }
    Mesh mesh;
    for (Ring const& piece : situation.pieces) mesh.add(piece, low);
    mesh.join();
    std::vector<std::uint16_t> const flags(mesh.polygon_count, 1);
    std::vector<std::uint8_t> const areas(mesh.polygon_count, 0);
    dtNavMeshCreateParams params{};
    params.verts = mesh.corners.data();
    params.vertCount = static_cast<int>(mesh.corners.size() / 3);
    params.polys = mesh.polygons.data();
    params.polyFlags = flags.data();
    params.polyAreas = areas.data();
    params.polyCount = mesh.polygon_count;
    params.nvp = most_corners;
    params.walkableHeight = 2;
    params.walkableRadius = 0.2F;
    params.walkableClimb = 0.5F;
    params.bmax[0] = static_cast<float>(high.x - low.x);
    params.bmax[1] = 2;
    params.bmax[2] = static_cast<float>(high.z - low.z);
    params.cs = cell;
    params.ch = cell;
    params.buildBvTree = true;
    unsigned char* data = nullptr;
    int size = 0;
    require(dtCreateNavMeshData(&params, &data, &size), "the mesh could not be made");
    require(dtStatusSucceed(state_->mesh->init(data, size, DT_TILE_FREE_DATA)), "the mesh could not be read");
    auto const count = static_cast<int>(situation.people.size());
    require(state_->crowd->init(count, 0.2F, state_->mesh), "no crowd of " + std::to_string(count));

    // The "medium" avoidance of Detour's own demonstration; the library's default costs twice as much.
    dtObstacleAvoidanceParams avoidance = *state_->crowd->getObstacleAvoidanceParams(0);
    avoidance.adaptiveDivs = 5;
    avoidance.adaptiveRings = 2;
    avoidance.adaptiveDepth = 2;
    state_->crowd->setObstacleAvoidanceParams(0, &avoidance);

    dtCrowdAgentParams walker{};
    walker.radius = 0.2F;
    walker.height = 1.8F;
    walker.maxAcceleration = 8;
    walker.maxSpeed = 1.34F;
    walker.collisionQueryRange = walker.radius * 12;
    walker.pathOptimizationRange = walker.radius * 30;
    walker.separationWeight = 2;
    walker.updateFlags = DT_CROWD_ANTICIPATE_TURNS | DT_CROWD_OBSTACLE_AVOIDANCE | DT_CROWD_SEPARATION;
    for (Person const& person : situation.people) {
        float const place[3] = {static_cast<float>(person.place.x - low.x), 0,
                                static_cast<float>(person.place.z - low.z)};
        require(state_->crowd->addAgent(place, &walker) >= 0, "an agent could not be added");
    }
}

DetourRun::~DetourRun() = default;

void DetourRun::step(double seconds) {
    for (std::size_t i = 0; i < state_->situation.people.size(); ++i) {
        float const* const at = state_->crowd->getAgent(static_cast<int>(i))->npos;
        Point const place = state_->low + Point{static_cast<double>(at[0]), static_cast<double>(at[2])};
        Point const direction = state_->situation.direction(state_->situation.people[i], place);
        float const velocity[3] = {static_cast<float>(1.34 * direction.x), 0, static_cast<float>(1.34 * direction.z)};
        state_->crowd->requestMoveVelocity(static_cast<int>(i), velocity);
    }
    state_->crowd->update(static_cast<float>(seconds), nullptr);
}

double DetourRun::mean_way() const {
    double sum = 0;
    for (std::size_t i = 0; i < state_->situation.people.size(); ++i) {
        float const* const at = state_->crowd->getAgent(static_cast<int>(i))->npos;
        Point const place = state_->low + Point{static_cast<double>(at[0]), static_cast<double>(at[2])};
        sum += distance(place, state_->situation.people[i].place);
    }
    return sum / static_cast<double>(state_->situation.people.size());
}

}  // namespace pedflux::engine::crowd::benchmark
