#include "tests/recorded_runs/scenarios.h"

// What happens by rules: triggers, tallies, gates, servers, broadcasts and dispatches.
namespace pedflux::recorded {

namespace {

using Triggers = std::vector<std::shared_ptr<Trigger>>;
using Direction = ConnectionObjectDirection;
using Point = ServerAccessPoint;
using TallyPointer = std::shared_ptr<Tally>;

std::shared_ptr<Trigger> lasting(int from, int duration) { return make<DurationTrigger>(after(from), duration); }
std::shared_ptr<Trigger> every(int from, int period, int count) {
    return make<PeriodicTrigger>(after(from), period, count);
}

/// People who come in one after the other, a link that is closed from 3 s to 7 s, and a desk that is from 4 s to 9 s.
struct Timetable : Rooms {
    explicit Timetable(Drawing& into) : Rooms(into) {
        drawing.project->SetStartTimeInSeconds(1000);
        auto const source = make<CountPopulationSource>(Ids{west}, Ids{east}, 5.0);
        source->SetPopulationArrival(PopulationArrival::CreateEvenlySpaced(10));
        auto const people = drawing.journey(source, steady);
        people->SetInitialAction(in_order({wait(0.7), leave()}));
        people->SetStartTrigger(after(2));
        stream = people->GetId();
        drawing.gate_access(link, span(3, 4))->SetCommandToClose(Direction::BOTH_WAYS);
        desk = drawing.server("Desk", {{8, 0, 3}, {5, 0, 3}}, 2)->GetId();
        auto const closing = drawing.project->CreateServerAccess("Closing");
        closing->SetServers({desk});
        closing->SetCommandToClose(Point::ENTRANCE);
        closing->SetTriggerRange(span(4, 5));
        auto const seconds = drawing.project->CreateTallyObject("Seconds");
        seconds->SetTallyValueByClockCountingUp(0);
        clock = seconds->GetId();
    }
    std::shared_ptr<Trigger> coming(std::shared_ptr<Trigger> const& from, int target, bool again) const {
        return make<TransitionCountTrigger>(from, Transition::SimEnter(west), target, again);
    }

    GlobalId stream, clock, desk;
};

/// A trigger of each kind; each of them starts a journey, and has a tally added to while its range lasts.
void draw_triggers(Drawing& drawing) {
    Timetable const scene(drawing);
    auto const named = drawing.project->CreateTriggerObject("Named");
    named->SetTrigger(after(3));
    auto const late = make<ClockInRangeTrigger>(1005, ComparisonType::GREATER_THAN);
    auto const active = make<EventActiveTrigger>(scene.stream, EventStateActivity::ACTIVE);
    auto const clock = make<NamedTally>(scene.clock);
    Triggers const triggers{after(3),
                            make<SimulationEndTrigger>(40),
                            make<AbsoluteTimeTrigger>(1004),
                            make<EventStartTimeTrigger>(scene.stream, 1),
                            late,
                            make<ClockInRangeTrigger>(TimeReference::AfterSimulationStart(6), ComparisonType::EQUAL),
                            make<BeginningOfTrigger>(late),
                            make<EndOfTrigger>(active),
                            active,
                            make<EventActiveTrigger>(scene.stream, EventStateActivity::INACTIVE),
                            every(3, 4, 2),
                            make<PeriodicTrigger>(lasting(3, 5), 2),
                            make<BlockingTrigger>(every(1, 1, 8), 3),
                            make<BlockingTrigger>(make<WheneverTrigger>(lasting(2, 5)), 2),
                            scene.coming(after(0), 2, true),
                            scene.coming(after(3), 2, false),
                            make<DelayedTrigger>(after(2), 3),
                            make<DelayedTrigger>(lasting(2, 2), 3),
                            make<AllOfTrigger>(Triggers{every(0, 2, 7), every(0, 3, 5)}),
                            make<AllOfTrigger>(Triggers{every(0, 2, 7), lasting(3, 4)}),
                            make<AnyOfTrigger>(Triggers{after(2), lasting(5, 3)}),
                            make<NoneOfTrigger>(Triggers{lasting(1, 3), lasting(5, 7)}),
                            make<NotTrigger>(lasting(2, 10)),
                            make<NamedTrigger>(named->GetId()),
                            make<NeverTrigger>(),
                            lasting(2, 3),
                            make<GateStateTrigger>(scene.link, GateStateDirection::EITHER_WAY, AgentAccess::CLOSED),
                            make<ServerStateTrigger>(scene.desk, Point::ENTRANCE, AgentAccess::CLOSED),
                            make<TallyTrigger>(clock, ComparisonType::GREATER_THAN, 9.9),
                            make<TallyTrigger>(clock, ComparisonType::LESS_THAN_OR_EQUAL, make<VariableTally>(4))};
    for (auto const& trigger : triggers) {
        drawing.journey(scene.west, scene.north, 1)->SetStartTrigger(trigger);
        auto const change = drawing.project->CreateTallyChange(drawing.numbered("Change"));
        change->SetTallyObjects({drawing.project->CreateTallyObject(drawing.numbered("While"))->GetId()});
        change->SetCommandToAddRepeatedly(1);
        change->SetTriggerRange(make<WheneverTriggerRange>(trigger));
    }
}

/// Each way of changing tallies over a range of each kind.
void draw_tally_changes(Drawing& drawing) {
    Timetable const scene(drawing);
    using Command = void (*)(TallyChange&);
    Command const commands[] = {[](TallyChange& change) { change.SetCommandToAddOnce(); },
                                [](TallyChange& change) { change.SetCommandToAddRepeatedly(2); },
                                [](TallyChange& change) { change.SetCommandToReset(); },
                                [](TallyChange& change) { change.SetCommandToResetThenAddOnce(); },
                                [](TallyChange& change) {
                                    change.SetCommandToResetThenAddRepeatedly(1);
                                    change.SetSkipFirstAddition(true);
                                },
                                [](TallyChange& change) {
                                    change.SetCommandToAddOnce();
                                    change.SetCyclingEnabled(3);
                                },
                                [](TallyChange& change) {
                                    change.SetCommandToAddRepeatedly(1);
                                    change.SetValueAsDistribution(Distribution::CreateUniform(1, 5));
                                },
                                [](TallyChange& change) {
                                    change.SetCommandToAddRepeatedly(1);
                                    change.SetValueAsDistribution(Distribution::CreateNormal(2, 1, 0, 4));
                                    change.SetValueDistributionUsesIntegers(true);
                                }};
    for (auto const& range : std::vector<std::shared_ptr<TriggerRange>>{
             make<AllSimulationTriggerRange>(), make<BoundedTriggerRange>(every(2, 6, 2), every(4, 6, 1)),
             make<OverDurationTriggerRange>(every(2, 5, 2), 2),
             make<ScheduledTriggerRange>(after(1), std::vector{1, 6}, std::vector{2, 3}),
             make<WheneverTriggerRange>(lasting(4, 2))}) {
        for (auto const& command : commands) {
            auto const tally = drawing.project->CreateTallyObject(drawing.numbered("Changed"));
            tally->SetTallyValueByVariable(Distribution::CreateUniform(10, 20));
            auto const change = drawing.project->CreateTallyChange(drawing.numbered("Change"));
            change->SetTallyObjects({tally->GetId()});
            change->SetValueAsConstant(1.5);
            command(*change);
            change->SetTriggerRange(range);
        }
    }
    scene.stay(scene.right, 1);
    auto const by_tally = drawing.project->CreateTallyChange(drawing.numbered("Change"));
    by_tally->SetTallyObjects({scene.counter});
    by_tally->SetCommandToAddRepeatedly(2);
    by_tally->SetValueAsTally(make<NamedTally>(scene.clock));
}

/// A tally of each kind, and a tally object of each kind of value over one that changes.
void draw_tallies(Drawing& drawing) {
    Rooms const rooms(drawing);
    auto const desk = drawing.server("Desk", {{20, 0, 1}, {14, 0, 1}}, 3);
    desk->SetFixedCapacityLimit(3);
    auto const at_desk = desk->GetId();
    rooms.stay(rooms.left, 3);
    for (int start = 0; start < 12; start += 2) rooms.walk(start);
    for (int start = 1; start < 12; start += 2) rooms.walk(start, Office::seek({at_desk}));
    auto const in_left = make<AreaPopulationTally>(rooms.left);
    auto const in_right = make<AreaPopulationTally>(Ids{rooms.right, rooms.link});
    auto const surface = make<SurfaceAreaTally>(Ids{rooms.left, rooms.right});
    auto const entering = make<TransitionTally>(Transition::AreaEnter(rooms.link));
    std::vector<TallyPointer> const tallies{in_left,
                                            in_right,
                                            surface,
                                            entering,
                                            make<VariableTally>(4.5),
                                            make<ServerQueueTally>(at_desk),
                                            make<ServerQueueAndApproachTally>(at_desk),
                                            make<ServerAvailableCapacityTally>(at_desk),
                                            make<ScaleTally>(in_left, -2),
                                            make<SubtractTally>(in_left, in_right),
                                            make<MultiplyTally>(in_left, in_right),
                                            make<DivideTally>(in_left, in_right, ZeroOverZeroValue::ONE),
                                            make<DivideTally>(in_left, surface, ZeroOverZeroValue::ZERO),
                                            make<DivideTally>(in_right, in_right, ZeroOverZeroValue::INFINITE),
                                            make<AddTally>(std::vector<TallyPointer>{in_left, in_right, surface}),
                                            make<MaxTally>(std::vector<TallyPointer>{in_left, in_right}),
                                            make<MinTally>(std::vector<TallyPointer>{in_left, in_right})};
    for (auto const& tally : tallies) drawing.tally(tally);
    auto const object = [&] { return drawing.project->CreateTallyObject(drawing.numbered("Value")); };
    object()->SetTallyValueByAggregateSumOverTime(in_left);
    object()->SetTallyValueByAggregateMinOverTime(in_left);
    object()->SetTallyValueByAggregateMaxOverTime(in_right);
    object()->SetTallyValueByAggregateRollingSum(entering, 4);
    object()->SetTallyValueByAggregateRollingAverage(in_left, 5, true);
    object()->SetTallyValueByAggregateRollingAverage(in_left, 5, false);
    object()->SetTallyValueByClockCountingDown(Distribution::CreateUniform(5, 9));
    auto const bounded = object();
    bounded->SetTallyValueByAggregateSumOverTime(in_right);
    bounded->SetMinValue(1);
    bounded->SetMaxValue(50);
    bounded->SetStartAtCustomValue(3);
    using Reset = std::function<void(TallyObject&)>;
    for (auto const& reset : std::vector<Reset>{
             [](TallyObject& tally) { tally.SetAutoResetEveryFrame(); },
             [](TallyObject& tally) { tally.SetAutoResetEveryInterval(4); },
             [](TallyObject& tally) { tally.SetAutoResetWhenValueGreaterOrEqual(make<VariableTally>(7)); },
             [&](TallyObject& tally) { tally.SetAutoResetWhenValueLessOrEqual(in_right); }}) {
        auto const clock = object();
        clock->SetTallyValueByClockCountingUp(Distribution::CreateUniform(0, 2));
        reset(*clock);
    }
}

/// A tally of each transition, with cordons and volumes.
void draw_transitions(Drawing& drawing) {
    Rooms const rooms(drawing);
    drawing.journey(rooms.west, rooms.east, 12);
    drawing.journey(rooms.east, rooms.west, 9);
    rooms.stay(rooms.right, 2);
    auto const zone = drawing.project->CreateZone("All", {rooms.left, rooms.right, rooms.link})->GetId();
    auto const desk = drawing.server("Desk", {{8, 0, 1}, {4, 0, 1}}, 2)->GetId();
    rooms.walk(2, Office::seek({desk}));
    auto const volume = [&](double low, double high) {
        auto const box = MeshGeometry::CreateBox({4, low, 0}, {6, high, 4});
        return drawing.project->CreateVolume(drawing.numbered("Volume"), box)->GetId();
    };
    auto const here = volume(0, 2);
    auto const above = volume(2.5, 5);
    std::vector<std::shared_ptr<Transition>> transitions{
        Transition::AtPortal(rooms.west),
        Transition::SimEnter(rooms.west),
        Transition::SimEnter(rooms.right),
        Transition::SimExit(rooms.east),
        Transition::AreaEnter(rooms.link),
        Transition::AreaExit(rooms.right),
        Transition::AreaEnter(zone),
        Transition::AreaExit(zone),
        Transition::ChannelTransition(rooms.left, rooms.right),
        Transition::ChannelTransition(rooms.right, rooms.east),
        Transition::ServerEnter(desk),
        Transition::ServerExit(desk),
        Transition::AreaEnter(here),
        Transition::AreaExit(here),
        Transition::AreaEnter(above),
        Transition::AnyOf({Transition::AreaExit(rooms.left), Transition::AreaEnter(rooms.left)})};
    struct {
        double x, height;
        bool one_way, inverted;
    } const cordons[] = {
        {5, 0, false, false}, {5, 0, true, false}, {5, 0, true, true}, {10, 0, false, false}, {5, 3, false, false}};
    for (auto const& [x, height, one_way, inverted] : cordons) {
        auto const line = MeshGeometry::CreateVerticalRectangle({x, height, 0}, {x, height + 2, 4});
        auto const cordon = drawing.project->CreateCordon(drawing.numbered("Cordon"), line);
        if (one_way) cordon->SetCordonDirection(CordonDirection::ONE_WAY);
        cordon->SetDirectionInverted(inverted);
        transitions.push_back(make<CordonTransition>(cordon->GetId()));
    }
    for (auto const& transition : transitions) drawing.total(transition);
    drawing.tally(make<AreaPopulationTally>(Ids{here, above, rooms.right}));
    drawing.broadcast(make<AllSimulationTriggerRange>(), make<AddToTallyAction>(rooms.counter, 1.0))
        ->SetAgentTest(make<InAreaTest>(Ids{here, above}));
}

void draw_gates(Drawing& drawing) {
    TwoWays const ways(drawing);
    auto const badge = drawing.token("Badge");
    ways.near->SetGated(true);
    drawing.project->GetLink(ways.far)->SetGated(true);
    auto const staff = drawing.journey(ways.west, ways.east, 20);
    staff->SetInitialAction(make<AddTokensAction>(badge));
    staff->SetStartTrigger(every(0, 15, 3));
    drawing.journey(ways.west, ways.east, 25);
    drawing.journey(ways.east, ways.west, 15);
    auto const cycles = drawing.gate_access(ways.far, make<BoundedTriggerRange>(after(10), after(60)));
    cycles->SetCommandToClose(Direction::BOTH_WAYS);
    cycles->SetCycleOnDurationInSeconds(6);
    cycles->SetCycleOffDurationInSeconds(4);
    auto const guests = drawing.gate_access(ways.near->GetId(), make<AllSimulationTriggerRange>());
    guests->SetCommandToClose(Direction::BALL_TO_BOX);
    guests->SetAgentTest(make<NotTest>(make<TokenTest>(badge)));
    auto const rest = drawing.gate_access(
        ways.near->GetId(), make<ScheduledTriggerRange>(after(20), std::vector{0, 20}, std::vector{8, 10}));
    rest->SetCommandToOpen(Direction::BOTH_WAYS);
    auto const shut = drawing.gate_access(ways.near->GetId(), span(32, 4));
    shut->SetCommandToClose(Direction::BOX_TO_BALL);
    drawing.total(Transition::AreaEnter(ways.near->GetId()));
}

void draw_closed_for_good(Drawing& drawing) {
    Rooms const rooms(drawing);
    drawing.journey(rooms.west, rooms.east, 14);
    auto const passed = drawing.total(Transition::AreaEnter(rooms.right));
    auto const full = make<TallyTrigger>(make<NamedTally>(passed->GetId()), ComparisonType::GREATER_THAN_OR_EQUAL, 3);
    drawing.gate_access(rooms.link, make<WheneverTriggerRange>(full))->SetCommandToClose(Direction::BOTH_WAYS);
}

void draw_server_access(Drawing& drawing) {
    Office const office(drawing);
    office.visitors(14, Office::seek({office.desk->GetId()}));
    office.visitors(8, Office::seek({office.ticket->GetId()}));
    office.desk->SetContactTime(Distribution::CreateUniform(1, 3));
    struct {
        std::shared_ptr<Server> server;
        Point point;
        std::shared_ptr<TriggerRange> range;
        int on, off;
    } const closings[] = {
        {office.desk, Point::ENTRANCE, make<BoundedTriggerRange>(after(20), after(70)), 9, 4},
        {office.ticket, Point::EXIT, span(10, 15), 0, 0},
        {office.ticket, Point::ENTRANCE_AND_EXIT, make<OverDurationTriggerRange>(every(30, 20, 2), 6), 0, 0}};
    for (auto const& closing : closings) {
        auto const access = drawing.project->CreateServerAccess(drawing.numbered("Closing"));
        access->SetServers({closing.server->GetId()});
        access->SetCommandToClose(closing.point);
        access->SetTriggerRange(closing.range);
        if (closing.on == 0) continue;
        access->SetCycleOnDurationInSeconds(closing.on);
        access->SetCycleOffDurationInSeconds(closing.off);
    }
}

/// Servers of each setting side by side, between which people choose.
void draw_servers(Drawing& drawing) {
    Office const office(drawing);
    auto const card = drawing.token("Card");
    auto const receipt = drawing.token("Receipt");
    auto const holds_card = make<TokenTest>(card);
    office.desk->SetContactTimeRules({holds_card, make<RandomChanceTest>(0.3)}, {constant(2), constant(7)});
    office.desk->SetAutoCapacityLimit(0.8);
    office.desk->SetAccessRequiredTest(make<AgeTest>(1.F, AgentAgeComparison::OLDER_THAN));
    office.desk->SetProcessedAction(make<AddTokensAction>(receipt));
    office.ticket->SetAccessPreferredTest(holds_card);
    office.ticket->SetContactTime(Distribution::CreateExponential(0.4, 1, 8));
    office.ticket->SetFixedCapacityLimit(4);
    office.ticket->SetReleaseAction(paint(Color::GREEN));
    auto const queued = drawing.project->CreatePath("Line", PolylineGeometry::Create({{20, 0, 10}, {12, 0, 10}}));
    queued->SetLocalAgentQueueSpacingByDistance(constant(0.9));
    auto const at_once = drawing.server("At once", {{20, 0, 10}, {12, 0, 10}}, 1);
    at_once->ClearContactTime();
    Ids const all{office.desk->GetId(), office.ticket->GetId(), at_once->GetId()};
    office.visitors(12, in_order({wait(2), make<AddTokensAction>(card), Office::seek(all)}));
    office.visitors(12, in_order({wait(1.5), Office::seek({office.desk->GetId(), office.ticket->GetId()})}));
    office.visitors(8, make<SeekProcessStartAction>(all, std::vector{1.0, 0.0, 3.0}, true));
    for (auto const& server : all) {
        drawing.tally(make<ServerQueueTally>(server));
        drawing.tally(make<ServerQueueAndApproachTally>(server));
        drawing.tally(make<ServerAvailableCapacityTally>(server));
        drawing.total(Transition::ServerEnter(server));
        drawing.total(Transition::ServerExit(server));
    }
}

/// A line that bends around a wall, so that its head cannot be seen from its end.
void draw_queue_round_a_corner(Drawing& drawing) {
    Office const office(drawing);
    auto const counter = drawing.server("Counter", {{20, 0, 11}, {20, 0, 9}, {15, 0, 9}}, 4)->GetId();
    drawing.wall(15, 9.6, 19, 12);
    office.visitors(12, Office::seek({counter}));
}

/// Processes: chains of servers, areas and portals that dispatches lead through.
void draw_dispatches(Drawing& drawing) {
    Office const office(drawing);
    auto const lobby = drawing.room("Lobby", 24, 20, 28, 24);
    drawing.link("Bridge", {26, 0, 12}, {26, 0, 20}, 2);
    auto const check = drawing.server("Check", {{20, 0, 10}, {13, 0, 10}}, 2)->GetId();
    auto const desk = office.desk->GetId();
    auto const ticket = office.ticket->GetId();
    auto const start = drawing.dispatch({}, {ticket});
    drawing.dispatch({ticket}, {desk, check});
    drawing.dispatch({desk}, {lobby});
    drawing.dispatch({check}, {office.gate, office.east});
    drawing.dispatch({lobby}, {office.gate});
    drawing.dispatch({office.gate}, {check})->SetEnabled(false);
    office.visitors(8, Office::seek({ticket}));
    office.visitors(5, Office::seek({start->GetId()}));
    drawing.journey(make<CountPopulationSource>(Ids{office.west}, Ids{}, 3.0), office.walker);
    drawing.dispatch({office.hall}, {check});
    office.visitors(4, in_order({Office::seek({desk}), make<SeekPortalAction>(Ids{office.west}, false)}));
    drawing.total(Transition::SimExit(office.gate));
}

void draw_area_dispatches(Drawing& drawing) {
    Rooms const rooms(drawing);
    drawing.journey(rooms.west, rooms.east, 5);
    drawing.journey(rooms.west, rooms.right, 4);
    drawing.journey(make<CountPopulationSource>(Ids{rooms.left}, Ids{}, 3.0));
    drawing.dispatch({rooms.east}, {rooms.west, rooms.north});
    drawing.dispatch({rooms.right}, {rooms.west});
    drawing.dispatch({rooms.left}, {rooms.north});
}

/// A broadcast for a test of each kind, and for ranges, zones and chance.
void draw_broadcasts(Drawing& drawing) {
    Rooms const rooms(drawing);
    auto const token = drawing.token("Token");
    auto const desk = drawing.server("Desk", {{8, 0, 3}, {5, 0, 3}}, 2)->GetId();
    auto const walk = rooms.walk(0, make<AddTokensAction>(token))->GetId();
    drawing.journey(rooms.east, rooms.west, 3, rooms.steady);
    rooms.stay(rooms.left, 8);
    rooms.stay(rooms.right, 4);
    drawing.gate_access(rooms.link, span(6, 3))->SetCommandToClose(Direction::BALL_TO_BOX);
    auto const zone = drawing.project->CreateZone("Zone", {rooms.right})->GetId();
    auto const named = drawing.project->CreateAgentTestObject("Named");
    Test const from_west = make<EnteredAtTest>(rooms.west);
    named->SetAgentTest(from_west);
    Test const steady = make<ProfileTest>(rooms.steady);
    auto const clock = drawing.project->CreateTallyObject("Clock");
    clock->SetTallyValueByClockCountingUp(0);
    using Tests = std::vector<Test>;
    Tests const tests{
        make<AlwaysTrueTest>(),
        make<CreatedByTest>(walk),
        from_west,
        make<InitialExitTest>(rooms.west),
        steady,
        make<InAreaTest>(rooms.right),
        make<TokenTest>(token, LogicQuantifier::NONE_OF),
        make<AgeTest>(7.F, AgentAgeComparison::OLDER_THAN),
        make<AgeTest>(7.F, AgentAgeComparison::YOUNGER_THAN),
        make<NamedTest>(named->GetId()),
        make<NotTest>(steady),
        make<RandomChanceTest>(0.4),
        make<CompoundTest>(steady, from_west, BooleanOperator::OR),
        make<AllOfTest>(Tests{steady, from_west}),
        make<AnyOfTest>(Tests{from_west, make<InAreaTest>(rooms.left)}),
        make<NoneOfTest>(Tests{from_west, steady}),
        make<EventActiveTest>(walk, LogicQuantifier::ALL_OF, EventStateActivity::INACTIVE),
        make<GateStateTest>(rooms.link, LogicQuantifier::ANY_OF, GateStateDirection::EITHER_WAY, AgentAccess::CLOSED),
        make<ServerStateTest>(desk, LogicQuantifier::ALL_OF, Point::EXIT, AgentAccess::OPEN),
        make<TallyTest>(make<NamedTally>(clock->GetId()), ComparisonType::GREATER_THAN, make<VariableTally>(5)),
        make<TimeTest>(TimeReference::AfterEventStart(walk, 9), TimeComparison::AFTER)};
    for (auto const& test : tests) {
        auto const told = drawing.project->CreateTallyObject(drawing.numbered("Told"))->GetId();
        drawing.broadcast(span(3, 10), make<AddToTallyAction>(told, 1.0))->SetAgentTest(test);
    }
    for (auto const& range : std::vector<std::shared_ptr<TriggerRange>>{
             make<AllSimulationTriggerRange>(), make<WheneverTriggerRange>(after(5)),
             make<ScheduledTriggerRange>(after(0), std::vector{5, 14}, std::vector{2, 2})}) {
        auto const told = drawing.project->CreateTallyObject(drawing.numbered("Told"))->GetId();
        drawing.broadcast(range, make<AddToTallyAction>(told, 1.0))->SetZone(zone);
    }
    // What comes after the clearing of tasks in a list is cleared as well.
    drawing.broadcast(span(15, 1), in_order({paint(Color::RED), wait(3), make<ClearTasksAction>()}));
    drawing.broadcast(span(20, 1), make<SeekInitialGoalAction>(false));
}

}  // namespace

std::vector<Scenario> rule_scenarios() {
    return {
        {"triggers", 60, draw_triggers},
        {"tally_changes", 25, draw_tally_changes},
        {"tallies", 60, draw_tallies},
        {"transitions", 60, draw_transitions},
        {"gates", 110, draw_gates},
        {"closed_for_good", 40, draw_closed_for_good},
        {"server_access", 120, draw_server_access},
        {"servers", 120, draw_servers},
        {"queue_round_a_corner", 100, draw_queue_round_a_corner},
        {"dispatches", 120, draw_dispatches},
        {"area_dispatches", 80, draw_area_dispatches},
        {"broadcasts", 60, draw_broadcasts},
    };
}

}  // namespace pedflux::recorded
