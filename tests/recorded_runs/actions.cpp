#include "tests/recorded_runs/scenarios.h"

// What agents do: an action of each kind, given when they come, and where they pass.
namespace pedflux::recorded {

namespace {

Test before(int seconds) {
    return make<TimeTest>(TimeReference::AfterSimulationStart(seconds), TimeComparison::BEFORE);
}
std::shared_ptr<TimeReference> clock_at(int seconds) { return TimeReference::AfterSimulationStart(seconds); }

/// One after the other walks through the rooms, each with one of the actions.
void walk_with(Rooms const& rooms, std::vector<Action> const& actions, int seconds_between) {
    int start = 0;
    for (auto const& action : actions) {
        rooms.walk(start, action);
        start += seconds_between;
    }
}

void draw_ways_to_go(Drawing& drawing) {
    Rooms const r(drawing);
    auto const zone = drawing.project->CreateZone("Second", {r.right})->GetId();
    auto const first = drawing.project->CreateZone("First", {r.left, r.link})->GetId();
    auto const nearest_area = make<SeekAreaAction>(Ids{r.right}, false);
    nearest_area->SetLowestCostAreas({r.right, r.link});
    auto const nearest_portal = make<SeekPortalAction>(Ids{r.east}, false);
    nearest_portal->SetLowestCostPortals({r.east, r.north});
    auto const nearest_sign = make<FollowSignAction>(Ids{r.link});
    nearest_sign->SetLowestCostRouteObjects({r.north, r.link});
    auto const signs = make<FollowSignAction>(Ids{r.link});
    signs->SetRouteObjectSequence({r.north, r.link});
    auto const and_leave = [](Action const& action) { return in_order({action, leave()}); };
    walk_with(
        r,
        {make<DoNothingAction>(), and_leave(make<SeekZoneAction>(zone)), make<EvacuateZoneAction>(first),
         make<EvacuateZoneAction>(first, true),
         and_leave(make<SeekAreaAction>(Ids{r.right, r.link}, std::vector{1.0, 1.0}, true)), and_leave(nearest_area),
         make<SeekPortalAction>(Ids{r.east, r.north}, std::vector{1.0, 2.0}, false), and_leave(nearest_portal),
         in_order({make<SeekAreaAction>(Ids{r.link}, false), make<SeekOriginAction>(false), make<ClearHistoryAction>(),
                   make<SeekInitialGoalAction>(true)}),
         make<FollowSignAction>(Ids{r.link}), make<FollowSignAction>(Ids{r.link, r.north}, std::vector{1.0, 3.0}),
         nearest_sign, signs},
        2);
}

void draw_ways_to_wait(Drawing& drawing) {
    Rooms const r(drawing);
    auto const bench = drawing.wait_space("Bench", 4, 0.2, 6, 1);
    auto const lounge = drawing.wait_space("Lounge", 13, 0.5, 15, 3.5);
    drawing.project->GetWaitSpace(lounge)->SetSpreadOutWaitStyle();
    auto const lowest = make<LowestCostWaitSpaceWaitStyle>(Ids{bench, lounge});
    lowest->SetFallbackWaitStyleSpreadOut();
    auto const drawn = make<AssignedWaitSpaceWaitStyle>(Ids{bench, lounge}, std::vector{1.0, 2.0});
    drawn->SetFallbackWaitStyleStandStill();
    auto const still = WaitStyle::StandStill();
    auto const day = TimeReference::Absolute(drawing.project->GetStartTimeInSeconds() + 26);
    auto const duration = Distribution::CreateUniform(5, 15);
    auto const event = r.walk(5)->GetId();
    for (int round = 0; round < 3; ++round) {
        walk_with(r,
                  {wait(4), make<WaitForDurationAction>(duration, lowest), make<WaitForDurationAction>(duration, drawn),
                   make<WaitForDurationAction>(duration, WaitStyle::SpreadOut()),
                   make<WaitForDurationAction>(duration, WaitStyle::AssignedWaitSpace({bench})),
                   make<WaitUntilTimeAction>(clock_at(25), still), make<WaitUntilTimeAction>(day, lowest),
                   make<WaitUntilTimeAction>(TimeReference::BeforeSimulationEnd(60), still),
                   make<WaitUntilTimeAction>(TimeReference::AfterEventStart(event, 30), still),
                   make<WaitWhileTestTrueAction>(before(28), drawn), wait_forever(lowest)},
                  1);
    }
}

void draw_composed_actions(Drawing& drawing) {
    Rooms const r(drawing);
    Test const all = make<AlwaysTrueTest>();
    Test const nobody = make<NotTest>(all);
    Action const count = make<AddToTallyAction>(r.counter, 1.0);
    auto const named = drawing.project->CreateAgentActionObject("Named");
    named->SetAgentAction(in_order({wait(2), paint(Color::TEAL)}));
    auto const still = WaitStyle::StandStill();
    walk_with(r,
              {make<NamedAction>(named->GetId()),
               make<ApplyActionAction>(wait(3)),
               make<IfThenAction>(all, wait(3)),
               make<IfThenAction>(nobody, wait(9)),
               make<IfThenElseAction>(nobody, wait(9), wait(3)),
               make<IfThenElseAction>(make<RandomChanceTest>(0.5), wait(5), count),
               make<ChooseFromSetAction>(std::vector{wait(6), count, paint(Color::RED)}, std::vector{1.0, 1.0, 2.0}),
               make<ListAction>(std::vector{wait(1), count, wait(2), paint(Color::GREEN)},
                                ListActionAssignment::IN_RANDOM_ORDER),
               make<DoUntilDurationEndsAction>(wait_forever(), Distribution::CreateUniform(4, 8)),
               make<DoUntilDurationEndsAction>(count, constant(6), still),
               make<DoUntilTimeAction>(wait_forever(), clock_at(30)),
               make<DoUntilTimeAction>(count, clock_at(32), WaitStyle::SpreadOut()),
               make<DoUntilTestFailsAction>(wait_forever(), before(34)),
               make<DoUntilTestFailsAction>(count, before(36), still),
               make<RepeatForCountAction>(in_order({count, wait(1)}), Distribution::CreateDiscrete({2, 4}, {1, 1})),
               make<RepeatForDurationAction>(wait(2), constant(5)),
               make<RepeatUntilTimeAction>(wait(2), clock_at(40)),
               make<RepeatWhileTestTrueAction>(wait(2), before(42)),
               make<DoUntilDurationEndsAction>(make<RepeatForeverAction>(in_order({count, wait(2)})), constant(7)),
               in_order({make<ClearTasksAction>(), count}),
               in_order({wait(3), leave(), count})},
              2);
}

void draw_looks(Drawing& drawing) {
    Rooms const r(drawing);
    auto const avatar = [&](std::string const& name) {
        return drawing.project->CreateAvatar(name, MeshGeometry::CreateBox({0, 0, 0}, {1, 2, 1}))->GetId();
    };
    auto const own = avatar("Own");
    auto const other = avatar("Other");
    drawing.project->GetProfile(r.steady)->SetAvatar(own);
    Ids const tokens{drawing.token("Badge"), drawing.token("Ticket")};
    auto const holds = make<TokenTest>(tokens, LogicQuantifier::ALL_OF);
    walk_with(
        r,
        {paint(Color::RED), in_order({paint(Color::RED), wait(2), make<ClearColorAction>()}),
         make<SetAvatarAction>(other), in_order({make<SetAvatarAction>(other), wait(2), make<ClearAvatarAction>()}),
         in_order({make<AddTokensAction>(tokens), wait(2), make<IfThenAction>(holds, paint(Color::TEAL)), wait(2),
                   make<ClearTokensAction>(tokens[0]), wait(1), make<AddTokensAction>(tokens[0])}),
         make<AddTokensAction>(tokens[1])},
        1);
    using Scheme = std::function<void(Journey&)>;
    for (auto const& scheme : std::vector<Scheme>{[](Journey& people) { people.SetColorSchemeSpecified(Color::NAVY); },
                                                  [](Journey& people) { people.SetColorSchemeLighter(); },
                                                  [](Journey& people) { people.SetColorSchemeDarker(); },
                                                  [](Journey& people) { people.SetColorSchemeEventColor(); },
                                                  [&](Journey& people) {
                                                      people.SetColorSchemeRules(
                                                          {make<InAreaTest>(r.right), make<RandomChanceTest>(0.5)},
                                                          {Color::RED, Color::GREEN}, Color::BLUE);
                                                  }}) {
        scheme(*drawing.journey(r.left, r.east, 4));
    }
}

/// An action at each place that agents come through, and where they leave.
void draw_actions_at_places(Drawing& drawing) {
    Rooms const r(drawing);
    auto const place = [&](std::string const& name) {
        auto const told = drawing.project->CreateTallyObject(drawing.numbered(name))->GetId();
        return in_order({make<AddToTallyAction>(told, 1.0), wait(0.6)});
    };
    auto& project = *drawing.project;
    project.GetPortal(r.west)->SetEnterAction(place("Portal entered"));
    project.GetPortal(r.north)->SetWaypointAction(place("Portal passed"));
    project.GetFloor(r.left)->SetEnterAction(place("Floor entered"));
    project.GetFloor(r.left)->SetExitAction(place("Floor left"));
    project.GetFloor(r.right)->SetExitAction(place("Second floor left"));
    auto const zone = project.CreateZone("Zone", {r.right});
    zone->SetEnterAction(in_order({place("Zone entered"), paint(Color::GREEN)}));
    zone->SetExitAction(place("Zone left"));
    auto const link = project.GetLink(r.link);
    link->SetBallEnterAction(place("Ball entered"));
    link->SetBallExitAction(place("Ball left"));
    link->SetBoxEnterAction(place("Box entered"));
    link->SetBoxExitAction(place("Box left"));
    drawing.journey(r.west, r.east, 6);
    drawing.journey(r.east, r.west, 4);
    drawing.journey(r.west, r.east, 4)->SetInitialAction(make<SeekPortalAction>(Ids{r.north}, false));
    drawing.journey(r.left, r.right, 3);
}

}  // namespace

std::vector<Scenario> action_scenarios() {
    return {
        {"ways_to_go", 90, draw_ways_to_go},
        {"ways_to_wait", 100, draw_ways_to_wait},
        {"composed_actions", 100, draw_composed_actions},
        {"looks_and_tokens", 50, draw_looks},
        {"actions_at_places", 80, draw_actions_at_places},
    };
}

}  // namespace pedflux::recorded
