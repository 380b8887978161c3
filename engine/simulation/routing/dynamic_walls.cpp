#include "engine/simulation/routing/dynamic_walls.h"

#include "engine/navigation/openings.h"

namespace pedflux::engine {

namespace {

/// How far beside a doorway's line its region is looked for (metres).
constexpr double beside = 0.05;

/// Several portals may lie on a wall; each opens it.
void add_to_doorways(FloorPlan const& plan, DynamicWall const& wall, Segment segment, Exits& exits) {
    for (std::size_t doorway = 0; doorway < plan.doorways.size(); ++doorway) {
        auto const& line = plan.doorways[doorway].line;
        bool const lies_on =
            line.region == wall.region && distance(line.line, at(segment, 0.5)) <= navigation::line_tolerance;
        if (lies_on) exits.walls[doorway].push_back(wall);
    }
}

Point outward_of(navigation::Navigation const& navigation, navigation::RegionLine const& doorway) {
    Point const left = unit(turned_left(doorway.line.to - doorway.line.from));
    bool const left_is_inside = navigation.contains(doorway.region, at(doorway.line, 0.5) + beside * left);
    return left_is_inside ? -1 * left : left;
}

}  // namespace

navigation::Passage passage_of(Gates const& gates, FloorPlan const& plan, std::size_t joint_number) {
    auto const& joint = plan.joints[joint_number];
    auto const number = joint.connection - plan.floor_count;
    auto const& passageway = plan.passageways[number];
    auto const& gate = gates.states[number];
    // A closed gate keeps agents from entering; those inside go on to where the direction lets them.
    bool const may_leave = joint.at_ball ? passageway.box_to_ball : passageway.ball_to_box;
    bool const may_enter = joint.at_ball ? gate.ball_to_box : gate.box_to_ball;
    return {may_leave, may_enter, passageway.cost / 2};
}

void set_gate(Gates& gates, FloorPlan const& plan, navigation::Navigation& navigation, crowd::Crowd& crowd,
              std::size_t passageway, GateState const& state) {
    gates.states[passageway] = state;
    auto const region = plan.passageways[passageway].region;
    for (std::size_t joint = 0; joint < plan.joints.size(); ++joint) {
        if (plan.joints[joint].connection != region) continue;
        auto const passage = passage_of(gates, plan, joint);
        navigation.set_passage(static_cast<navigation::ConnectionIndex>(joint), passage);
        for (auto const& wall : gates.walls[joint]) {
            bool const is_inside = wall.region == region;
            crowd.set_wall_open(wall.region, wall.wall, is_inside ? passage.open_forward : passage.open_backward);
        }
    }
}

void open_exit(Exits& exits, World const& world, crowd::Crowd& crowd, PlaceIndex place) {
    auto const doorway = world.places[place].doorway;
    if (doorway == no_place || exits.is_exit[doorway]) return;
    exits.is_exit[doorway] = true;
    auto const& walls = exits.walls[doorway];
    if (walls.empty()) return;
    exits.of[world.plan.doorways[doorway].line.region].push_back(doorway);
    for (auto const& wall : walls) crowd.set_wall_open(wall.region, wall.wall, true);
}

void find_dynamic_walls(World& world, navigation::Navigation const& navigation, Gates& gates, Exits& exits) {
    auto const& plan = world.plan;
    gates.states.assign(plan.passageways.size(), {});
    gates.walls.assign(plan.joints.size(), {});
    exits.is_exit.assign(plan.doorways.size(), false);
    exits.walls.assign(plan.doorways.size(), {});
    exits.of.assign(plan.surfaces.size(), {});
    world.doorway_outward.assign(plan.doorways.size(), {});
    for (navigation::RegionIndex region = 0; region < plan.surfaces.size(); ++region) {
        auto const& walls = navigation.walls(region);
        for (std::size_t i = 0; i < walls.size(); ++i) {
            auto const& wall = walls[i];
            if (wall.connection != navigation::none) {
                gates.walls[wall.connection].push_back({region, i});
            } else if (wall.destination != navigation::none) {
                add_to_doorways(plan, {region, i}, wall.segment, exits);
            }
        }
    }
    for (std::size_t doorway = 0; doorway < plan.doorways.size(); ++doorway) {
        if (exits.walls[doorway].empty()) continue;
        world.doorway_outward[doorway] = outward_of(navigation, plan.doorways[doorway].line);
    }
}

}  // namespace pedflux::engine
