#include "engine/behaviour/actions/agent_action_states.h"
#include "tests/engine/behaviour/agent_rules.h"
#include "tests/engine/refusal.h"

#include <pedflux/geometry.h>

#include <limits>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Action = NodePointerOf<AgentAction>;
using Actions = NodeList<AgentAction>;

#define STAND_IN(Class, KIND, Base)                          \
    struct Class##State : Base {                             \
        static constexpr ObjectType TYPE = ObjectType::KIND; \
        static constexpr std::string_view NAME = #Class;     \
        using Handle = SimObject;                            \
    };
STAND_IN(SomeFloor, FLOOR, WalkableState)
STAND_IN(SomeZone, ZONE, ObjectState)
STAND_IN(SomeDispatch, DISPATCH, ObjectState)
STAND_IN(SomeTally, TALLY_OBJECT, ObjectState)
STAND_IN(SomeAvatar, AVATAR, ObjectState)
STAND_IN(SomeNetwork, NETWORK, ObjectState)
#undef STAND_IN

Kinds kinds_with_actions() {
    static std::vector<Kind const*> const kinds = [] {
        std::vector<Kind const*> all{&kind_of<SomeFloorState>(),        &kind_of<SomeZoneState>(),
                                     &kind_of<SomeDispatchState>(),     &kind_of<SomeTallyState>(),
                                     &kind_of<SomeAvatarState>(),       &kind_of<SomeNetworkState>(),
                                     &kind_of<AgentActionObjectState>()};
        for (auto const* const kind : known_kinds()) all.push_back(kind);
        return all;
    }();
    return kinds;
}

Action nothing() { return std::make_shared<DoNothingAction>(); }
std::shared_ptr<AgentTest> holds(GlobalId const& token) { return std::make_shared<TokenTest>(token); }
std::shared_ptr<Distribution> constant(double value) { return Distribution::CreateConstant(value); }

struct AgentActions : AgentRules {
    GlobalId hall = document.add<SomeFloorState>("Hall").id;
    GlobalId zone = document.add<SomeZoneState>("Zone").id;
    GlobalId dispatch = document.add<SomeDispatchState>("Dispatch").id;
    GlobalId tally = document.add<SomeTallyState>("Tally").id;
    GlobalId avatar = document.add<SomeAvatarState>("Avatar").id;
    GlobalId network = document.add<SomeNetworkState>("Network").id;
    std::shared_ptr<AgentActionObject> named = create<AgentActionObjectState>("Named");

    std::shared_ptr<WaitStyle> standing = WaitStyle::StandStill();
    std::shared_ptr<TimeReference> noon = TimeReference::Absolute(43200);

    AgentActions() {
        auto const shape = std::make_shared<RectangleGeometry>(Vec3d(), Vec3d(1, 0, 0), Vec3d(0, 0, 1), 2, 2);
        for (auto* const object : document.objects<SceneState>()) object->geometry = shape;
    }

    Actions one_of_each() const {
        auto const exit_now = std::make_shared<ExitSimulationAction>();
        auto const sign = std::make_shared<FollowSignAction>(std::vector{link, portal}, std::vector{1.0, 3.0});
        return {nothing(),
                exit_now,
                sign,
                std::make_shared<NamedAction>(named->GetId()),
                std::make_shared<SeekAreaAction>(std::vector{hall, zone}, std::vector{0.0, 0.5}, true),
                std::make_shared<SeekPortalAction>(std::vector{portal, exit}, std::vector{1.0, 2.0}, true),
                std::make_shared<SeekProcessStartAction>(std::vector{server, dispatch}, std::vector{1.0, 2.0}, true),
                std::make_shared<SeekZoneAction>(zone, true),
                std::make_shared<EvacuateZoneAction>(zone, true),
                std::make_shared<SeekInitialGoalAction>(true),
                std::make_shared<SeekOriginAction>(true),
                std::make_shared<WaitForDurationAction>(Distribution::CreateUniform(5, 10), standing),
                std::make_shared<WaitForeverAction>(WaitStyle::SpreadOut()),
                std::make_shared<WaitUntilTimeAction>(noon, standing),
                std::make_shared<WaitWhileTestTrueAction>(holds(token), standing),
                std::make_shared<AddToTallyAction>(tally, -1.5),
                std::make_shared<AddTokensAction>(token),
                std::make_shared<ClearTokensAction>(token),
                std::make_shared<SetAvatarAction>(avatar),
                std::make_shared<ClearAvatarAction>(),
                std::make_shared<SetColorAction>(Color::RED),
                std::make_shared<ClearColorAction>(),
                std::make_shared<SetNetworkAction>(network),
                std::make_shared<ClearNetworkAction>(),
                std::make_shared<ClearHistoryAction>(),
                std::make_shared<ClearTasksAction>(),
                std::make_shared<ListAction>(Actions{sign, exit_now}, ListActionAssignment::IN_RANDOM_ORDER),
                std::make_shared<ChooseFromSetAction>(Actions{sign, exit_now}, std::vector{2.0, 0.5}),
                std::make_shared<ApplyActionAction>(sign),
                std::make_shared<IfThenAction>(holds(token), sign),
                std::make_shared<IfThenElseAction>(holds(token), sign, exit_now),
                std::make_shared<DoUntilDurationEndsAction>(sign, constant(30), standing),
                std::make_shared<DoUntilTestFailsAction>(sign, holds(token), standing),
                std::make_shared<DoUntilTimeAction>(sign, noon, standing),
                std::make_shared<RepeatForCountAction>(sign, constant(3)),
                std::make_shared<RepeatForDurationAction>(sign, constant(60)),
                std::make_shared<RepeatForeverAction>(sign),
                std::make_shared<RepeatUntilTimeAction>(sign, noon),
                std::make_shared<RepeatWhileTestTrueAction>(sign, holds(token))};
    }
};

TEST_F(AgentActions, ComeInAllKindsAndAreCopiedWhole) {
    auto const actions = one_of_each();
    expect_distinct_numbers<AgentAction>();
    expect_one_of_each_kind(actions);
    expect_clones(actions);
}

TEST_F(AgentActions, AreSavedAndOpenedEqual) {
    for (auto const& action : one_of_each()) {
        auto const object = create<AgentActionObjectState>(document.next_unique_name("Action"));
        object->SetAgentAction(action);
        EXPECT_EQ(written(object->GetAgentAction()), written(action));
    }
    auto const opened = from_text(to_text(document), kinds_with_actions());
    EXPECT_THAT(differences(document, *opened), IsEmpty());
    EXPECT_THAT(opened->open_warnings, IsEmpty());
    auto const* const last = opened->objects<AgentActionObjectState>().back();
    EXPECT_NE(std::dynamic_pointer_cast<RepeatWhileTestTrueAction>(last->action), nullptr);
}

TEST_F(AgentActions, KnowTheirChildren) {
    auto const leaf = nothing();
    auto const otherwise = std::make_shared<ExitSimulationAction>();
    auto const branch = std::make_shared<IfThenElseAction>(holds(token), leaf, otherwise);
    auto const repeated = std::make_shared<RepeatForeverAction>(branch);
    ListAction list({repeated, leaf}, ListActionAssignment::IN_ORDER);

    EXPECT_THAT(branch->GetChildActions(), ElementsAre(leaf, otherwise));
    EXPECT_EQ(list.GetChildActionCount(), 2);
    EXPECT_EQ(list.GetChildAction(1), leaf);
    EXPECT_THAT(list.GetAllNestedChildActions(), ElementsAre(repeated, branch, leaf, otherwise, leaf));
    EXPECT_EQ(leaf->GetChildActionCount(), 0);
    EXPECT_THAT(refusal_of([&] { list.GetChildAction(2); }), HasSubstr("ListAction: there is no child 2, it has 2"));
    EXPECT_THAT(refusal_of([&] { list.GetChildAction(-1); }), HasSubstr("there is no child -1"));
}

TEST_F(AgentActions, CannotHoldThemselves) {
    auto const inner = std::make_shared<ApplyActionAction>(nothing());
    auto const outer = std::make_shared<RepeatForeverAction>(inner);
    EXPECT_THAT(refusal_of([&] { inner->SetAppliedAction(inner); }), HasSubstr("must not be or hold"));
    EXPECT_THAT(refusal_of([&] { inner->SetAppliedAction(outer); }), HasSubstr("must not be or hold"));
    EXPECT_EQ(inner->GetAppliedAction()->GetAgentActionTypeId(), static_cast<int>(AgentActionTypeId::DO_NOTHING));
    ChooseFromSetAction const set({inner}, {1});
    auto const choice = std::make_shared<ChooseFromSetAction>(set);
    EXPECT_THAT(refusal_of([&] { choice->AddChildAction(choice, 1); }), HasSubstr("must not be or hold"));
    EXPECT_EQ(choice->GetChildActionCount(), 1);
}

TEST_F(AgentActions, SecondsCountsAndTimesOfTheClockAreFixedValues) {
    auto const fixed = [](std::shared_ptr<Distribution> const& distribution) {
        EXPECT_EQ(distribution->GetDistributionType(), DistributionType::CONSTANT);
        return distribution->GetMean();
    };
    WaitForDurationAction wait(constant(1), standing);
    wait.SetDurationInSeconds(12);
    EXPECT_EQ(fixed(wait.GetDurationDistribution()), 12);
    DoUntilDurationEndsAction until(nothing(), constant(1));
    until.SetDurationInSeconds(0);
    EXPECT_EQ(fixed(until.GetDurationDistribution()), 0);
    RepeatForDurationAction repeat(nothing(), constant(1));
    repeat.SetDurationInSeconds(7);
    EXPECT_EQ(fixed(repeat.GetDurationDistribution()), 7);
    RepeatForCountAction count(nothing(), constant(1));
    count.SetCount(4);
    EXPECT_EQ(fixed(count.GetCountDistribution()), 4);

    auto const is_noon = [](std::shared_ptr<TimeReference> const& time) {
        auto const data = TimeReferenceAccess::time(*time);
        return data.frame == TimeReferenceFrame::ABSOLUTE && data.seconds == 43200;
    };
    auto const before_end = TimeReference::BeforeSimulationEnd(1);
    WaitUntilTimeAction waits(before_end, standing);
    DoUntilTimeAction does(nothing(), before_end);
    RepeatUntilTimeAction repeats(nothing(), before_end);
    waits.SetAbsoluteTimeInSeconds(43200);
    does.SetAbsoluteTimeInSeconds(43200);
    repeats.SetAbsoluteTimeInSeconds(43200);
    EXPECT_TRUE(is_noon(waits.GetTimeReference()));
    EXPECT_TRUE(is_noon(does.GetTimeReference()));
    EXPECT_TRUE(is_noon(repeats.GetTimeReference()));
}

TEST_F(AgentActions, WaitWhenDoneEarlyOnlyWithAStyle) {
    DoUntilTestFailsAction action(nothing(), holds(token));
    EXPECT_FALSE(action.IsWaitIfDoActionDoneEarly());
    EXPECT_EQ(action.GetWaitStyle(), nullptr);
    action.SetWaitIfDoActionDoneEarly(standing);
    EXPECT_TRUE(action.IsWaitIfDoActionDoneEarly());
    EXPECT_EQ(action.GetWaitStyle(), standing);
    EXPECT_THAT(refusal_of([&] { action.SetWaitIfDoActionDoneEarly(nullptr); }),
                HasSubstr("DoUntilTestFailsAction: waitIfDoActionDoneEarly must be given, not empty"));
    EXPECT_TRUE(action.IsWaitIfDoActionDoneEarly());
    action.ClearWaitIfDoActionDoneEarly();
    EXPECT_FALSE(action.IsWaitIfDoActionDoneEarly());
}

TEST_F(AgentActions, DestinationsTellHowTheyAreChosen) {
    SeekPortalAction seek({portal, exit}, {1, 3}, false);
    EXPECT_TRUE(seek.UsesManualWeights());
    EXPECT_EQ(seek.GetDestinationAssignment(), DestinationAssignment::WEIGHTED_BY_CHANCE);
    EXPECT_THAT(refusal_of([&] {
                    seek.SetAssignedPortals({portal, exit}, {1, 2, 3});
                }),
                HasSubstr("portals must be as many as their weights, which number 3, not 2"));
    EXPECT_THAT(seek.GetManualWeights(), ElementsAre(1, 3));
    seek.SetLowestCostPortals({exit});
    EXPECT_FALSE(seek.UsesManualWeights());
    EXPECT_THAT(seek.GetManualWeights(), IsEmpty());
    EXPECT_EQ(seek.GetDestinationAssignment(), DestinationAssignment::BY_LOWEST_COST);
    seek.SetAssignedPortals({portal});
    EXPECT_EQ(seek.GetDestinationAssignment(), DestinationAssignment::BY_CHANCE);

    FollowSignAction sign({link});
    sign.SetRouteObjectSequence({portal, link});
    EXPECT_EQ(sign.GetDestinationAssignment(), DestinationAssignment::IN_SEQUENCE);
    ASSERT_EQ(sign.GetRouteObjects().size(), 2U);
    EXPECT_TRUE(sign.GetRouteObjects()[0].InternalEquals(portal));
}

TEST_F(AgentActions, ChoicesAreEditedAllOrNothing) {
    ChooseFromSetAction choice(Actions{}, std::vector<double>{});
    EXPECT_THAT(choice.GetWeights(), IsEmpty());
    choice.AddChildAction(nothing(), 2);
    choice.AddChildAction(std::make_shared<ExitSimulationAction>(), 0);
    EXPECT_THAT(choice.GetWeights(), ElementsAre(2, 0));
    choice.SetWeight(1, 5);
    choice.SetChildAction(0, std::make_shared<ClearTasksAction>());
    EXPECT_EQ(choice.GetWeight(1), 5);

    auto const before = written(choice.Clone());
    struct Case {
        std::function<void()> change;
        char const* message;
    };
    for (auto const& [change, message] : std::vector<Case>{
             {[&] { choice.AddChildAction(nothing(), -1); }, "weights.2 must be at least 0, not -1"},
             {[&] { choice.AddChildAction(nullptr, 1); }, "childActions.2 must be given, not empty"},
             {[&] { choice.SetChildAction(2, nothing()); }, "there is no child 2, it has 2"},
             {[&] { choice.SetChildAction(0, nullptr); }, "childActions.0 must be given, not empty"},
             {[&] { choice.SetWeight(-1, 1); }, "there is no weight -1, it has 2"},
             {[&] { choice.SetWeight(0, std::numeric_limits<double>::quiet_NaN()); },
              "weights.0 must be at least 0, not nan"},
             {[&] { choice.SetWeights({1}); }, "must be as many as their weights, which number 1, not 2"},
             {[&] {
                  choice.SetChildActions({nothing(), nullptr});
              },
              "childActions.1 must be given, not empty"},
             {[&] { static_cast<void>(choice.GetWeight(2)); }, "there is no weight 2, it has 2"},
         }) {
        EXPECT_THAT(refusal_of(change), HasSubstr(message));
        EXPECT_EQ(written(choice.Clone()), before);
    }

    choice.SetChildActions({nothing(), nothing()});
    EXPECT_THAT(choice.GetWeights(), ElementsAre(2, 5));
    choice.SetChildActions({nothing(), nothing(), nothing()});
    EXPECT_THAT(choice.GetWeights(), ElementsAre(1, 1, 1));
    choice.ClearChildActions();
    EXPECT_EQ(choice.GetChildActionCount(), 0);
    EXPECT_THAT(choice.GetWeights(), IsEmpty());
}

TEST_F(AgentActions, RefuseWhatMakesNoSense) {
    struct {
        std::function<void()> action;
        char const* message;
    } const cases[] = {
        {[&] {
             ChooseFromSetAction({nothing(), nothing(), nothing()}, {1, 2});
         },
         "ChooseFromSetAction: childActions must be as many as their weights, which number 2, not 3"},
        {[&] { ChooseFromSetAction({nothing()}, {-1}); }, "weights.0 must be at least 0, not -1"},
        {[&] {
             ListAction({nothing(), nullptr}, ListActionAssignment::IN_ORDER);
         },
         "ListAction: childActions.1 must be given, not empty"},
        {[&] { ListAction({}, static_cast<ListActionAssignment>(2)); }, "IN_RANDOM_ORDER (1), not 2"},
        {[&] {
             SeekAreaAction({hall, hall}, false);
         },
         "SeekAreaAction: areas must be a list of different objects"},
        {[&] {
             SeekAreaAction({hall, zone}, {0, 0}, false);
         },
         "weights must be above 0 for at least one, not all 0"},
        {[&] { SeekPortalAction({GlobalId::INVALID}, false); }, "the identifier of a portal, not the invalid"},
        {[&] { FollowSignAction({link}, {}); }, "routeObjects must be as many as their weights, which number 0, not 1"},
        {[&] { SeekZoneAction(GlobalId::INVALID, true); }, "the identifier of a zone, not the invalid identifier"},
        {[&] { WaitForDurationAction(constant(-1), standing); },
         "durationDistribution must be a distribution of values at least 0 s, not one that reaches -1"},
        {[&] { WaitForDurationAction(Distribution::CreateUniform(5, 1), standing); }, "must be a valid distribution"},
        {[&] { WaitForDurationAction(nullptr, standing); }, "durationDistribution must be given, not empty"},
        {[&] { WaitForDurationAction(constant(1), nullptr); }, "waitStyle must be given, not empty"},
        {[&] { WaitForeverAction(std::shared_ptr<WaitStyle>()); }, "waitStyle must be given, not empty"},
        {[&] { WaitForDurationAction(constant(1), standing).SetDurationInSeconds(-5); }, "not one that reaches -5"},
        {[&] { WaitUntilTimeAction(nullptr, standing); }, "timeReference must be given, not empty"},
        {[&] { WaitUntilTimeAction(noon, standing).SetAbsoluteTimeInSeconds(-1); }, "-1"},
        {[&] { AddToTallyAction(tally, std::numeric_limits<double>::infinity()); }, "valueToAdd must be finite"},
        {[&] {
             AddTokensAction(std::vector{token, token});
         },
         "tokens must be a list of different objects"},
        {[&] { IfThenAction(nullptr, nothing()); }, "ifTest must be given, not empty"},
        {[&] { IfThenElseAction(holds(token), nothing(), nullptr); }, "elseAction must be given, not empty"},
        {[&] { DoUntilTimeAction(nothing(), noon, nullptr); }, "waitIfDoActionDoneEarly must be given, not empty"},
        {[&] { RepeatForCountAction(nothing(), constant(1)).SetCount(-1); }, "at least 0"},
        {[&] { RepeatForeverAction{Action()}; }, "repeatAction must be given, not empty"},
        {[&] { SetNetworkAction().GetCustomNetwork(); }, "SetNetworkAction has no customNetwork"},
    };
    for (auto const& [action, message] : cases) EXPECT_THAT(refusal_of(action), HasSubstr(message));
}

TEST_F(AgentActions, ReferToObjectsOfTheRightKind) {
    struct {
        Action action;
        char const* message;
    } const cases[] = {
        {std::make_shared<SeekAreaAction>(std::vector{portal}, false),
         "agentAction.areas.0 must be the identifier of a floor, connection or zone, not that of SomePortal"},
        {std::make_shared<SeekPortalAction>(std::vector{portal, hall}, false), "agentAction.portals.1 must be"},
        {std::make_shared<SeekProcessStartAction>(std::vector{portal}, false), "a server or dispatch"},
        {std::make_shared<SeekZoneAction>(hall), "the identifier of a zone"},
        {std::make_shared<FollowSignAction>(std::vector{zone}), "that routes lead over"},
        {std::make_shared<NamedAction>(token), "the identifier of an agent action object"},
        {std::make_shared<AddToTallyAction>(token, 1), "the identifier of a tally object"},
        {std::make_shared<AddTokensAction>(tally), "the identifier of a token"},
        {std::make_shared<SetAvatarAction>(profile), "the identifier of an avatar"},
        {std::make_shared<SetNetworkAction>(zone), "the identifier of a network"},
        {std::make_shared<WaitForeverAction>(WaitStyle::AssignedWaitSpace({zone})), "a wait space"},
        {std::make_shared<IfThenAction>(holds(tally), nothing()), "the identifier of a token"},
        {std::make_shared<RepeatForeverAction>(std::make_shared<AddTokensAction>(GlobalId::Generate())),
         "agentAction.repeatAction.tokens.0"},
        {nullptr, "AgentActionObject 'Named': agentAction must be given, not empty"},
    };
    auto const before = written(named->GetAgentAction());
    for (auto const& [action, message] : cases) {
        EXPECT_THAT(refusal_of([&, &given = action] { named->SetAgentAction(given); }), HasSubstr(message));
        EXPECT_EQ(written(named->GetAgentAction()), before);
    }

    named->SetAgentAction(std::make_shared<IfThenAction>(holds(token), std::make_shared<SeekZoneAction>(zone)));
    EXPECT_THAT(refusal_of([&] { document.remove(*document.find(token)); }), HasSubstr("Named"));
    EXPECT_THAT(refusal_of([&] { document.remove(*document.find(zone)); }), HasSubstr("Named"));
    named->SetAgentAction(nothing());
    document.remove(*document.find(zone));
    EXPECT_EQ(document.find(zone), nullptr);
}

TEST_F(AgentActions, NamedOnesNeverLeadBackToThemselves) {
    auto const second = create<AgentActionObjectState>("Second");
    auto const third = create<AgentActionObjectState>("Third");
    auto const call = [](std::shared_ptr<AgentActionObject> const& object) {
        return std::make_shared<ApplyActionAction>(std::make_shared<NamedAction>(object->GetId()));
    };
    named->SetAgentAction(call(second));
    second->SetAgentAction(call(third));
    for (auto const& object : {named, second, third}) {
        EXPECT_THAT(refusal_of([&] { third->SetAgentAction(call(object)); }),
                    HasSubstr("AgentActionObject 'Third': agentAction must be an action that does not lead back"));
    }
    EXPECT_EQ(third->GetAgentAction()->GetAgentActionTypeId(), static_cast<int>(AgentActionTypeId::DO_NOTHING));

    // Twice the same one is no way back. A file with one is refused.
    auto const twice = std::make_shared<ListAction>(Actions{call(third), call(third)}, ListActionAssignment::IN_ORDER);
    second->SetAgentAction(twice);
    state_of<AgentActionObjectState>(*third).action = call(named);
    EXPECT_THAT(refusal_of([&] { from_text(to_text(document), kinds_with_actions()); }), HasSubstr("lead back"));
}

TEST_F(AgentActions, AnObjectKeepsACopyAndOthersShare) {
    auto const style = std::make_shared<AssignedWaitSpaceWaitStyle>(std::vector<GlobalId>{});
    auto const wait = std::make_shared<WaitForDurationAction>(constant(5), style);
    RepeatForeverAction const repeat(wait);
    auto const copy = std::make_shared<RepeatForeverAction>(repeat);
    named->SetAgentAction(std::make_shared<ApplyActionAction>(wait));
    wait->SetDurationInSeconds(6);
    style->SetFallbackWaitStyleSpreadOut();

    auto const seconds_in = [](Action const& held) {
        auto const found = std::dynamic_pointer_cast<WaitForDurationAction>(held);
        return found ? found->GetDurationDistribution()->GetMean() : -1;
    };
    EXPECT_EQ(seconds_in(copy->GetRepeatAction()), 5);
    auto const kept = named->GetAgentAction();
    EXPECT_EQ(seconds_in(kept->GetChildAction(0)), 5);
    std::dynamic_pointer_cast<WaitForDurationAction>(kept->GetChildAction(0))->SetDurationInSeconds(7);
    EXPECT_EQ(seconds_in(named->GetAgentAction()->GetChildAction(0)), 5);
    EXPECT_EQ(wait->GetWaitStyle(), style);
}

}  // namespace
}  // namespace pedflux::engine
