#include "tests/recorded_runs/scenarios.h"

// People who walk: the ways and what limits them, and how people come.
namespace pedflux::recorded {

namespace {

using Setting = void (*)(Link&);
using Direction = ConnectionObjectDirection;

/// A long room with a portal at each end.
struct Corridor {
    Corridor(Drawing& drawing, double length, double width) {
        floor = drawing.room("Corridor", 0, 0, length, width);
        west = drawing.portal("West", 0, 0.2, 0, width - 0.2);
        east = drawing.portal("East", length, 0.2, length, width - 0.2);
    }
    GlobalId floor, west, east;
};

/// A lower and an upper hall, and what leads up at x from 12 to 19 m.
struct TwoLevels {
    explicit TwoLevels(Drawing& drawing) {
        lower = drawing.room("Lower", 0, 0, 12, 10);
        upper = drawing.room("Upper", 19, 0, 32, 10, 4);
        west = drawing.portal("West", 0, 2, 0, 8);
        east = drawing.portal("East", 32, 2, 32, 8, 4);
    }
    GlobalId lower, upper, west, east;
};

/// A hall with a stair in its middle, to which people come from beside it.
void draw_stair_hall(Drawing& drawing) {
    drawing.room("Hall", 0, 0, 30, 20);
    drawing.room("Gallery", 20, 6, 30, 14, 4);
    drawing.project->CreateStair("Stair", MeshGeometry::CreateRamp({13, 0, 10}, {21, 4, 10}, 3));
    drawing.journey(drawing.portal("In", 8, 0, 12, 0), drawing.portal("Out", 30, 8, 30, 12, 4), 120);
}

/// A row of rooms for each setting: two rooms with a link of 1.6 m between them that people pass both ways.
void draw_links(Drawing& drawing, std::vector<Setting> const& settings) {
    auto const walkers = drawing.profile(Distribution::CreateUniform(1.1, 1.6))->GetId();
    double z = 0;
    for (auto const& set : settings) {
        auto const row = std::to_string(static_cast<int>(z) / 5);
        drawing.room("Left " + row, 0, z, 8, z + 4);
        drawing.room("Right " + row, 11, z, 19, z + 4);
        set(*drawing.link("Link " + row, {8, 0, z + 2}, {11, 0, z + 2}, 1.6));
        auto const west = drawing.portal("West " + row, 0, z + 1, 0, z + 3);
        auto const east = drawing.portal("East " + row, 19, z + 1, 19, z + 3);
        drawing.journey(west, east, 9, walkers);
        drawing.journey(east, west, 7, walkers);
        z += 5;
    }
}

void draw_hall_of(Drawing& drawing, double people) {
    auto const hall = drawing.room("Hall", 0, 0, 40, 20);
    for (double const x : {10.0, 20.0, 30.0}) drawing.wall(x, 9, x + 1.5, 11);
    drawing.wall(33, 0, 34, 8);
    auto const wide = drawing.portal("Wide", 40, 4, 40, 8);
    auto const narrow = drawing.portal("Narrow", 0, 9, 0, 10.2);
    auto const crowd = make<CountPopulationSource>(Ids{hall}, people);
    crowd->SetDestinationsByLowestCost({wide, narrow});
    drawing.journey(crowd);
}

/// More people than the ramp straight ahead lets in, so that some take the link aside.
void draw_rush(Drawing& drawing, double people, double cost_of_queues) {
    TwoWays const ways(drawing);
    auto const walkers = drawing.profile(Distribution::CreateUniform(1.2, 1.5));
    walkers->SetQueueCostDistribution(Distribution::CreateUniform(0, cost_of_queues));
    drawing.journey(ways.west, ways.east, people, walkers->GetId());
}

/// A source of each kind into the two rooms, each of them with an arrival.
void draw_sources(Drawing& drawing) {
    Rooms const rooms(drawing);
    auto const& [west, north, east] = std::tie(rooms.west, rooms.north, rooms.east);
    drawing.project->SetPopulationMultiplier(1.5);
    auto const add = [&](auto const& source, std::shared_ptr<PopulationArrival> const& arrival) {
        source->SetPopulationArrival(arrival);
        drawing.journey(source);
    };
    auto const even = PopulationArrival::CreateEvenlySpaced(25);
    auto const curve = PopulationArrival::CreateWeightedCurve({{10, 1}, {5, 0}, {18, 3}});
    auto const drawn = PopulationArrival::CreateRandomDistribution(Distribution::CreateExponential(0.1, 2, 40));

    auto const weighted = make<CountPopulationSource>(Ids{}, 8.0);
    weighted->SetOriginsWeighted({west, north}, std::vector{3.0, 1.0});
    weighted->SetDestinationsWeightedByChance({east, north}, std::vector{2.0, 1.0});
    add(weighted, drawn);
    auto const by_chance = make<CountPopulationSource>(Ids{rooms.left}, 6.0);
    by_chance->SetDestinationsByChance({east, north});
    add(by_chance, PopulationArrival::CreateInstant());
    auto const nearest = make<CountPopulationSource>(Ids{west}, 5.0);
    nearest->SetDestinationsByLowestCost({east, north});
    add(nearest, even);
    add(make<CountPerOriginPopulationSource>(Ids{west, north}, 3.0, Ids{east}), curve);
    add(make<CountPerDestinationPopulationSource>(Ids{west}, Ids{north, east}, 3.0), drawn);
    add(make<OriginTablePopulationSource>(std::vector<IdValuePair>{{west, 2}, {north, 3}}, Ids{east}), even);
    add(make<DestinationTablePopulationSource>(Ids{west}, std::vector<IdValuePair>{{north, 1}, {east, 3}}), curve);
    add(make<ODMatrixPopulationSource>(Ids{west, east}, Ids{north, west}, std::vector{1.0, 0.0, 2.0, 3.0}), drawn);
    drawing.journey(
        make<SchedulePopulationSource>(Ids{west}, Ids{east}, std::vector<DurationValuePair>{{8, 1}, {8, 0}, {8, 4}}));
}

void draw_profiles(Drawing& drawing) {
    Corridor const corridor(drawing, 25, 6);
    std::vector<std::shared_ptr<Distribution>> const distributions{constant(1.2),
                                                                   Distribution::CreateUniform(0.8, 1.6),
                                                                   Distribution::CreateTriangular(0.7, 1.2, 1.9),
                                                                   Distribution::CreateNormal(1.3, 0.3, 0.6, 2),
                                                                   Distribution::CreateLogNormal(0, 0.3, 0.3, 2.2),
                                                                   Distribution::CreateExponential(2, 0.6, 2),
                                                                   Distribution::CreateDiscrete({0.9, 1.5}, {3, 1})};
    for (auto const& speed : distributions) {
        auto const people = drawing.profile(speed);
        people->SetRadiusDistribution(Distribution::CreateTriangular(0.17, 0.2, 0.28));
        people->SetPersonalSpaceDistribution(Distribution::CreateUniform(0, 0.3));
        people->SetAccelerationForwardMax(1.1);
        people->SetSpeedShuffleFactor(0.3);
        people->SetTurnRateCapInDegreesAtMaxSpeed(120);
        people->SetInitialAction(
            make<WaitForDurationAction>(Distribution::CreateUniform(0, 6), WaitStyle::StandStill()));
        auto const source = make<CountPopulationSource>(Ids{corridor.west}, Ids{corridor.east}, 6.0);
        source->SetPopulationArrival(PopulationArrival::CreateRandomDistribution(speed));
        drawing.journey(source, people->GetId());
    }
}

void draw_evacuation(Drawing& drawing) {
    TwoLevels const levels(drawing);
    auto const stair = drawing.project->CreateStair("Stair", MeshGeometry::CreateRamp({12, 0, 5}, {19, 4, 5}, 2));
    auto const space = drawing.wait_space("Assembly", 1, 1, 4, 4);
    auto const upstairs = drawing.project->CreateZone("Upstairs", {levels.upper});
    auto const all = drawing.project->CreateZone("All", {levels.lower, levels.upper});
    all->SetMembershipType(ZoneMembershipStrategy::BASE_MEMBERS_AND_CONNECTIONS);
    drawing.journey(levels.upper, levels.west, 12)->SetInitialAction(wait_forever(WaitStyle::SpreadOut()));
    drawing.journey(levels.lower, levels.east, 12)->SetInitialAction(wait_forever());
    drawing.journey(levels.west, levels.east, 15)->SetColorSchemeLighter();
    struct {
        GlobalId origin, zone;
        double people;
        int start;
        std::shared_ptr<WaitStyle> style;
    } const alarms[] = {{levels.upper, upstairs->GetId(), 20, 8, WaitStyle::StandStill()},
                        {levels.lower, all->GetId(), 0, 25, WaitStyle::LowestCostWaitSpace({space})},
                        {levels.lower, {}, 10, 30, WaitStyle::SpreadOut()}};
    for (auto const& alarm : alarms) {
        auto const evacuation = drawing.project->CreateEvacuation(drawing.numbered("Evacuation"));
        auto const source = make<CountPopulationSource>(Ids{alarm.origin}, Ids{levels.west}, alarm.people);
        evacuation->SetPopulationSource(source);
        if (alarm.zone.IsValid()) evacuation->SetZones({alarm.zone});
        evacuation->SetStartTrigger(after(alarm.start));
        evacuation->SetPreMovementWaitDistribution(Distribution::CreateLogNormal(1.5, 0.6, 1, 15));
        evacuation->SetPreMovementWaitStyle(alarm.style);
        if (alarm.people > 15) evacuation->SetInitialAction(wait(2));
    }
    // The results keep named filters too.
    drawing.project->CreateAgentFilterObject("On the stair")->SetAgentFilter(AgentFilter::InArea(stair->GetId()));
}

void draw_circulation(Drawing& drawing) {
    auto const hall = drawing.room("Hall", 0, 0, 16, 10);
    Ids const portals{drawing.portal("West", 0, 3, 0, 7), drawing.portal("East", 16, 3, 16, 7),
                      drawing.portal("North", 6, 0, 10, 0)};
    auto const time = TimeReference::AfterSimulationStart(40);
    using Command = std::function<void(Circulate&)>;
    for (auto const& command : std::vector<Command>{
             [](Circulate& rounds) { rounds.CirculateForCount(constant(3)); },
             [](Circulate& rounds) { rounds.CirculateForDuration(Distribution::CreateUniform(20, 50)); },
             [](Circulate& rounds) { rounds.CirculateForCountOrDuration(constant(2), constant(90), false); },
             [](Circulate& rounds) { rounds.CirculateForCountOrDuration(constant(1), constant(30), true); },
             [&](Circulate& rounds) { rounds.CirculateUntilTime(time); },
             [&](Circulate& rounds) { rounds.CirculateUntilTimeOrCount(time, constant(2), false); },
             [&](Circulate& rounds) { rounds.CirculateUntilTimeOrCount(time, constant(1), true); },
             [](Circulate& rounds) { rounds.CirculateEntireSimulation(); },
         }) {
        auto const rounds = drawing.project->CreateCirculate(drawing.numbered("Rounds"));
        rounds->SetPopulationSource(make<CountPopulationSource>(Ids{hall}, Ids{portals[0]}, 4.0));
        rounds->SetCirculatePortals(portals);
        command(*rounds);
    }
}

void draw_networks(Drawing& drawing) {
    TwoWays const ways(drawing);
    auto const aside = drawing.project->CreateNetwork("Aside");
    aside->SetByExcludingObjects({ways.near->GetId()});
    auto const ahead = drawing.project->CreateNetwork("Ahead");
    ahead->SetByIncludingObjects({ways.left, ways.right, ways.near->GetId()});
    auto const without_ramps = drawing.project->CreateNetwork("Without ramps");
    auto const definition = make<NetworkDefinition>();
    definition->SetIncludeAllRamps(false);
    without_ramps->SetByNetworkDefinition(definition);
    std::vector<Action> const actions{nullptr, make<SetNetworkAction>(),
                                      in_order({wait(2), make<SetNetworkAction>(ahead->GetId())}),
                                      in_order({make<SetNetworkAction>(), wait(3), make<ClearNetworkAction>()})};
    for (auto const& network : {aside, ahead, without_ramps}) {
        auto const people = drawing.profile(Distribution::CreateUniform(1, 1.5));
        people->SetNetwork(network->GetId());
        for (auto const& action : actions) {
            auto const walk = drawing.journey(ways.west, ways.east, 4, people->GetId());
            if (action) walk->SetInitialAction(action);
        }
    }
}

}  // namespace

std::vector<Scenario> movement_scenarios() {
    return {
        {"corridor", 60,
         [](Drawing& drawing) {
             Corridor const corridor(drawing, 30, 3);
             drawing.wall(14, 1, 15, 2);
             auto const people = make<CountPopulationSource>(Ids{corridor.west}, Ids{corridor.east}, 60.0);
             people->SetPopulationArrival(PopulationArrival::CreateEvenlySpaced(30));
             drawing.journey(people);
         }},
        {"doors", 70,
         [](Drawing& drawing) {
             drawing.room("Rooms", 0, 0, 24, 10);
             for (double const x : {8.0, 16.0}) {
                 drawing.wall(x, -1, x + 0.2, 4.4);
                 drawing.wall(x, 5.4, x + 0.2, 11);
             }
             double z = 0;
             for (auto const placement :
                  {AgentInitialPlacement::RANDOM, AgentInitialPlacement::EVEN, AgentInitialPlacement::CENTER}) {
                 auto const from = drawing.portal(drawing.numbered("From"), 0, z, 0, z + 3);
                 drawing.project->GetPortal(from)->SetAgentInitialPlacement(placement);
                 drawing.journey(from, drawing.portal(drawing.numbered("To"), 24, z, 24, z + 3), 25);
                 z += 3.3;
             }
         }},
        {"counterflow", 60,
         [](Drawing& drawing) {
             Corridor const corridor(drawing, 24, 4);
             for (auto const bias : {AgentDirectionBias::LEFT, AgentDirectionBias::RIGHT, AgentDirectionBias::NONE}) {
                 auto const people = drawing.profile(Distribution::CreateNormal(1.3, 0.2, 0.7, 1.9));
                 people->SetAgentDirectionBias(bias);
                 drawing.journey(corridor.west, corridor.east, 14, people->GetId());
                 drawing.journey(corridor.east, corridor.west, 14, people->GetId());
             }
         }},
        {"stairs", 80,
         [](Drawing& drawing) {
             TwoLevels const levels(drawing);
             auto const one = drawing.project->CreateStair("One", MeshGeometry::CreateRamp({12, 0, 2}, {19, 4, 2}, 2));
             auto const other =
                 drawing.project->CreateStair("Other", MeshGeometry::CreateRamp({19, 4, 8}, {12, 0, 8}, 1.5));
             one->SetLocalAgentMaxSpeedUpAndDown(0.6, 0.9);
             other->SetLocalDirectionBias(AgentDirectionBias::RIGHT);
             other->SetLocalSpeedDensityStandard(SpeedDensityStandard::STAIR);
             drawing.journey(levels.west, levels.east, 40);
             drawing.journey(levels.east, levels.west, 40)->SetColorSchemeDarker();
         }},
        {"stair_from_beside", 70, draw_stair_hall},
        {"ramps", 70,
         [](Drawing& drawing) {
             TwoLevels const levels(drawing);
             auto const ramp = drawing.project->CreateRamp("Ramp", MeshGeometry::CreateRamp({12, 0, 2}, {19, 4, 2}, 2));
             ramp->SetLocalAgentMaxSpeedUpAndDown(0.8, 1.2);
             drawing.project->CreateEscalator("Escalator", MeshGeometry::CreateRamp({12, 0, 5}, {19, 4, 5}, 1));
             drawing.project->CreateStair("Stair", MeshGeometry::CreateRamp({12, 0, 8}, {19, 4, 8}, 2));
             auto const averse = drawing.profile(Distribution::CreateUniform(1, 1.5));
             averse->SetVerticalCostDistribution(Distribution::CreateUniform(0.5, 4));
             drawing.journey(levels.west, levels.east, 25, averse->GetId());
             drawing.journey(levels.east, levels.west, 25);
         }},
        {"links", 90,
         [](Drawing& drawing) {
             draw_links(
                 drawing,
                 {[](Link&) {}, [](Link& link) { link.SetEnteringFlowCap(FlowRateType::PERSONS_PER_SECOND, 0.6); },
                  [](Link& link) { link.SetEnteringFlowCap(FlowRateType::PERSONS_PER_MINUTE, 40); },
                  [](Link& link) { link.SetEnteringFlowCap(FlowRateType::PERSONS_PER_METER_AND_SECOND, 0.3); },
                  [](Link& link) { link.SetEnteringFlowCap(FlowRateType::PERSONS_PER_METER_AND_MINUTE, 18); },
                  [](Link& link) { link.SetEntranceDelayDistribution(Distribution::CreateUniform(0.5, 3)); },
                  [](Link& link) { link.SetExitDelayDistribution(Distribution::CreateTriangular(0, 1, 2)); },
                  [](Link& link) { link.SetPriorityDirection(Direction::BALL_TO_BOX); },
                  [](Link& link) { link.SetPriorityDirection(Direction::BOX_TO_BALL); },
                  [](Link& link) { link.SetLocalAgentMaxSpeed(0.7); },
                  [](Link& link) { link.SetLocalDirectionBias(AgentDirectionBias::LEFT); },
                  [](Link& link) { link.SetLocalSpeedDensityStandard(SpeedDensityStandard::WALKWAY); },
                  [](Link& link) { link.SetAgentTraversalType(AgentTraversalType::SINGLE_FILE); },
                  [](Link& link) { link.SetLocalAgentBodyRadius(0.3); },
                  [](Link& link) { link.SetQueuingForceOnApproach(true); },
                  [](Link& link) { link.SetIgnoreNeighbors(true), link.SetIgnoreBarriers(true); }});
         }},
        {"one_way_links", 60,
         [](Drawing& drawing) {
             TwoWays const ways(drawing);
             ways.near->SetDirection(Direction::BALL_TO_BOX);
             drawing.project->GetLink(ways.far)->SetDirection(Direction::BOX_TO_BALL);
             drawing.journey(ways.west, ways.east, 15);
             drawing.journey(ways.east, ways.west, 15);
         }},
        {"networks", 80, draw_networks},
        {"costs", 60,
         [](Drawing& drawing) {
             TwoWays const ways(drawing);
             drawing.project->GetFloor(ways.left)->SetDistanceAdded(1);
             ways.near->SetDistanceAdded(13);
             for (double const horizontal : {0.2, 1.0, 5.0}) {
                 auto const people = drawing.profile(constant(1.3));
                 people->SetHorizontalCostDistribution(constant(horizontal));
                 people->SetProcessingCostDistribution(constant(2));
                 auto const walk = make<CountPopulationSource>(Ids{ways.left}, 8.0);
                 walk->SetDestinationsByLowestCost({ways.east, ways.right});
                 drawing.journey(walk, people->GetId());
             }
         }},
        {"rerouting", 100, [](Drawing& drawing) { draw_rush(drawing, 150, 3); }},
        {"no_rerouting", 60, [](Drawing& drawing) { draw_rush(drawing, 60, 0); }},
        {"crowd", 60, [](Drawing& drawing) { draw_hall_of(drawing, 400); }},
        {"crowd_of_threads", 30, [](Drawing& drawing) { draw_hall_of(drawing, 600); }, nullptr, {}, 1, 3},
        {"crowd_of_another_seed", 25, [](Drawing& drawing) { draw_hall_of(drawing, 300); }, nullptr, {}, 77},
        {"coarse_frames", 60,
         [](Drawing& drawing) {
             drawing.project->SetFrameRate(2);
             drawing.project->SetStartTimeInSeconds(8 * 3600);
             draw_hall_of(drawing, 80);
         }},
        {"fine_frames", 15,
         [](Drawing& drawing) {
             drawing.project->SetFrameRate(30);
             draw_hall_of(drawing, 60);
         }},
        {"sources", 100, draw_sources},
        {"profiles", 60, draw_profiles},
        {"evacuation", 120, draw_evacuation},
        {"circulation", 120, draw_circulation},
        {"no_room_at_the_start", 60,
         [](Drawing& drawing) {
             auto const room = drawing.room("Small", 0, 0, 4, 3);
             drawing.journey(room, drawing.portal("Out", 4, 1, 4, 2.2), 80);
         }},
        {"end_inside", 12,
         [](Drawing& drawing) {
             TwoWays const ways(drawing);
             auto const all = drawing.project->CreateZone("Both", {ways.left, ways.right})->GetId();
             drawing.journey(ways.west, ways.right, 10);
             // A portal in the middle of a room, which reaches out of it.
             drawing.journey(ways.west, drawing.portal("Middle", 5, -1, 5, 9), 5);
             drawing.journey(ways.left, all, 3);
             drawing.journey(make<CountPopulationSource>(Ids{ways.right}, Ids{}, 4.0));
         }},
        {"nobody", 10, [](Drawing& drawing) { drawing.room("Hall", 0, 0, 10, 10); }},
    };
}

std::vector<Scenario> refused_scenarios() {
    auto const refused = [](std::string const& name, void (*draw)(Drawing&)) {
        return Scenario{name, 10, draw, nullptr, {}, 1, 1, true};
    };
    return {
        refused("refused_without_floor", [](Drawing&) {}),
        refused("refused_portal_outside",
                [](Drawing& drawing) {
                    drawing.room("Hall", 0, 0, 10, 10);
                    drawing.portal("Far", 20, 0, 20, 2);
                }),
        refused("refused_lonely_stair",
                [](Drawing& drawing) {
                    drawing.room("Hall", 0, 0, 10, 10);
                    drawing.project->CreateStair("Lonely", MeshGeometry::CreateRamp({10, 0, 5}, {15, 3, 5}, 2));
                }),
        refused("refused_without_way",
                [](Drawing& drawing) {
                    auto const hall = drawing.room("Hall", 0, 0, 10, 10);
                    drawing.room("Annex", 20, 0, 25, 5);
                    drawing.journey(hall, drawing.portal("Elsewhere", 25, 0, 25, 5), 1);
                }),
        refused("refused_covered_floor",
                [](Drawing& drawing) {
                    drawing.room("Hall", 0, 0, 10, 10);
                    drawing.wall(-1, -1, 11, 11);
                }),
        refused("refused_disabled_goal",
                [](Drawing& drawing) {
                    auto const hall = drawing.room("Hall", 0, 0, 10, 10);
                    auto const exit = drawing.portal("Exit", 0, 0, 0, 2);
                    drawing.project->GetPortal(exit)->SetEnabled(false);
                    drawing.journey(hall, exit, 1);
                }),
    };
}

}  // namespace pedflux::recorded
