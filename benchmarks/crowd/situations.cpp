#include "benchmarks/crowd/situations.h"

#include <cmath>
#include <random>

namespace pedflux::engine::crowd::benchmark {

namespace {

Ring rectangle(Point low, Point high) { return {low, {high.x, low.z}, high, {low.x, high.z}}; }

std::vector<Segment> edges(Ring const& ring) {
    std::vector<Segment> result;
    for (std::size_t i = 0; i < ring.size(); ++i) result.push_back({ring[i], ring[(i + 1) % ring.size()]});
    return result;
}

/// People on a shaken square lattice of the density, row by row from the low corner.
std::vector<Person> lattice(int count, double density, Point low, double width) {
    std::mt19937 engine(1);
    auto const shake = [&engine] { return 0.3 * (static_cast<double>(engine()) * 0x1p-32 - 0.5); };
    double const spacing = 1 / std::sqrt(density);
    int const in_row = static_cast<int>(width / spacing);
    std::vector<Person> result;
    for (int i = 0; i < count; ++i) {
        Point const at{(i / in_row + 0.5) * spacing, (i % in_row + 0.5) * spacing};
        result.push_back({low + at + spacing * Point{shake(), shake()}, static_cast<int>(engine() % 2)});
    }
    return result;
}

}  // namespace

Situation corridor(int people) {
    double const width = people < 5000 ? 10 : 40;
    Ring const floor = rectangle({0, 0}, {people / width + 30, width});
    return {"corridor", {floor}, edges(floor), lattice(people, 1, {1, 0}, width), [](Person const&, Point) {
                return Point{1, 0};
            }};
}

Situation crossing(int people) {
    double const side = std::sqrt(people);
    Ring const floor = rectangle({0, 0}, {side + 30, side + 30});
    return {"crossing", {floor}, edges(floor), lattice(people, 1, {1, 1}, side), [](Person const& person, Point) {
                return person.stream == 0 ? Point{1, 0} : Point{0, 1};
            }};
}

Situation bottleneck(int people) {
    double const side = std::ceil(std::sqrt(people / 3.0)) + 2;
    double const half = side / 2;
    Ring const room{{0, -half}, {side, -half}, {side, -0.5}, {side, 0.5}, {side, half}, {0, half}};
    Ring const beyond{{side, -0.5}, {side, -half}, {side + 30, -half}, {side + 30, half}, {side, half}, {side, 0.5}};
    std::vector<Segment> walls;
    for (Ring const& ring : {room, beyond})
        for (Segment const& edge : edges(ring))
            if (edge.from.x != side || edge.to.x != side || length(edge) > 1.01) walls.push_back(edge);
    return {"bottleneck",
            {room, beyond},
            walls,
            lattice(people, 3, {1, -half + 0.3}, side - 0.6),
            [side](Person const&, Point place) {
                Point const aim = nearest_point({{side, -0.3}, {side, 0.3}}, place);
                return place.x > side - 0.05 ? Point{1, 0} : unit(aim - place);
            }};
}

}  // namespace pedflux::engine::crowd::benchmark
