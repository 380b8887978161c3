#include "tests/engine/crowd/scenarios.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <random>

namespace pedflux::engine::crowd::scenarios {

namespace {

double orientation_of(Wall const& wall, Point point) { return orientation(wall.from, wall.to, point); }

bool crosses(Wall const& wall, Point from, Point to) {
    return orientation_of(wall, from) * orientation_of(wall, to) < 0 &&
           orientation(from, to, wall.from) * orientation(from, to, wall.to) <= 0;
}

/// Random numbers that are the same with every standard library.
class Dice {
  public:
    explicit Dice(std::uint32_t seed) : engine_(seed) {}
    double between(double low, double high) { return low + (high - low) * (static_cast<double>(engine_()) * 0x1p-32); }
    double normal(double mean, double deviation) {
        double sum = -6;
        for (int i = 0; i < 12; ++i) sum += between(0, 1);
        return mean + deviation * std::clamp(sum, -2.5, 2.5);
    }

  private:
    std::mt19937 engine_;
};

/// A crowd in one region with what the scenarios know of each agent.
class Stage {
  public:
    Stage(Settings const& settings, std::vector<Wall> walls)
        : settings_(settings), walls_(std::move(walls)), crowd(plan(walls_), settings.locomotion, settings.threads) {}

    AgentIndex add(Dice& dice, Point place) {
        Entrant entrant;
        entrant.position = place;
        entrant.radius = settings_.radius;
        entrant.speed = dice.normal(settings_.speed, settings_.speed_deviation);
        entrant.key = next_key_++;
        AgentIndex const agent = crowd.add(entrant);
        agents.push_back(agent);
        return agent;
    }

    /// Adds people at random places of a rectangle, no two bodies in each other.
    void fill(Dice& dice, Point low, Point high, int people) {
        std::vector<Point> places;
        for (int tries = 0; static_cast<int>(places.size()) < people && tries < 1000000; ++tries) {
            Point const place{dice.between(low.x, high.x), dice.between(low.z, high.z)};
            if (std::any_of(places.begin(), places.end(),
                            [&](Point other) { return distance(place, other) < 2 * settings_.radius; }))
                continue;
            places.push_back(place);
            add(dice, place);
        }
    }

    /// One step; `aim` gives each agent's direction.
    void step(std::function<Point(AgentIndex, Point)> const& aim) {
        std::vector<Point> before;
        for (AgentIndex const agent : agents) {
            before.push_back(crowd.position(agent));
            crowd.set_direction(agent, aim(agent, before.back()));
        }
        crowd.step(settings_.seconds_per_step);
        for (std::size_t i = 0; i < agents.size(); ++i) {
            Point const after = crowd.position(agents[i]);
            double const speed = distance(before[i], after) / settings_.seconds_per_step;
            faults.speed = std::max(faults.speed, speed / crowd.speed(agents[i]));
            for (Wall const& wall : walls_)
                if (crosses(wall, before[i], after)) ++faults.walls_crossed;
        }
        measure_overlap();
    }

    void erase(std::size_t i, bool departs) {
        if (departs)
            crowd.depart(agents[i]);
        else
            crowd.remove(agents[i]);
        agents.erase(agents.begin() + static_cast<std::ptrdiff_t>(i));
    }

    std::uint64_t hash() const {
        std::uint64_t result = 1469598103934665603ULL;
        for (AgentIndex const agent : agents)
            for (double const value : {crowd.position(agent).x, crowd.position(agent).z}) {
                result ^= std::bit_cast<std::uint64_t>(value);
                result *= 1099511628211ULL;
            }
        return result;
    }

  private:
    static FloorPlan plan(std::vector<Wall> const& walls) {
        FloorPlan result;
        result.regions.push_back({walls});
        return result;
    }

    void measure_overlap() {
        std::vector<Point> places;
        for (AgentIndex const agent : agents) places.push_back(crowd.position(agent));
        std::sort(places.begin(), places.end(), [](Point a, Point b) { return a.x < b.x; });
        double const wide = 2 * settings_.radius;
        for (std::size_t i = 0; i < places.size(); ++i)
            for (std::size_t j = i + 1; j < places.size() && places[j].x - places[i].x < wide; ++j)
                faults.overlap = std::max(faults.overlap, (wide - distance(places[i], places[j])) / settings_.radius);
    }

    Settings settings_;
    std::vector<Wall> walls_;
    std::uint32_t next_key_ = settings_.seed * 100000;

  public:
    Crowd crowd;
    std::vector<AgentIndex> agents;
    Faults faults;
};

void add_ring(std::vector<Wall>& walls, std::vector<Point> const& corners) {
    for (std::size_t i = 0; i < corners.size(); ++i) walls.push_back({corners[i], corners[(i + 1) % corners.size()]});
}

Point towards(Point from, Segment line) {
    Point const way = nearest_point(line, from) - from;
    return unit(way);
}

}  // namespace

void Faults::add(Faults const& other) {
    overlap = std::max(overlap, other.overlap);
    speed = std::max(speed, other.speed);
    walls_crossed += other.walls_crossed;
}

double weidmann_speed(double density) { return 1.34 * (1 - std::exp(-1.913 * (1 / density - 1 / 5.4))); }

RingResult walk_ring(Settings const& settings, double density, double width, double middle_radius) {
    std::vector<Wall> walls;
    double const outer = middle_radius + width / 2;
    double const inner = middle_radius - width / 2;
    for (double const radius : {outer, inner}) {
        std::vector<Point> corners;
        for (int i = 0; i < 96; ++i) {
            double const angle = i * 2 * std::numbers::pi / 96;
            corners.push_back({radius * std::cos(angle), radius * std::sin(angle)});
        }
        add_ring(walls, corners);
    }
    Stage stage(settings, walls);
    Dice dice(settings.seed);
    double const area = std::numbers::pi * (outer * outer - inner * inner);
    auto const people = static_cast<int>(std::lround(density * area));
    // Random places while they are easily found, beyond that a lattice of as many lanes as give equal spacing.
    double const usable = width - 2 * settings.radius - 0.02;
    int const lanes = 1 + static_cast<int>(usable * std::sqrt(density / 0.866) / 0.866);
    auto const at = [&](double angle, double offset) {
        return Point{(middle_radius + offset) * std::cos(angle), (middle_radius + offset) * std::sin(angle)};
    };
    std::vector<Point> places;
    while (static_cast<int>(places.size()) < people) {
        auto const i = static_cast<int>(places.size());
        Point place = at(2 * std::numbers::pi * dice.between(0, 1), usable * (dice.between(0, 1) - 0.5));
        if (density > 2.5)
            place = at(2 * std::numbers::pi * (i / lanes + 0.5 * (i % 2)) / (people / lanes + 1),
                       usable * (static_cast<double>(i % lanes) / std::max(lanes - 1, 1) - 0.5));
        if (density <= 2.5 && std::any_of(places.begin(), places.end(),
                                          [&](Point other) { return distance(place, other) < 2 * settings.radius; }))
            continue;
        places.push_back(place);
        stage.add(dice, place);
    }
    auto const aim = [](AgentIndex, Point place) { return unit(turned_left(place)); };
    int const warm = static_cast<int>(std::lround(30 / settings.seconds_per_step));
    RingResult result;
    double sum = 0;
    for (int step = 0; step < 2 * warm; ++step) {
        stage.step(aim);
        if (step == warm / 2) stage.faults = {};
        if (step < warm) continue;
        for (AgentIndex const agent : stage.agents)
            sum += dot(stage.crowd.velocity(agent), aim(agent, stage.crowd.position(agent)));
    }
    result.speed = sum / warm / people;
    result.faults = stage.faults;
    return result;
}

DoorResult leave_room(Settings const& settings, double door_width, int people, Beyond beyond) {
    double const half = door_width / 2;
    bool const walks_on = beyond == Beyond::OPEN_SPACE;
    std::vector<Wall> walls;
    if (walks_on)
        // Room and the open space before it, joined by the door.
        add_ring(walls,
                 {{0, -4}, {8, -4}, {8, -half}, {8, -20}, {30, -20}, {30, 20}, {8, 20}, {8, half}, {8, 4}, {0, 4}});
    else
        add_ring(walls, {{0, -4}, {8, -4}, {8, -half}, {8.6, -half}, {8.6, half}, {8, half}, {8, 4}, {0, 4}});
    Stage stage(settings, walls);
    Dice dice(settings.seed);
    double const inset = settings.radius + 0.02;
    stage.fill(dice, {inset, -4 + inset}, {8 - inset, 4 - inset}, people);
    double const free_half = std::max(half - settings.radius, 0.01);
    Segment const opening{{8, -free_half}, {8, free_half}};
    auto const aim = [&](AgentIndex, Point place) { return place.x > 7.95 ? Point{1, 0} : towards(place, opening); };
    std::vector<double> out;
    std::vector<bool> through(1000, false);
    DoorResult result;
    double now = 0;
    double last_progress = 0;
    while (!stage.agents.empty()) {
        stage.step(aim);
        now += settings.seconds_per_step;
        for (std::size_t i = stage.agents.size(); i-- > 0;) {
            double const x = stage.crowd.position(stage.agents[i]).x;
            if (x > 8 && !through[stage.agents[i]]) {
                through[stage.agents[i]] = true;
                out.push_back(now);
                last_progress = now;
            }
            if (x > (walks_on ? 11 : 8)) stage.erase(i, !walks_on);
        }
        result.hash = result.hash * 31 + stage.hash();
        if (out.size() < static_cast<std::size_t>(people))
            result.longest_pause = std::max(result.longest_pause, now - last_progress);
        if (out.size() < static_cast<std::size_t>(people) && now - last_progress > 30) {
            result.deadlock = true;
            break;
        }
    }
    result.faults = stage.faults;
    if (result.deadlock) return result;
    result.last_out = out.back();
    std::size_t const first = out.size() / 5;
    std::size_t const last = out.size() * 4 / 5;
    result.flow = static_cast<double>(last - first) / (out[last] - out[first]);
    return result;
}

CounterflowResult walk_against(Settings const& settings, int against) {
    std::vector<Wall> walls;
    add_ring(walls, {{0, -5},
                     {10, -5},
                     {10, -1},
                     {20, -1},
                     {20, -5},
                     {30, -5},
                     {30, 5},
                     {20, 5},
                     {20, 1},
                     {10, 1},
                     {10, 5},
                     {0, 5}});
    Stage stage(settings, walls);
    Dice dice(settings.seed);
    stage.fill(dice, {0.3, -4.7}, {9.7, 4.7}, 100);
    stage.fill(dice, {20.3, -4.7}, {29.7, 4.7}, against);
    double const free_half = 1 - settings.radius;
    Segment const entry{{10, -free_half}, {10, free_half}};
    Segment const exit{{20, -free_half}, {20, free_half}};
    auto const aim = [&](AgentIndex agent, Point place) {
        bool const eastward = agent < 100;
        Segment const near = eastward ? entry : exit;
        Segment const far = eastward ? exit : entry;
        double const sign = eastward ? 1 : -1;
        if (sign * (place.x - near.from.x) < -0.05) return towards(place, near);
        if (sign * (place.x - far.from.x) < -0.05)
            return towards(place, {{far.from.x, place.z}, {far.from.x, place.z}});
        return towards(place, {{eastward ? 29.5 : 0.5, -4.5}, {eastward ? 29.5 : 0.5, 4.5}});
    };
    CounterflowResult result;
    double now = 0;
    while (now < 600) {
        stage.step(aim);
        now += settings.seconds_per_step;
        bool const done = std::all_of(stage.agents.begin(), stage.agents.end(), [&](AgentIndex agent) {
            return agent >= 100 || stage.crowd.position(agent).x > 20;
        });
        // People who have arrived leave, as in the rooms of the published case they would fill the far wall.
        for (std::size_t i = stage.agents.size(); i-- > 0;) {
            double const x = stage.crowd.position(stage.agents[i]).x;
            if (stage.agents[i] < 100 ? x > 29 : x < 1) stage.erase(i, false);
        }
        if (done) break;
    }
    result.seconds = now < 600 ? now : std::numeric_limits<double>::infinity();
    result.faults = stage.faults;
    return result;
}

CornerResult round_corner(Settings const& settings) {
    std::vector<Wall> walls;
    add_ring(walls, {{0, 0}, {12, 0}, {12, 12}, {10, 12}, {10, 2}, {0, 2}});
    Stage stage(settings, walls);
    Dice dice(settings.seed);
    stage.fill(dice, {0.3, 0.3}, {5.7, 1.7}, 20);
    double const inset = settings.radius + 0.05;
    Segment const turn{{10 + inset, 2 - inset}, {12 - inset, inset}};
    auto const aim = [&](AgentIndex, Point place) {
        return orientation(turn.from, turn.to, place) < 0 ? towards(place, turn)
                                                          : towards(place, {{10 + inset, 11.5}, {12 - inset, 11.5}});
    };
    CornerResult result;
    for (int step = 0; step < 600 && !stage.agents.empty(); ++step) {
        stage.step(aim);
        for (std::size_t i = stage.agents.size(); i-- > 0;)
            if (stage.crowd.position(stage.agents[i]).z > 11) stage.erase(i, false);
    }
    result.all_arrived = stage.agents.empty();
    result.faults = stage.faults;
    return result;
}

}  // namespace pedflux::engine::crowd::scenarios
