#include "tests/engine/simulation/rooms.h"

#include <pedflux/agent_tests.h>

#include <array>

namespace pedflux {
namespace {

std::shared_ptr<TallyObject> total(Rooms const& rooms, std::string const& name,
                                   std::shared_ptr<Transition> const& transition) {
    auto object = rooms.project->CreateTallyObject(name);
    object->SetTallyValueByAggregateSumOverTime(std::make_shared<TransitionTally>(transition));
    return object;
}

TEST(Cordons, CountWhoCrossesThemInTheirDirection) {
    struct Case {
        char const* name;
        double crossings;
        std::function<void(Cordon&)> set;
        double x = 5;
        double height = 0;
    };
    // Three walk eastwards through both rooms, two westwards.
    std::vector<Case> const cases{
        {"both ways", 5, [](Cordon&) {}},
        {"east", 3, [](Cordon& cordon) { cordon.SetCordonDirection(CordonDirection::ONE_WAY); }},
        {"west", 2,
         [](Cordon& cordon) {
             cordon.SetCordonDirection(CordonDirection::ONE_WAY);
             cordon.SetDirectionInverted(true);
         }},
        {"where two surfaces join", 5, [](Cordon&) {}, 10},
        {"a storey above", 0, [](Cordon&) {}, 5, 3},
        {"disabled", 0, [](Cordon& cordon) { cordon.SetEnabled(false); }},
    };
    Rooms rooms;
    rooms.journey("Eastwards", rooms.west, rooms.east, 3, rooms.steady);
    rooms.journey("Westwards", rooms.east, rooms.west, 2, rooms.steady);
    std::vector<std::shared_ptr<TallyObject>> totals;
    for (auto const& each : cases) {
        auto const cordon = rooms.project->CreateCordon(
            each.name, MeshGeometry::CreateVerticalRectangle({each.x, each.height, 0}, {each.x, each.height + 2, 4}));
        each.set(*cordon);
        totals.push_back(
            total(rooms, "Total " + std::string(each.name), std::make_shared<CordonTransition>(cordon->GetId())));
    }
    auto const beside =
        rooms.project->CreateCordon("Beside", MeshGeometry::CreateVerticalRectangle({15, 0, 0}, {15, 2, 0.2}));
    totals.push_back(total(rooms, "Total beside", std::make_shared<CordonTransition>(beside->GetId())));
    auto const simulation = rooms.simulate();
    rooms.run_until_empty(*simulation, 100);
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(simulation->GetTallyValue(totals[i]->GetId()), cases[i].crossings) << cases[i].name;
    }
    EXPECT_EQ(simulation->GetTallyValue(totals.back()->GetId()), 0) << "nobody walks so near to the wall";
}

TEST(Volumes, HoldThoseWhoseFeetAreInThem) {
    Rooms const rooms;
    rooms.walk();
    rooms.stay(rooms.right, 2);
    auto const volume = [&](std::string const& name, double low, double high) {
        return rooms.project->CreateVolume(name, MeshGeometry::CreateBox({4, low, 0}, {6, high, 4}))->GetId();
    };
    auto const here = volume("Here", 0, 2);
    auto const above = volume("Above", 2.5, 5);
    auto const enters = total(rooms, "Enters", Transition::AreaEnter(here));
    auto const exits = total(rooms, "Exits", Transition::AreaExit(here));
    auto const enters_above = total(rooms, "Enters above", Transition::AreaEnter(above));
    auto const population = rooms.project->CreateTallyObject("Population");
    population->SetTallyValueByCount(std::make_shared<AreaPopulationTally>(std::vector{here, above, rooms.right}));
    auto const call = rooms.project->CreateBroadcast("Call");
    call->SetAgentTest(std::make_shared<InAreaTest>(std::vector{here, above}));
    call->SetAgentAction(rooms.count_one());
    auto const simulation = rooms.simulate();
    for (auto const& [seconds, inside, told] :
         std::vector<std::array<double, 3>>{{3, 0, 0}, {5, 1, 1}, {7, 0, 1}, {15, 1, 1}}) {
        step_to(*simulation, seconds);
        EXPECT_EQ(simulation->GetTallyValue(population->GetId()), 2 + inside) << seconds;
        EXPECT_EQ(rooms.counted(*simulation), told) << seconds;
    }
    EXPECT_EQ(simulation->GetTallyValue(enters->GetId()), 1);
    EXPECT_EQ(simulation->GetTallyValue(exits->GetId()), 1);
    EXPECT_EQ(simulation->GetTallyValue(enters_above->GetId()), 0);
}

TEST(ExitActions, AreDoneByThoseWhoLeaveTheSimulation) {
    struct Case {
        char const* name;
        double expected;
        std::function<void(Rooms&)> set;
    };
    auto const at_floor = [](Rooms& rooms) { rooms.project->GetFloor(rooms.right)->SetExitAction(rooms.count_one()); };
    std::vector<Case> const cases{
        {"by a portal", 1,
         [&](Rooms& rooms) {
             at_floor(rooms);
             rooms.walk();
         }},
        {"inside", 1,
         [&](Rooms& rooms) {
             at_floor(rooms);
             rooms.journey("Walk", rooms.west, rooms.right, 1, rooms.steady);
         }},
        {"by their own action, once", 1,
         [&](Rooms& rooms) {
             at_floor(rooms);
             rooms.journey("Walk", rooms.right, rooms.east, 1, rooms.steady)
                 ->SetInitialAction(std::make_shared<ExitSimulationAction>());
         }},
        {"from a zone", 1,
         [](Rooms& rooms) {
             rooms.project->CreateZone("Zone", {rooms.right})->SetExitAction(rooms.count_one());
             rooms.walk();
         }},
        {"up to what takes time", 1,
         [](Rooms& rooms) {
             std::vector<std::shared_ptr<AgentAction>> const actions{
                 rooms.count_one(),
                 std::make_shared<WaitForDurationAction>(Distribution::CreateConstant(9), WaitStyle::StandStill()),
                 rooms.count_one()};
             rooms.project->GetFloor(rooms.right)
                 ->SetExitAction(std::make_shared<ListAction>(actions, ListActionAssignment::IN_ORDER));
             rooms.walk();
         }},
    };
    for (auto const& each : cases) {
        Rooms rooms;
        each.set(rooms);
        auto const simulation = rooms.simulate();
        EXPECT_LT(rooms.run_until_empty(*simulation, 40), 24) << each.name;
        EXPECT_EQ(rooms.counted(*simulation), each.expected) << each.name;
    }
}

}  // namespace
}  // namespace pedflux
