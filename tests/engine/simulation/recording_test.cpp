#include "tests/engine/simulation/scene.h"

#include <pedflux/access_rules.h>
#include <pedflux/agent_actions.h>
#include <pedflux/agent_filters.h>
#include <pedflux/timetables.h>
#include <pedflux/transitions.h>
#include <pedflux/wait_styles.h>

namespace pedflux {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

using Filter = std::shared_ptr<AgentFilter>;

/// A hall of 20 by 10 m with doors in the west and east, and a shed behind a link in the south. Three people of a
/// journey stand in the hall for 5 s with a token and leave by the east door without it; an evacuation sends two others
/// out of the shed after 4 s.
struct Recorded : testing::Test, Scene {
    Recorded() {
        hall = room("Hall", 0, 0, 20, 10)->GetId();
        shed = room("Shed", 0, 12, 20, 20)->GetId();
        auto const link = project->CreateLink(
            "Passage", MeshGeometry::CreateFlatPolygon(0, {{4, 10}, {5.5, 10}, {5.5, 12}, {4, 12}}));
        east = portal("East", 20, 4, 20, 6)->GetId();
        token = project->CreateToken("Token")->GetId();
        passage = link->GetId();
        rooms = project->CreateZone("Rooms", {hall, shed})->GetId();
        auto const whole = project->CreateZone("Everything", {hall, shed});
        whole->SetMembershipType(ZoneMembershipStrategy::BASE_MEMBERS_AND_CONNECTIONS);
        everything = whole->GetId();
        steady = walkers("Steady", 1.25)->GetId();
        auto const stand =
            std::make_shared<WaitForDurationAction>(Distribution::CreateConstant(5), WaitStyle::StandStill());
        std::vector<std::shared_ptr<AgentAction>> const actions{std::make_shared<AddTokensAction>(token), stand,
                                                                std::make_shared<ClearTokensAction>(token)};
        auto const people = journey("Journey", hall, east, 3, steady);
        people->SetInitialAction(std::make_shared<ListAction>(actions, ListActionAssignment::IN_ORDER));
        journey_id = people->GetId();
        auto const alarm = project->CreateEvacuation("Alarm");
        alarm->SetPopulationSource(std::make_shared<CountPopulationSource>(std::vector{shed}, std::vector{east}, 2.0));
        alarm->SetProfile(steady);
        alarm->SetPreMovementWaitDistribution(Distribution::CreateConstant(4));
        named = project->CreateAgentFilterObject("Holders");
        named->SetAgentFilter(AgentFilter::HoldingToken(token));
        run_until_empty(*simulate(), 120);
    }
    int count(GlobalId const& floor, double seconds, Filter const& filter) const {
        return run()->GetFloorPopulation(floor, static_cast<int>(seconds * 5), filter);
    }
    std::shared_ptr<Database> run() const { return Database::Open(database); }

    GlobalId hall, shed, passage, rooms, everything, east, token, journey_id, steady;
    std::shared_ptr<AgentFilterObject> named;
};

TEST_F(Recorded, FiltersPickThosePeopleInEachFrame) {
    auto const doing = [](AgentActivity activity) -> Filter { return std::make_shared<ActivityFilter>(activity); };
    auto const of_journey = std::make_shared<CreatedByFilter>(journey_id);
    auto const holding = AgentFilter::HoldingToken(token);
    auto const waiting = doing(AgentActivity::WAITING);
    auto const out_of_shed = std::make_shared<Trip>(shed, hall, TripBoundaryMethod::ENTER, TripBoundaryMethod::ENTER);
    struct Case {
        GlobalId floor;
        double seconds;
        Filter filter;
        int count;
    };
    std::vector<Case> const cases{
        {hall, 3, holding, 3},
        {hall, 6, holding, 0},
        {hall, 6, AgentFilter::IsEver(holding), 3},
        {hall, 3, std::make_shared<NamedFilter>(named->GetId()), 3},
        {hall, 6, std::make_shared<NamedFilter>(named->GetId()), 0},
        {hall, 3, waiting, 3},
        {hall, 6, waiting, 0},
        {hall, 6, doing(AgentActivity::WALKING), 3},
        {shed, 3, waiting, 2},
        {shed, 5, doing(AgentActivity::EVACUATING), 2},
        {shed, 5, doing(AgentActivity::WALKING), 0},
        {hall, 3, of_journey, 3},
        {shed, 3, of_journey, 0},
        {shed, 3, AgentFilter::InArea(everything), 2},
        {shed, 3, AgentFilter::Negated(of_journey)->And(AgentFilter::ExitedAt(east)), 2},
        {hall, 3, AgentFilter::AnyOf({holding->And(waiting), std::make_shared<SpeedFilter>(2, 9)}), 3},
        {hall, 3, nullptr, 3},
        {hall, 3, std::make_shared<AllAgentsFilter>(), 3},
        {shed, 3, std::make_shared<ProfileFilter>(steady), 2},
        {shed, 3, std::make_shared<ProfileFilter>(GlobalId::Generate()), 0},
        {shed, 3, std::make_shared<EnteredAtFilter>(shed), 2},
        {hall, 3, std::make_shared<EnteredAtFilter>(shed), 0},
        {hall, 3, std::make_shared<EndStateFilter>(AgentStateAtSimulationEnd::EXITED), 3},
        {hall, 3, std::make_shared<EndStateFilter>(AgentStateAtSimulationEnd::FAILED), 0},
        {hall, 3, std::make_shared<ProximityFilter>(100, true), 3},
        {hall, 3, std::make_shared<ProximityFilter>(0.1, true), 0},
        {shed, 3, AgentFilter::InTrip(out_of_shed), 2},
        {hall, 3, AgentFilter::InTrip(out_of_shed), 0},
        {shed, 3, AgentFilter::InArea(passage), 0},
        {shed, 3, AgentFilter::IsEver(AgentFilter::InArea(passage)), 2},
        {hall, 3, AgentFilter::IsEver(AgentFilter::InArea(passage)), 0},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        auto const& [floor, seconds, filter, expected] = cases[i];
        EXPECT_EQ(count(floor, seconds, filter), expected) << "case " << i;
    }
}

TEST_F(Recorded, ZonesHaveTheConnectionsThatTheyHadInTheSimulation) {
    auto const stored = run();
    int in_passage = 0;
    int in_rooms = 0;
    int in_everything = 0;
    for (int frame = 1; frame <= stored->GetLastFrame(); ++frame) {
        in_passage += stored->GetFloorPopulation(passage, frame);
        in_rooms += stored->GetFloorPopulation(passage, frame, AgentFilter::InArea(rooms));
        in_everything += stored->GetFloorPopulation(passage, frame, AgentFilter::InArea(everything));
    }
    EXPECT_GT(in_passage, 0);
    EXPECT_EQ(in_rooms, 0);
    EXPECT_EQ(in_everything, in_passage);
}

TEST_F(Recorded, TransitionsAreMadeInOneFrame) {
    auto const stored = run();
    auto const comes = std::make_shared<AtTransitionFilter>(Transition::AreaEnter(passage));
    int made = 0;
    for (int frame = 1; frame <= stored->GetLastFrame(); ++frame) {
        made += stored->GetFloorPopulation(passage, frame, comes);
        EXPECT_EQ(stored->GetFloorPopulation(shed, frame, comes), 0);
    }
    EXPECT_EQ(made, 2) << "each of those who came out of the shed, once";
}

TEST_F(Recorded, ChangedFiltersAreJudgedAnew) {
    auto const filter = std::make_shared<TokenFilter>(token);
    auto const stored = run();
    EXPECT_THAT(stored->GetAgentsOnFloor(hall, 10, filter), SizeIs(3));
    filter->SetToken(east);
    EXPECT_THAT(stored->GetAgentsOnFloor(hall, 10, filter), SizeIs(0));
}

TEST_F(Recorded, TokensAreThereInTheFramesInWhichTheyWereHeld) {
    auto const stored = run();
    auto const agent = stored->GetAgentsOnFloor(hall, 1).front();
    EXPECT_THAT(stored->GetAgentTokens(agent, 1), SizeIs(1));
    EXPECT_THAT(stored->GetAgentTokens(agent, 25), SizeIs(1)) << "until the fifth second";
    EXPECT_THAT(stored->GetAgentTokens(agent, 27), SizeIs(0));
}

TEST_F(Recorded, WhatTheRunDoesNotHaveIsRefused) {
    auto const missing = GlobalId::Generate();
    EXPECT_THAT(refusal_of([&] { count(hall, 3, AgentFilter::InArea(missing)); }), HasSubstr("is not a place"));
    EXPECT_THAT(refusal_of([&] { count(hall, 3, std::make_shared<NamedFilter>(missing)); }),
                HasSubstr("does not have"));
}

}  // namespace
}  // namespace pedflux
