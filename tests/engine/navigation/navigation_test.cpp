#include "engine/navigation/navigation.h"

#include "tests/engine/navigation/floor_plans.h"
#include "tests/engine/navigation/visibility_graph.h"
#include "tests/engine/refusal.h"

#include <pedflux/exception.h>

#include <functional>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pedflux::engine::navigation::testing {
namespace {

using ::testing::HasSubstr;
using Kind = RouteStep::Kind;

Region region(Polygons walkable, double length_factor = 1) { return {"", std::move(walkable), length_factor}; }

Destination to_line(RegionIndex region, Segment line) { return {"", {{region, line}}, {}}; }

NavigationInput plan(Polygons walkable, Segment goal, double clearance = 0) {
    return {{region(std::move(walkable))}, {}, {to_line(0, goal)}, clearance};
}

double metres(Navigation const& navigation, RegionIndex region, Point point, DestinationIndex destination = 0) {
    return navigation.distance(region, point, destination).value_or(-1);
}

/// 20 m along x and 20 m along z, 4 m wide, around the inner corner (16, 4).
Polygons corridor_with_bend() { return {{{{0, 0}, {20, 0}, {20, 20}, {16, 20}, {16, 4}, {0, 4}}, {}}}; }

TEST(Navigation, WalksAroundTheInnerCornerOfABend) {
    Navigation const exact(plan(corridor_with_bend(), {{16, 20}, {20, 20}}));
    EXPECT_NEAR(metres(exact, 0, {0, 2}), std::hypot(16, 2) + 16, 1e-6);
    EXPECT_NEAR(metres(exact, 0, {18, 2}), 18, 1e-6);
    EXPECT_NEAR(metres(exact, 0, {16, 4}), 16, 1e-6);

    // With a clearance the corner moves out by it along both axes, and the goal narrows by it.
    Navigation const clear(plan(corridor_with_bend(), {{16, 20}, {20, 20}}, 0.25));
    EXPECT_NEAR(metres(clear, 0, {0.25, 2}), std::hypot(16, 1.75) + 16.25, 1e-4);

    RouteHint hint;
    RouteStep const step = exact.next(0, {0, 2}, 0, hint);
    EXPECT_EQ(step.kind, Kind::CORNER);
    EXPECT_EQ(step.aim, (Point{16, 4}));
    // Who walks around the corner may spread towards the outer wall.
    EXPECT_GT(length(step.target), 2.9);
    EXPECT_NEAR(step.target.to.x - 16, 4 - step.target.to.z, 1e-9);
}

TEST(Navigation, PassesAPillarOnTheShorterSide) {
    Polygons const room{{rectangle({0, 0}, {10, 10}), {rectangle({4, 3}, {6, 6})}}};
    Navigation const navigation(plan(room, {{9.5, 5}, {9.5, 5.05}}));
    EXPECT_NEAR(metres(navigation, 0, {1, 4}), std::hypot(3, 1) + 2 + std::hypot(3.5, 2), 1e-6);
    EXPECT_NEAR(metres(navigation, 0, {1, 5}), std::hypot(3, 1) + 2 + std::hypot(3.5, 0.95), 1e-6);
}

TEST(Navigation, AgreesWithEveryPairOfCornersInRandomHalls) {
    int compared = 0;
    for (std::uint64_t seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        Polygons const hall = random_hall(seed, 4 + static_cast<int>(seed % 12));
        Dice dice(seed + 1000);
        Point goal;
        do goal = {dice.between(1, 39), dice.between(1, 39)};
        while (!contains(hall, goal) || !contains(hall, goal + Point{0.5, 0.25}));
        Segment const line{goal, goal + Point{0.5, 0.25}};
        VisibilityGraph const slow(hall, line);
        if (!std::isfinite(slow.distance_from(at(line, 0.5)))) continue;
        Navigation const navigation(plan(hall, line));
        for (int i = 0; i < 100; ++i) {
            Point const from{dice.between(0, 40), dice.between(0, 40)};
            if (!contains(hall, from)) continue;
            double const expected = slow.distance_from(from);
            auto const found = navigation.distance(0, from, 0);
            ASSERT_EQ(found.has_value(), std::isfinite(expected)) << text_of(from);
            if (!found) continue;
            ++compared;
            ASSERT_NEAR(*found, expected, 1e-6) << text_of(from);
        }
    }
    EXPECT_GT(compared, 2000);
}

/// Follows the steps in strides of 0.1 m, aiming at the route point or at the nearest point of the target, and returns
/// the metres walked.
double walked(Navigation const& navigation, std::vector<Connection> const& connections, RegionIndex region, Point point,
              bool spread) {
    RouteHint hint;
    double sum = 0;
    for (int strides = 0; strides < 10000; ++strides) {
        RouteStep const step = navigation.next(region, point, 0, hint);
        if (step.kind == Kind::ARRIVED) return sum;
        if (step.kind == Kind::UNREACHABLE) break;
        Point const aim = spread ? nearest_point(step.target, point) : step.aim;
        double const stride = std::min(0.1, distance(point, aim));
        point = point + stride * unit(aim - point);
        sum += stride;
        if (step.kind != Kind::CONNECTION || !(distance(point, aim) < 1e-9)) continue;
        Connection const& crossed = connections[step.connection];
        RegionLine const& here = step.forward ? crossed.from : crossed.to;
        RegionLine const& there = step.forward ? crossed.to : crossed.from;
        point = at(there.line, nearest_fraction(here.line, point));
        region = there.region;
    }
    return std::numeric_limits<double>::infinity();
}

TEST(Navigation, StepsLeadToTheGoalOnTheShortestWay) {
    int arrived = 0;
    for (std::uint64_t seed = 0; seed < 40; ++seed) {
        Polygons const hall = difference(random_hall(seed, 14), {{rectangle({30, 30}, {36, 36}), {}}});
        Polygons room = hall;
        room.push_back({rectangle({31, 29.9}, {35, 35}), {}});
        Segment const goal{{31, 35}, {35, 35}};
        Navigation const navigation(plan(united(room), goal, 0.2));
        Dice dice(seed);
        for (int i = 0; i < 20; ++i) {
            Point const from = navigation.nearest_clear(0, {dice.between(0, 40), dice.between(0, 40)});
            auto const expected = navigation.distance(0, from, 0);
            if (!expected) continue;
            SCOPED_TRACE(std::to_string(seed) + " " + text_of(from));
            EXPECT_NEAR(walked(navigation, {}, 0, from, false), *expected, 0.02);
            EXPECT_LT(walked(navigation, {}, 0, from, true), 1.25 * *expected + 1);
            ++arrived;
        }
    }
    EXPECT_GT(arrived, 300);
}

/// Two rooms of 10 m by 10 m side by side and a wall between them with two doors, 1 m wide, at z = 1 … 2 and 8 … 9.
NavigationInput two_rooms(double clearance) {
    NavigationInput input{{region({{rectangle({0, 0}, {10, 10}), {}}}), region({{rectangle({10, 0}, {20, 10}), {}}})},
                          {},
                          {to_line(1, {{20, 0}, {20, 10}})},
                          clearance};
    for (double const z : {1.0, 8.0}) {
        Segment const door{{10, z}, {10, z + 1}};
        input.connections.push_back({"", {0, door}, {1, door}, {}});
    }
    return input;
}

TEST(Navigation, TakesTheOtherDoorWhenOneCloses) {
    NavigationInput const input = two_rooms(0);
    Navigation navigation(input);
    Point const from{0, 0};
    double const lower = std::hypot(10, 1) + 10;
    double const upper = std::hypot(10, 8) + 10;
    EXPECT_NEAR(metres(navigation, 0, from), lower, 1e-6);
    RouteHint hint;
    EXPECT_EQ(navigation.next(0, from, 0, hint).connection, 0U);

    navigation.set_passage(0, {false, false, 0});
    EXPECT_NEAR(metres(navigation, 0, from), upper, 1e-6);
    // The hint of before is not believed.
    RouteStep const step = navigation.next(0, from, 0, hint);
    EXPECT_EQ(step.connection, 1U);
    EXPECT_TRUE(step.forward);
    EXPECT_NEAR(length(step.target), 1, 1e-9);

    navigation.set_passage(0, {true, true, 4});
    EXPECT_EQ(navigation.next(0, from, 0, hint).connection, 1U);
    EXPECT_NEAR(metres(navigation, 0, from), std::min(lower + 4, upper), 1e-6);
    navigation.set_passage(0, {true, true, 1});
    EXPECT_NEAR(metres(navigation, 0, from), lower + 1, 1e-6);

    // One way: nobody comes back.
    Navigation back(input);
    DestinationIndex const home = back.add_destination(to_line(0, {{0, 0}, {0, 10}}));
    EXPECT_TRUE(back.reachable(1, {15, 5}, home));
    back.set_passage(0, {true, false, 0});
    back.set_passage(1, {true, false, 0});
    EXPECT_FALSE(back.reachable(1, {15, 5}, home));
    EXPECT_NEAR(metres(back, 0, from), lower, 1e-6);
}

TEST(Navigation, ChangesStepByStepLikeABuildingMadeThatWay) {
    // A row of rooms, each joined to the next by three doors, and passages that change at random.
    NavigationInput input;
    constexpr RegionIndex rooms = 6;
    for (RegionIndex i = 0; i < rooms; ++i) {
        double const x = 10.0 * i;
        input.regions.push_back(
            region(difference({{rectangle({x, 0}, {x + 10, 12}), {}}}, {{rectangle({x + 4, 2}, {x + 5, 9}), {}}})));
        for (double const z : {1.0, 5.0, 10.0}) {
            if (i == 0) continue;
            Segment const door{{x, z}, {x, z + 1}};
            input.connections.push_back({"", {i - 1, door}, {i, door}, {}});
        }
    }
    input.destinations = {to_line(0, {{0, 0}, {0, 12}}), to_line(rooms - 1, {{60, 3}, {60, 4}})};
    Navigation changed(input);
    // People to whom some doors are closed and some rooms are wide walk as all do in a building made like that.
    RouteClass people{std::vector<RouteClass::Closure>(15), {1, 2, 1, 1.5, 1, 3}};
    for (std::size_t const door : {1U, 2U, 8U}) people.closed[door].forward = true;
    for (std::size_t const door : {0U, 8U, 12U}) people.closed[door].backward = true;
    DestinationIndex const to_west = changed.add_destination(input.destinations[0], people);
    changed.add_destination(input.destinations[1], people);
    Dice dice(7);
    for (int change = 0; change < 60; ++change) {
        auto const connection = static_cast<ConnectionIndex>(dice.between(0, 15));
        Passage const passage{dice.between(0, 1) < 0.6, dice.between(0, 1) < 0.6, dice.between(0, 1) < 0.5 ? 0 : 5.0};
        changed.set_passage(connection, passage);
        input.connections[connection].passage = passage;
        Navigation const made(input);
        NavigationInput like_that = input;
        for (std::size_t i = 0; i < people.closed.size(); ++i) {
            auto& [open_forward, open_backward, cost] = like_that.connections[i].passage;
            open_forward = open_forward && !people.closed[i].forward;
            open_backward = open_backward && !people.closed[i].backward;
        }
        for (RegionIndex i = 0; i < rooms; ++i) like_that.regions[i].length_factor = people.weights[i];
        Navigation const made_for_them(like_that);
        for (RegionIndex region = 0; region < rooms; ++region)
            for (DestinationIndex destination : {0U, 1U}) {
                Point const from{10.0 * region + dice.between(0, 4), dice.between(0, 12)};
                ASSERT_NEAR(metres(changed, region, from, destination), metres(made, region, from, destination), 1e-6);
                ASSERT_NEAR(metres(changed, region, from, to_west + destination),
                            metres(made_for_them, region, from, destination), 1e-6);
            }
    }
}

TEST(Navigation, WaysThroughDoorsAreStraightToAFewMillimetres) {
    // The same two rooms as one region, with the wall as two obstacles of no width to speak of.
    NavigationInput const parted = two_rooms(0);
    Polygons const walls{{rectangle({10, -1}, {10.0001, 1}), {}},
                         {rectangle({10, 2}, {10.0001, 8}), {}},
                         {rectangle({10, 9}, {10.0001, 11}), {}}};
    Segment const goal{{19, 4}, {19, 4.1}};
    Polygons const whole = difference({{rectangle({0, 0}, {20, 10}), {}}}, walls);
    Navigation const one(plan(whole, goal));
    Navigation two(parted);
    DestinationIndex const destination = two.add_destination(to_line(1, goal));
    Dice dice(3);
    for (int i = 0; i < 500; ++i) {
        Point const from{dice.between(0, 10), dice.between(0, 10)};
        EXPECT_NEAR(metres(two, 0, from, destination), metres(one, 0, from), 0.005) << text_of(from);
    }
}

TEST(Navigation, ClimbsStairsBetweenFloorsThatLieAboveEachOther) {
    // Floor 0 below, floor 1 above it in the same plan; the stair's plan is 4 m long, its incline a quarter longer.
    NavigationInput input{
        {region({{rectangle({0, 0}, {20, 10}), {}}}), region({{rectangle({10, 4}, {14, 6}), {}}}, 1.25),
         region({{rectangle({0, 0}, {10, 10}), {}}, {rectangle({14, 0}, {20, 10}), {}}})},
        {},
        {to_line(2, {{20, 0}, {20, 10}}), to_line(0, {{0, 0}, {0, 10}})},
        0};
    Segment const foot{{10, 4}, {10, 6}};
    Segment const head{{14, 4}, {14, 6}};
    input.connections = {{"foot", {0, foot}, {1, foot}, {}}, {"head", {1, head}, {2, head}, {}}};
    Navigation navigation(input);
    // Straight along the stair's middle.
    EXPECT_NEAR(metres(navigation, 0, {4, 5}), 6 + 5 + 6, 1e-6);
    EXPECT_NEAR(metres(navigation, 1, {12, 5}), 2.5 + 6, 1e-6);
    EXPECT_NEAR(metres(navigation, 2, {16, 5}, 1), 2 + 5 + 10, 1e-6);
    // Floor 1 has no way across the stair's hole.
    EXPECT_FALSE(navigation.reachable(2, {5, 5}, 0));
    EXPECT_NEAR(walked(navigation, input.connections, 0, {4, 9}, false), metres(navigation, 0, {4, 9}) - 1, 0.05);

    auto const way = navigation.path(0, {4, 5}, 0);
    ASSERT_EQ(way.size(), 6U);
    RegionIndex const regions[] = {0, 0, 1, 1, 2, 2};
    double const x[] = {4, 10, 10, 14, 14, 20};
    for (std::size_t i = 0; i < way.size(); ++i) {
        EXPECT_EQ(way[i].region, regions[i]);
        EXPECT_NEAR(way[i].point.x, x[i], 1e-6);
        EXPECT_NEAR(way[i].point.z, 5, 1e-6);
    }

    navigation.set_passage(0, {false, true, 0});
    EXPECT_FALSE(navigation.reachable(0, {4, 5}, 0));
    EXPECT_TRUE(navigation.reachable(2, {16, 5}, 1));
}

TEST(Navigation, WaysBendWhereTheStairBegins) {
    // Fermat: over the foot of the stair the sine of the angle changes by the length factor.
    NavigationInput input{
        {region({{rectangle({0, 0}, {10, 40}), {}}}), region({{rectangle({10, 0}, {20, 40}), {}}}, 2)},
        {},
        {to_line(1, {{15, 20}, {15, 20.02}})},
        0};
    Segment const foot{{10, 0}, {10, 40}};
    input.connections = {{"", {0, foot}, {1, foot}, {}}};
    Navigation const navigation(input);
    double best = 1e9;
    for (double z = 10; z < 20; z += 0.0005) best = std::min(best, std::hypot(5, z - 10) + 2 * std::hypot(5, 20 - z));
    EXPECT_NEAR(metres(navigation, 0, {5, 10}), best, 0.003);
}

TEST(Navigation, KeepsNarrowDoorsOpenAndClosesGaps) {
    struct Case {
        double width;
        double depth;
        bool passable;
    };
    for (Case const& door : {Case{0.8, 0.1, true},
                             {0.45, 0.1, true},
                             {0.35, 0.1, false},
                             {0.35, 0.02, false},
                             {0.8, 2, true},
                             {0.39, 2, false}}) {
        SCOPED_TRACE(door.width);
        Polygons const rooms = united(Polygons{{rectangle({0, 0}, {5, 5}), {}},
                                               {rectangle({5, 2}, {5 + door.depth, 2 + door.width}), {}},
                                               {rectangle({5 + door.depth, 0}, {11, 5}), {}}});
        Navigation const navigation(plan(rooms, {{11, 0}, {11, 5}}, 0.2));
        EXPECT_EQ(navigation.reachable(0, {1, 1}, 0), door.passable);
        EXPECT_TRUE(navigation.reachable(0, {8, 1}, 0));
    }
    // A door that is a region of its own, thinner than a person.
    Segment const left{{5, 2}, {5, 2.8}};
    Segment const right{{5.1, 2}, {5.1, 2.8}};
    NavigationInput const input{
        {region({{rectangle({0, 0}, {5, 5}), {}}}), region({{rectangle({5, 2}, {5.1, 2.8}), {}}}),
         region({{rectangle({5.1, 0}, {10, 5}), {}}})},
        {{"", {0, left}, {1, left}, {}}, {"", {1, right}, {2, right}, {}}},
        {to_line(2, {{10, 0}, {10, 5}})},
        0.2};
    Navigation const navigation(input);
    EXPECT_NEAR(metres(navigation, 0, {1, 2.4}), 9, 1e-4);
    RouteHint hint;
    EXPECT_NEAR(length(navigation.next(0, {4, 2.4}, 0, hint).target), 0.4, 0.001);
}

TEST(Navigation, LeadsBackWhoWasPushedIntoTheMargin) {
    Navigation const navigation(plan(corridor_with_bend(), {{16, 20}, {20, 20}}, 0.25));
    RouteHint hint;
    RouteStep const clear = navigation.next(0, {5, 3.75}, 0, hint);
    RouteStep const pushed = navigation.next(0, {5, 3.9}, 0, hint);
    EXPECT_EQ(pushed.aim, clear.aim);
    EXPECT_NEAR(pushed.distance, clear.distance + 0.15, 1e-4);
    EXPECT_NEAR(metres(navigation, 0, {5, 5}), clear.distance + 1.25, 1e-4);
}

TEST(Navigation, ArrivesInAreas) {
    NavigationInput input = plan({{rectangle({0, 0}, {20, 10}), {rectangle({8, 2}, {9, 8})}}}, {{0, 1}, {0, 2}});
    input.destinations.push_back(
        {"waiting", {}, {{0, {rectangle({12, 4}, {15, 6}), {}}}, {0, {rectangle({1, 8}, {2, 9}), {}}}}});
    Navigation const navigation(input);
    EXPECT_NEAR(metres(navigation, 0, {17, 5}, 1), 2, 1e-6);
    EXPECT_NEAR(metres(navigation, 0, {16, 7}, 1), std::sqrt(2), 1e-6);
    EXPECT_EQ(metres(navigation, 0, {13, 5}, 1), 0);
    EXPECT_NEAR(metres(navigation, 0, {1.5, 5}, 1), 3, 1e-6);
    RouteHint hint;
    EXPECT_EQ(navigation.next(0, {13, 5}, 1, hint).kind, Kind::ARRIVED);
    EXPECT_EQ(navigation.next(0, {17, 5}, 1, hint).kind, Kind::GOAL);
}

TEST(Navigation, HintsNeverChangeTheDistance) {
    // Someone who is carried about at random, with a hint, is told the same distance as without, unless another way is
    // as good: a hint keeps to the way once taken.
    Navigation const navigation(plan(random_hall(11, 14), {{33, 15}, {33.5, 15}}, 0.2));
    Dice dice(5);
    RouteHint hint;
    Point point{15, 26};
    int same = 0;
    for (int i = 0; i < 20000; ++i) {
        Point const moved = point + Point{dice.between(-0.2, 0.2), dice.between(-0.2, 0.2)};
        if (!navigation.contains(0, moved)) continue;
        point = moved;
        RouteStep const step = navigation.next(0, point, 0, hint);
        auto const fresh = navigation.distance(0, point, 0);
        ASSERT_EQ(step.kind != Kind::UNREACHABLE, fresh.has_value());
        if (!fresh) continue;
        ASSERT_GE(step.distance, *fresh - 1e-6);
        same += step.distance <= *fresh + 1e-6;
        ASSERT_TRUE(navigation.in_sight(0, navigation.nearest_clear(0, point), step.aim) || step.distance > *fresh);
    }
    EXPECT_GT(same, 5000);
}

TEST(Navigation, WallsArePassableAtConnectionsAndPortals) {
    NavigationInput input = two_rooms(0.2);
    input.destinations = {to_line(1, {{20, 4}, {20, 6}})};
    Navigation const navigation(input);
    double solid = 0;
    double doors[2] = {0, 0};
    for (Wall const& wall : navigation.walls(0))
        (wall.connection == none ? solid : doors[wall.connection]) += length(wall.segment);
    EXPECT_NEAR(solid, 38, 1e-9);
    EXPECT_NEAR(doors[0], 1, 1e-9);
    EXPECT_NEAR(doors[1], 1, 1e-9);
    double portal = 0;
    for (Wall const& wall : navigation.walls(1))
        if (wall.destination == 0) portal += length(wall.segment);
    EXPECT_NEAR(portal, 2, 1e-9);
    EXPECT_TRUE(navigation.contains(0, {5, 5}));
    EXPECT_FALSE(navigation.contains(0, {15, 5}));
    EXPECT_EQ(navigation.nearest_walkable(0, {12, 5}), (Point{10, 5}));
    EXPECT_TRUE(navigation.in_sight(0, {1, 1}, {9, 9}));
    EXPECT_FALSE(navigation.in_sight(0, {1, 1}, {12, 9}));
}

TEST(Navigation, RefusesWhatCannotBeWalkedInOneSentence) {
    NavigationInput const good = two_rooms(0.2);
    struct Case {
        std::function<void(NavigationInput&)> spoil;
        char const* message;
    };
    Case const cases[] = {
        {[](auto& input) { input.clearance = -1; }, "clearance of routes is -1"},
        {[](auto& input) { input.regions[1].walkable.clear(); }, "region 1 has no walkable area"},
        {[](auto& input) { input.regions[0].name = "Hall", input.regions[0].length_factor = 0.5; },
         "region \"Hall\" has a length factor of 0.5"},
        {[](auto& input) { input.connections[1].from.region = 7; }, "connection 1 names region 7; there are 2"},
        {[](auto& input) {
             input.connections[0].from.line = {{3, -1}, {4, -1}};
         },
         "lies outside of region 0"},
        {[](auto& input) {
             input.connections[0].from.line = {{3, 3}, {3, 3}};
         },
         "without length"},
        {[](auto& input) {
             input.connections[0].from.line = input.connections[0].to.line = {{10, 1}, {10, 1.3}};
         },
         "too narrow"},
        {[](auto& input) { input.connections[0].passage.cost = -2; }, "connection 0 costs -2"},
        {[](auto& input) {
             input.destinations[0] = {"Exit", {}, {}};
         },
         "\"Exit\" has neither a line nor an area"},
        {[](auto& input) {
             input.destinations[0] = {"Exit", {{1, {{30, 1}, {30, 2}}}}, {}};
         },
         "\"Exit\" has a line from (30, 1) to (30, 2) that lies outside of region 1"},
        {[](auto& input) {
             input.destinations[0].areas = {{1, {rectangle({0, 0}, {5, 5}), {}}}};
         },
         "an area that nobody"},
        {[](auto& input) { input.destinations[0].lines[0].line.from.x = std::numeric_limits<double>::quiet_NaN(); },
         "not a finite number"},
    };
    for (Case const& wrong : cases) {
        NavigationInput input = good;
        wrong.spoil(input);
        EXPECT_REFUSED(Navigation(input), wrong.message);
    }
    Navigation navigation(good);
    RouteHint hint;
    EXPECT_THROW(navigation.next(2, {1, 1}, 0, hint), Exception);
    EXPECT_THROW(navigation.next(0, {1, 1}, 1, hint), Exception);
    EXPECT_THROW(navigation.next(0, {1, std::numeric_limits<double>::infinity()}, 0, hint), Exception);
    EXPECT_THROW(navigation.set_passage(0, {true, true, -1}), Exception);
    EXPECT_THROW(navigation.set_passage(2, {}), Exception);
    EXPECT_THROW(navigation.add_destination(good.destinations[0], {{{true, true}}, {}}), Exception);
    EXPECT_THROW(navigation.add_destination(good.destinations[0], {{}, {1, 0}}), Exception);
    EXPECT_NO_THROW(navigation.next(0, {1, 1}, 0, hint));
}

}  // namespace
}  // namespace pedflux::engine::navigation::testing
