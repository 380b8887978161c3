#include "tests/engine/simulation/rooms.h"

#include <pedflux/table_queries.h>
#include <pedflux/tables.h>

namespace pedflux {
namespace {

/// What makes a transition; transitions cannot be shared.
using Make = std::function<std::shared_ptr<Transition>()>;

/// Three walk from west to east, two back, one from the west into the right room, one out of it by the east, one leaves
/// the right room by its own action, and one stays there.
TEST(Transitions, CountTheSameLiveAndInTheStoredRun) {
    Rooms rooms;
    auto const go = [&](GlobalId const& from, GlobalId const& to, int start) {
        auto const created = rooms.journey(rooms.numbered("Go"), from, to, 1, rooms.steady);
        created->SetStartTrigger(after(start));
        return created;
    };
    for (int const start : {0, 12, 24}) go(rooms.west, rooms.east, start);
    for (int const start : {4, 17}) go(rooms.east, rooms.west, start);
    go(rooms.west, rooms.right, 30);
    go(rooms.right, rooms.east, 3);
    std::vector<std::shared_ptr<AgentAction>> const actions{
        std::make_shared<WaitForDurationAction>(Distribution::CreateConstant(9), WaitStyle::StandStill()),
        std::make_shared<ExitSimulationAction>()};
    go(rooms.right, rooms.right, 5)
        ->SetInitialAction(std::make_shared<ListAction>(actions, ListActionAssignment::IN_ORDER));
    rooms.stay(rooms.right, 1);
    auto const left_and_link = rooms.project->CreateZone("Left and link", {rooms.left, rooms.link})->GetId();
    auto const both = rooms.project->CreateZone("Both", {rooms.left, rooms.right});
    both->SetMembershipType(ZoneMembershipStrategy::BASE_MEMBERS_AND_CONNECTIONS);
    auto const everything = both->GetId();
    rooms.project->SetDurationInSeconds(90);

    struct Case {
        char const* name;
        double expected;
        Make make;
    };
    std::vector<Case> const cases{
        {"at west", 6, [&] { return Transition::AtPortal(rooms.west); }},
        {"at east", 6, [&] { return Transition::AtPortal(rooms.east); }},
        {"at north", 0, [&] { return Transition::AtPortal(rooms.north); }},
        {"enter left", 6, [&] { return Transition::AreaEnter(rooms.left); }},
        {"enter right", 9, [&] { return Transition::AreaEnter(rooms.right); }},
        {"enter link", 6, [&] { return Transition::AreaEnter(rooms.link); }},
        {"enter left and link", 6, [&] { return Transition::AreaEnter(left_and_link); }},
        {"enter everything", 9, [&] { return Transition::AreaEnter(everything); }},
        {"enter by the area of west", 4, [&] { return Transition::AreaEnter(rooms.west); }},
        {"exit left", 6, [&] { return Transition::AreaExit(rooms.left); }},
        {"exit right", 8, [&] { return Transition::AreaExit(rooms.right); }},
        {"exit link", 6, [&] { return Transition::AreaExit(rooms.link); }},
        {"exit left and link", 6, [&] { return Transition::AreaExit(left_and_link); }},
        {"exit everything", 8, [&] { return Transition::AreaExit(everything); }},
        {"exit by the area of east", 4, [&] { return Transition::AreaExit(rooms.east); }},
        {"come by west", 4, [&] { return Transition::SimEnter(rooms.west); }},
        {"come on left", 4, [&] { return Transition::SimEnter(rooms.left); }},
        {"come on right", 5, [&] { return Transition::SimEnter(rooms.right); }},
        {"come on link", 0, [&] { return Transition::SimEnter(rooms.link); }},
        {"come on everything", 9, [&] { return Transition::SimEnter(everything); }},
        {"leave by east", 4, [&] { return Transition::SimExit(rooms.east); }},
        {"leave from left", 2, [&] { return Transition::SimExit(rooms.left); }},
        {"leave from right", 6, [&] { return Transition::SimExit(rooms.right); }},
        {"leave from left and link", 2, [&] { return Transition::SimExit(left_and_link); }},
        {"left to right", 4, [&] { return Transition::ChannelTransition(rooms.left, rooms.right); }},
        {"right to left", 2, [&] { return Transition::ChannelTransition(rooms.right, rooms.left); }},
        {"left to link", 4, [&] { return Transition::ChannelTransition(rooms.left, rooms.link); }},
        {"link to right", 4, [&] { return Transition::ChannelTransition(rooms.link, rooms.right); }},
        {"zone to right", 4, [&] { return Transition::ChannelTransition(left_and_link, rooms.right); }},
        {"west to left", 4, [&] { return Transition::ChannelTransition(rooms.west, rooms.left); }},
        {"right to east", 4, [&] { return Transition::ChannelTransition(rooms.right, rooms.east); }},
        {"west to right", 0, [&] { return Transition::ChannelTransition(rooms.west, rooms.right); }},
        {"any of several", 14, [&] {
             return Transition::AnyOf({Transition::AtPortal(rooms.west), Transition::SimEnter(rooms.left),
                                       Transition::ChannelTransition(rooms.left, rooms.right),
                                       Transition::SimExit(rooms.east)});
         }}};
    std::vector<GlobalId> totals;
    for (auto const& each : cases) {
        auto const object = rooms.project->CreateTallyObject(each.name);
        object->SetTallyValueByAggregateSumOverTime(std::make_shared<TransitionTally>(each.make()));
        totals.push_back(object->GetId());
    }
    auto const simulation = rooms.simulate();
    while (!simulation->IsDone()) simulation->Step();
    std::vector<double> live;
    for (auto const& total : totals) live.push_back(simulation->GetTallyValue(total));
    simulation->Stop();

    auto const run = rooms.project->GetSimulationRuns().at(0)->GetId();
    for (std::size_t i = 0; i < cases.size(); ++i) {
        auto const query = rooms.project->CreateAgentTransitionTableQuery(cases[i].name, run);
        query->SetTransition(cases[i].make());
        EXPECT_EQ(live[i], cases[i].expected) << cases[i].name;
        EXPECT_EQ(query->Evaluate()->GetRowCount(), live[i]) << cases[i].name;
    }
}

TEST(Transitions, ThatAStoredRunDoesNotTellAreRefusedByName) {
    Rooms rooms;
    rooms.walk();
    auto const cordon =
        rooms.project->CreateCordon("Line", MeshGeometry::CreateVerticalRectangle({5, 0, 0}, {5, 2, 4}));
    auto const volume = rooms.project->CreateVolume("Box", MeshGeometry::CreateBox({4, 0, 0}, {6, 2, 4}));
    auto const simulation = rooms.simulate();
    rooms.run_until_empty(*simulation, 60);
    auto const query =
        rooms.project->CreateAgentTransitionTableQuery("Query", rooms.project->GetSimulationRuns().at(0)->GetId());
    query->SetTransition(std::make_shared<CordonTransition>(cordon->GetId()));
    EXPECT_EQ(refusal_of([&] { query->Evaluate(); }), "A stored run does not tell where a CordonTransition happens");
    query->SetTransition(
        Transition::AnyOf({Transition::AreaEnter(rooms.left), Transition::AreaEnter(volume->GetId())}));
    EXPECT_THAT(refusal_of([&] { query->Evaluate(); }),
                testing::HasSubstr("is not a place that a stored run tells of"));
}

}  // namespace
}  // namespace pedflux
