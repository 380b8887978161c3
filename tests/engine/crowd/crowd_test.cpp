#include "engine/crowd/crowd.h"

#include "engine/crowd/speed_law.h"
#include "tests/engine/allocations.h"
#include "tests/engine/refusal.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pedflux::engine::crowd {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

void add_walls(Region& region, std::vector<Point> const& corners) {
    for (std::size_t i = 0; i < corners.size(); ++i)
        region.walls.push_back({corners[i], corners[(i + 1) % corners.size()]});
}

Region rectangle(Point low, Point high) {
    Region result;
    add_walls(result, {low, {high.x, low.z}, high, {low.x, high.z}});
    return result;
}

/// Two regions of 10 by 4 m side by side, joined by a crossing 2 m wide at x = 10; wall 0 of the first closes it.
FloorPlan two_rooms(bool closed) {
    FloorPlan plan;
    plan.regions.resize(2);
    for (int side = 0; side < 2; ++side) {
        double const far = side == 0 ? 0 : 20;
        auto& walls = plan.regions[static_cast<std::size_t>(side)].walls;
        walls.push_back({{10, 1}, {10, 3}, !(closed && side == 0)});
        for (double const z : {0.0, 4.0}) walls.push_back({{10, z}, {far, z}});
        walls.push_back({{far, 0}, {far, 4}});
        walls.push_back({{10, 0}, {10, 1}});
        walls.push_back({{10, 3}, {10, 4}});
    }
    plan.crossings.push_back({0, 1, {10, 1}, {10, 3}});
    return plan;
}

AgentIndex add(Crowd& crowd, Point place, Point direction, std::uint32_t region = 0, std::uint32_t key = 0) {
    Entrant entrant;
    entrant.position = place;
    entrant.region = region;
    entrant.key = key;
    AgentIndex const agent = crowd.add(entrant);
    crowd.set_direction(agent, direction);
    return agent;
}

void walk(Crowd& crowd, int steps) {
    for (int i = 0; i < steps; ++i) crowd.step(0.1);
}

}  // namespace

TEST(Crowd, OneWalkerKeepsTheOwnSpeed) {
    struct Case {
        char const* name;
        double ground;
        bool held;
        double way;
    };
    for (Case const& it : {Case{"level floor", 1, false, 40}, {"stairs", 0.5, false, 20}, {"held", 1, true, 0}}) {
        FloorPlan plan;
        plan.regions.push_back(rectangle({0, 0}, {45, 2}));
        Crowd crowd(plan);
        AgentIndex const agent = add(crowd, {1, 1}, {1, 0});
        crowd.set_speed(agent, 1.33);
        crowd.set_ground_factor(agent, it.ground);
        crowd.set_held(agent, it.held);
        for (int i = 0; i < 301; ++i) crowd.step(0.1);
        // The first seconds go to gaining the speed.
        EXPECT_NEAR(crowd.position(agent).x, 1 + it.way, 1.2) << it.name;
        EXPECT_NEAR(crowd.velocity(agent).x, it.held ? 0 : 1.33 * it.ground, 1e-3) << it.name;
        EXPECT_NEAR(crowd.position(agent).z, 1, 1e-6) << it.name;
    }
}

TEST(Crowd, WalkersChangeTheRegionAtTheCrossingUnlessTheirSideIsClosed) {
    for (bool const closed : {false, true}) {
        Crowd crowd(two_rooms(closed));
        AgentIndex const there = add(crowd, {8, 2}, {1, 0});
        AgentIndex const back = add(crowd, {13, 1.5}, {-1, 0}, 1);
        walk(crowd, 40);
        EXPECT_EQ(crowd.region(there), closed ? 0U : 1U);
        EXPECT_EQ(crowd.region(back), 0U) << "the wall is that of the room beyond";
        EXPECT_EQ(crowd.position(there).x < 10, closed);
        EXPECT_LT(crowd.position(back).x, 10);
        crowd.set_wall_open(0, 0, true);
        walk(crowd, 40);
        EXPECT_EQ(crowd.region(there), 1U) << "the door is open now";
    }
}

TEST(Crowd, PeopleSeeEachOtherAcrossACrossingButNotThroughAWall) {
    for (bool const closed : {false, true}) {
        Crowd crowd(two_rooms(closed));
        AgentIndex const walker = add(crowd, {9.5, 2}, {1, 0});
        AgentIndex const waiting = add(crowd, {10.3, 2.05}, {0, 0}, 1);
        crowd.step(0.1);
        EXPECT_EQ(crowd.local_density(walker) > 0.5, !closed);
        Point const before = crowd.position(waiting);
        walk(crowd, 20);
        EXPECT_GT(distance(crowd.position(walker), crowd.position(waiting)), closed ? 0.4 : 0.38);
        EXPECT_EQ(crowd.region(walker), closed ? 0U : 1U);
        if (closed) {
            EXPECT_EQ(crowd.position(waiting), before);
        }
    }
}

TEST(Crowd, NoCrushPushesAnybodyThroughAWallOrOutOfACorner) {
    FloorPlan plan;
    plan.regions.push_back(rectangle({0, 0}, {6, 6}));
    // A wedge and a screen with a free end, where pushes come from two sides.
    plan.regions[0].walls.push_back({{6, 6}, {4, 3}});
    plan.regions[0].walls.push_back({{4, 3}, {6, 5.5}});
    plan.regions[0].walls.push_back({{2, 2}, {4, 2}});
    Crowd crowd(plan);
    std::mt19937 random(3);
    std::vector<AgentIndex> agents;
    for (int i = 0; i < 120; ++i)
        agents.push_back(add(crowd, {0.25 + 0.45 * (i % 12), 0.25 + 0.41 * (i / 12)}, {0, 0}, 0, random() & 0xffU));
    for (int step = 0; step < 400; ++step) {
        double const angle = 0.0314 * step;
        std::vector<Point> before;
        for (AgentIndex const agent : agents) {
            before.push_back(crowd.position(agent));
            crowd.set_direction(agent, {std::cos(angle), std::sin(angle)});
        }
        crowd.step(0.1);
        for (AgentIndex const agent : agents) {
            Point const from = before[agent];
            Point const to = crowd.position(agent);
            for (Wall const& wall : plan.regions[0].walls)
                ASSERT_FALSE(orientation(wall.from, wall.to, from) * orientation(wall.from, wall.to, to) <= 0 &&
                             orientation(from, to, wall.from) * orientation(from, to, wall.to) <= 0 && !(from == to))
                    << "agent " << agent << " in step " << step << " from " << text_of(from) << " to " << text_of(to);
            ASSERT_TRUE(to.x > 0 && to.x < 6 && to.z > 0 && to.z < 6);
        }
    }
}

TEST(Crowd, TheOrderOfAddingDoesNotMatterNorDoPlansFarFromTheOrigin) {
    struct Person {
        Point place;
        std::uint32_t key;
    };
    std::vector<Person> people;
    for (std::uint32_t i = 0; i < 60; ++i)
        people.push_back({{1 + 0.6 * (i % 10) + 0.01 * (i % 7), 1 + 0.5 * (i / 10)}, i});
    auto const run = [](std::vector<Person> const& all, Point moved) {
        FloorPlan plan;
        plan.regions.push_back(rectangle(moved, moved + Point{24, 5}));
        Crowd crowd(plan);
        std::vector<std::pair<std::uint32_t, AgentIndex>> agents;
        for (Person const& person : all)
            agents.push_back(
                {person.key, add(crowd, moved + person.place, {person.key % 2 == 0 ? 1.0 : -1.0, 0}, 0, person.key)});
        walk(crowd, 100);
        std::sort(agents.begin(), agents.end());
        std::vector<Point> result;
        for (auto const& [key, agent] : agents) result.push_back(crowd.position(agent) - moved);
        return result;
    };
    std::vector<Point> const expected = run(people, {0, 0});
    std::shuffle(people.begin(), people.end(), std::mt19937(5));
    EXPECT_EQ(run(people, {0, 0}), expected);
    // A power of two moves doubles exactly.
    EXPECT_EQ(run(people, {65536, -131072}).size(), expected.size());
    std::vector<Point> const moved = run(people, {65536, -131072});
    for (std::size_t i = 0; i < moved.size(); ++i) EXPECT_LT(distance(moved[i], expected[i]), 0.05) << i;
}

TEST(Crowd, PersonalSpaceSlowsFollowersAndTheSideBiasDecidesTheSide) {
    FloorPlan plan;
    plan.regions.push_back(rectangle({0, 0}, {60, 6}));
    std::vector<double> ways;
    for (double const space : {0.5, 1.0, 2.0}) {
        Crowd crowd(plan);
        Entrant entrant;
        entrant.personal_space = space;
        std::vector<AgentIndex> file;
        for (int i = 0; i < 8; ++i) {
            entrant.position = {2 + 0.6 * i, 3};
            file.push_back(crowd.add(entrant));
            crowd.set_direction(file.back(), {1, 0});
        }
        walk(crowd, 60);
        ways.push_back(crowd.position(file.front()).x);
    }
    EXPECT_GT(ways[0], ways[1]);
    EXPECT_GT(ways[1], ways[2]);

    for (double const bias : {-1.0, 1.0}) {
        Crowd crowd(plan);
        add(crowd, {10, 3}, {0, 0});
        Entrant entrant;
        entrant.position = {5, 3};
        entrant.side_bias = bias;
        AgentIndex const walker = crowd.add(entrant);
        crowd.set_direction(walker, {1, 0});
        double aside = 0;
        for (int i = 0; i < 60; ++i) {
            crowd.step(0.1);
            double const off = crowd.position(walker).z - 3;
            if (std::abs(off) > std::abs(aside)) aside = off;
        }
        EXPECT_GT(crowd.position(walker).x, 10.5) << "has passed";
        EXPECT_LT(aside * bias, 0) << "to the right of a walker along x is where z falls";
    }
}

TEST(Crowd, WalkersOvertakeWhereWallsLeaveRoom) {
    // A slow walker beside a wall, a faster one behind it and still nearer to the wall.
    for (bool const wall_to_the_right : {true, false}) {
        FloorPlan plan;
        plan.regions.push_back(rectangle({0, 0}, {60, 2}));
        Crowd crowd(plan);
        auto const off_wall = [&](double metres) { return wall_to_the_right ? metres : 2 - metres; };
        AgentIndex const slow = add(crowd, {8, off_wall(0.5)}, {1, 0});
        AgentIndex const fast = add(crowd, {5, off_wall(0.45)}, {1, 0});
        crowd.set_speed(slow, 0.6);
        walk(crowd, 150);
        EXPECT_GT(crowd.position(fast).x, crowd.position(slow).x + 0.5) << wall_to_the_right;
    }
}

TEST(Crowd, FlowOnStairsIsWhatWeidmannFound) {
    SpeedLaw const law((Locomotion()));
    struct Case {
        double speed;
        double capacity;
    };
    for (Case const& it : {Case{1.34, 1.22}, Case{0.694, 0.98}, Case{0.610, 0.85}}) {
        double most = 0;
        auto const factor = static_cast<float>(it.speed / 1.34);
        for (double density = 0.1; density < 5.4; density += 0.1) {
            auto const share = static_cast<double>(law.share(static_cast<float>(density), factor));
            most = std::max(most, density * it.speed * share);
        }
        EXPECT_NEAR(most, it.capacity, 0.08 * it.capacity) << "per metre and second at " << it.speed << " m/s";
    }
}

TEST(Crowd, NumbersAreGivenAgainAndTheDepartedAreSeenForAWhile) {
    FloorPlan plan;
    plan.regions.push_back(rectangle({0, 0}, {10, 4}));
    Crowd crowd(plan);
    AgentIndex const follower = add(crowd, {8, 2}, {1, 0});
    AgentIndex const leader = add(crowd, {9, 2}, {1, 0});
    AgentIndex const other = add(crowd, {2, 2}, {1, 0});
    crowd.step(0.1);
    double const behind_a_person = crowd.local_density(follower);
    crowd.depart(leader);
    EXPECT_FALSE(crowd.contains(leader));
    EXPECT_EQ(crowd.size(), 2U);
    crowd.step(0.1);
    EXPECT_GT(crowd.local_density(follower), 0.5 * behind_a_person);
    crowd.set_held(follower, true);
    walk(crowd, 40);
    EXPECT_EQ(crowd.local_density(follower), 0);
    crowd.remove(other);
    EXPECT_EQ(add(crowd, {1, 1}, {0, 0}), other) << "the last number freed";
    EXPECT_EQ(add(crowd, {1, 3}, {0, 0}), leader);
}

TEST(Crowd, ASteadyStepAllocatesNothing) {
    FloorPlan plan;
    plan.regions.push_back(rectangle({0, 0}, {200, 20}));
    Crowd crowd(plan, {}, 2);
    for (std::uint32_t i = 0; i < 1000; ++i) add(crowd, {1 + 0.9 * (i / 20), 0.5 + 0.95 * (i % 20)}, {1, 0}, 0, i);
    walk(crowd, 5);
    std::size_t const before = allocations();
    walk(crowd, 50);
    EXPECT_EQ(allocations(), before);
}

TEST(Crowd, RefusesWhatCannotBeWalkedAndStaysAsItWas) {
    FloorPlan plan;
    plan.regions.push_back(rectangle({0, 0}, {10, 4}));
    Crowd crowd(plan);
    AgentIndex const agent = add(crowd, {2, 2}, {1, 0});
    auto const entrant = [](auto const& change) {
        Entrant result;
        result.position = {5, 2};
        change(result);
        return result;
    };
    struct Case {
        std::string message;
        std::string expected;
    };
    Case const cases[] = {
        {refusal_of([&] { crowd.add(entrant([](Entrant& it) { it.speed = -1; })); }),
         "The agent's speed is -1, it must be between 0 and 10"},
        {refusal_of([&] { crowd.add(entrant([](Entrant& it) { it.radius = std::nan(""); })); }),
         "The agent's radius is nan"},
        {refusal_of([&] { crowd.add(entrant([](Entrant& it) {
                              it.position = {infinity, 1};
                          })); }), "must be finite"},
        {refusal_of([&] { crowd.add(entrant([](Entrant& it) {
                              it.position = {5, 4};
                          })); }), "(5, 4) is on a wall"},
        {refusal_of([&] { crowd.add(entrant([](Entrant& it) { it.region = 3; })); }),
         "The agent's region is 3, the plan has 1"},
        {refusal_of([&] { crowd.remove(7); }), "The crowd has no agent 7"},
        {refusal_of([&] {
             crowd.set_direction(agent, {1, 1});
         }),
         "must have the length 1 or be (0, 0)"},
        {refusal_of([&] {
             crowd.set_direction(agent, {std::nan(""), 0});
         }),
         "must have the length 1"},
        {refusal_of([&] { crowd.set_wall_open(0, 4, true); }), "Region 0 has no wall 4, it has 4"},
        {refusal_of([&] { crowd.step(0); }), "The step's duration in seconds is 0"},
        {refusal_of([&] { crowd.step(1); }), "must be between 0.001 and 0.25"},
        {refusal_of([] {
             Crowd(FloorPlan{{Region{}}, {}});
         }),
         "Region 0 has no walls"},
        {refusal_of([&] {
             Crowd(FloorPlan{plan.regions, {{0, 1, {0, 0}, {0, 4}}}});
         }),
         "joins regions 0 and 1"},
        {refusal_of([] {
             Crowd(FloorPlan{{rectangle({0, 0}, {1e9, 1e9})}, {}});
         }),
         "The plan is 1e+09 by 1e+09 m"},
        {refusal_of([&] {
             Locomotion odd;
             odd.sight = 0.1;
             Crowd(plan, odd);
         }),
         "Locomotion.sight is 0.1, it must be between 1.2 and 5"},
    };
    for (Case const& it : cases) EXPECT_THAT(it.message, testing::HasSubstr(it.expected));
    EXPECT_EQ(crowd.size(), 1U);
    EXPECT_EQ(crowd.steps_taken(), 0U);
    EXPECT_EQ(crowd.position(agent), (Point{2, 2}));
}

}  // namespace pedflux::engine::crowd
