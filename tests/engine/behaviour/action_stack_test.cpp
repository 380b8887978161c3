#include "engine/behaviour/actions/action_stack.h"

#include "engine/behaviour/actions/agent_action_states.h"
#include "engine/behaviour/actions/task_order.h"
#include "tests/engine/behaviour/agent_rules.h"

#include <cmath>
#include <set>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Action = NodePointerOf<AgentAction>;
using Actions = NodeList<AgentAction>;
using Type = AgentActionTypeId;

/// A world of one agent, which holds tokens and arrives when the test says so.
struct FakeScene : ActionScene {
    explicit FakeScene(ActionProgram const& compiled) : plan(compiled) {}

    double now() const override { return clock; }
    /// The orders of these tests are nothing but their actions.
    ActionProgram const& actions_of(OrderProgram const& order) const override {
        return reinterpret_cast<ActionProgram const&>(order);
    }
    bool put_test(int test) override {
        auto* const token = dynamic_cast<TokenTest*>(plan.tests[static_cast<std::size_t>(test)].get());
        return token != nullptr && tokens.contains(token->GetTokens().front().GetString());
    }
    std::optional<double> time_of(TimeInFrame const& reference) const override {
        if (reference.frame == TimeReferenceFrame::AFTER_EVENT_START) return std::nullopt;
        return reference.seconds;
    }
    bool pursue(ActionTask const&) override { return std::exchange(arrived, false); }
    void happen(ActionEffect, ActionNode const& node) override {
        happened.push_back(node.type);
        for (auto token : plan.objects_of(node)) {
            if (node.type == Type::ADD_TOKENS) tokens.insert(token.GetString());
            if (node.type == Type::CLEAR_TOKENS) tokens.erase(token.GetString());
        }
        tally += node.value;
    }

    ActionProgram const& plan;
    double clock = 0;
    bool arrived = false;
    std::set<std::string> tokens;
    std::vector<Type> happened;
    double tally = 0;
};

struct ActionStacks : AgentRules {
    ActionProgram plan;
    ActionStack stack;
    FakeScene scene{plan};
    ActionDraws draws{1, 7};

    std::shared_ptr<WaitStyle> standing = WaitStyle::StandStill();

    Action wait(int seconds) const {
        return std::make_shared<WaitForDurationAction>(Distribution::CreateConstant(seconds), standing);
    }
    Action count() const { return std::make_shared<AddToTallyAction>(token, 1); }
    Action go() const { return std::make_shared<SeekPortalAction>(std::vector{portal}, false); }
    std::shared_ptr<AgentTest> holds_token() const { return std::make_shared<TokenTest>(token); }
    static Action in_order(Actions const& actions) {
        return std::make_shared<ListAction>(actions, ListActionAssignment::IN_ORDER);
    }

    void begin(Action const& action) { start(stack, compile(plan, document, *action)); }
    /// What the agent does after a step; none when it has nothing to do.
    std::optional<Type> step(double seconds = 0) {
        scene.clock += seconds;
        auto const task = advance(plan, stack, draws, scene);
        if (!task) return std::nullopt;
        return plan.nodes[static_cast<std::size_t>(task->node)].type;
    }
    /// Steps of one second until the agent has nothing to do; at most 100 of them.
    int seconds_until_done() {
        for (int seconds = 0; seconds <= 100; ++seconds) {
            if (!step(seconds == 0 ? 0 : 1)) return seconds;
        }
        return -1;
    }
};

TEST_F(ActionStacks, KnowEveryKindOfAction) {
    auto const object = create<AgentActionObjectState>("Named");
    struct {
        Action action;
        int seconds;  ///< until the agent, who holds a token, has done it; -1: never
        std::vector<Type> happen;
    } const cases[] = {
        {std::make_shared<DoNothingAction>(), 0, {}},
        {std::make_shared<NamedAction>(object->GetId()), 0, {}},
        {std::make_shared<ExitSimulationAction>(), 0, {Type::EXIT_SIMULATION}},
        {std::make_shared<SetColorAction>(Color::RED), 0, {Type::SET_COLOR}},
        {std::make_shared<ClearColorAction>(), 0, {Type::CLEAR_COLOR}},
        {std::make_shared<SetAvatarAction>(token), 0, {Type::SET_AVATAR}},
        {std::make_shared<ClearAvatarAction>(), 0, {Type::CLEAR_AVATAR}},
        {std::make_shared<SetNetworkAction>(token), 0, {Type::SET_NETWORK}},
        {std::make_shared<ClearNetworkAction>(), 0, {Type::CLEAR_NETWORK}},
        {std::make_shared<ClearHistoryAction>(), 0, {Type::CLEAR_HISTORY}},
        {std::make_shared<ClearTokensAction>(exit), 0, {Type::CLEAR_TOKENS}},
        {wait(3), 3, {}},
        {wait(0), 0, {}},
        {std::make_shared<WaitForeverAction>(standing), -1, {}},
        {std::make_shared<WaitUntilTimeAction>(TimeReference::Absolute(4), standing), 4, {}},
        {std::make_shared<WaitUntilTimeAction>(TimeReference::AfterEventStart(journey, 0), standing), -1, {}},
        {std::make_shared<WaitWhileTestTrueAction>(holds_token(), standing), -1, {}},
        {std::make_shared<WaitWhileTestTrueAction>(std::make_shared<TokenTest>(exit), standing), 0, {}},
        {in_order({wait(2), count(), wait(1)}), 3, {Type::ADD_TO_TALLY}},
        {in_order({}), 0, {}},
        {std::make_shared<ApplyActionAction>(wait(2)), 2, {}},
        {std::make_shared<IfThenAction>(holds_token(), wait(2)), 2, {}},
        {std::make_shared<IfThenAction>(std::make_shared<TokenTest>(exit), wait(2)), 0, {}},
        {std::make_shared<IfThenElseAction>(std::make_shared<TokenTest>(exit), wait(2), wait(1)), 1, {}},
        {std::make_shared<ChooseFromSetAction>(Actions{wait(9), wait(2)}, std::vector{0.0, 1.0}), 2, {}},
        {std::make_shared<ChooseFromSetAction>(Actions{wait(9)}, std::vector{0.0}), 0, {}},
        {std::make_shared<DoUntilDurationEndsAction>(wait(9), Distribution::CreateConstant(4)), 4, {}},
        {std::make_shared<DoUntilDurationEndsAction>(wait(1), Distribution::CreateConstant(4)), 1, {}},
        {std::make_shared<DoUntilDurationEndsAction>(wait(1), Distribution::CreateConstant(4), standing), 4, {}},
        {std::make_shared<DoUntilTimeAction>(wait(9), TimeReference::Absolute(5)), 5, {}},
        {std::make_shared<DoUntilTimeAction>(count(), TimeReference::Absolute(0)), 0, {}},
        {std::make_shared<DoUntilTestFailsAction>(in_order({wait(2), std::make_shared<ClearTokensAction>(token)}),
                                                  holds_token(), standing),
         2,
         {Type::CLEAR_TOKENS}},
        {std::make_shared<RepeatForCountAction>(wait(2), Distribution::CreateConstant(3)), 6, {}},
        {std::make_shared<RepeatForCountAction>(wait(2), Distribution::CreateConstant(0)), 0, {}},
        {std::make_shared<RepeatForDurationAction>(wait(2), Distribution::CreateConstant(5)), 6, {}},
        {std::make_shared<RepeatForeverAction>(wait(2)), -1, {}},
        {std::make_shared<RepeatUntilTimeAction>(wait(3), TimeReference::Absolute(4)), 6, {}},
        {std::make_shared<RepeatWhileTestTrueAction>(in_order({wait(2), std::make_shared<ClearTokensAction>(token)}),
                                                     holds_token()),
         2,
         {Type::CLEAR_TOKENS}},
        {std::make_shared<SeekPortalAction>(std::vector<GlobalId>{}, false), 0, {}},
    };
    for (auto const& [action, seconds, happen] : cases) {
        stack = {};
        scene.clock = 0;
        scene.happened.clear();
        scene.tokens = {GlobalId(token).GetString()};
        begin(action);
        EXPECT_EQ(seconds_until_done(), seconds) << written(action);
        EXPECT_EQ(scene.happened, happen) << written(action);
    }
}

TEST_F(ActionStacks, GoFromGoalToGoal) {
    auto sign = std::make_shared<FollowSignAction>(std::vector{portal});
    sign->SetRouteObjectSequence({portal, link, exit});
    begin(in_order({sign, std::make_shared<SeekOriginAction>(true)}));
    for (int goal = 0; goal < 3; ++goal) {
        auto const task = advance(plan, stack, draws, scene);
        ASSERT_TRUE(task);
        EXPECT_EQ(task->goal, goal);
        EXPECT_EQ(advance(plan, stack, draws, scene), task);
        scene.arrived = true;
    }
    EXPECT_EQ(step(), Type::SEEK_ORIGIN);
    EXPECT_EQ(step(), Type::SEEK_ORIGIN);
    scene.arrived = true;
    EXPECT_EQ(step(), std::nullopt);
}

TEST_F(ActionStacks, TakeUpAgainWhatWasInterrupted) {
    begin(in_order({go(), wait(10)}));
    EXPECT_EQ(step(), Type::SEEK_PORTAL);
    begin(wait(5));
    EXPECT_EQ(step(), Type::WAIT_FOR_DURATION);
    EXPECT_EQ(step(4), Type::WAIT_FOR_DURATION);
    EXPECT_EQ(step(1), Type::SEEK_PORTAL);
    start_last(stack, compile(plan, document, *std::make_shared<SeekOriginAction>(false)));
    scene.arrived = true;
    EXPECT_EQ(step(), Type::WAIT_FOR_DURATION);
    EXPECT_EQ(step(10), Type::SEEK_ORIGIN);
}

TEST_F(ActionStacks, BreakOffOnlyWhatTheyLedTo) {
    begin(in_order(
        {std::make_shared<DoUntilDurationEndsAction>(in_order({go(), count()}), Distribution::CreateConstant(5)),
         std::make_shared<SeekOriginAction>(false)}));
    EXPECT_EQ(step(), Type::SEEK_PORTAL);
    begin(wait(8));
    EXPECT_EQ(step(), Type::WAIT_FOR_DURATION);
    EXPECT_EQ(step(6), Type::WAIT_FOR_DURATION);
    EXPECT_EQ(step(2), Type::SEEK_ORIGIN);
    EXPECT_THAT(scene.happened, IsEmpty());
}

TEST_F(ActionStacks, LeavingAndClearingEndEverything) {
    for (Action const& end : Actions{std::make_shared<ExitSimulationAction>(), std::make_shared<ClearTasksAction>()}) {
        stack = {};
        scene.happened.clear();
        begin(wait(10));
        begin(std::make_shared<RepeatForeverAction>(in_order({end, count()})));
        EXPECT_EQ(step(), std::nullopt);
        EXPECT_THAT(scene.happened, SizeIs(1));
        EXPECT_THAT(stack.frames, IsEmpty());
    }
}

TEST_F(ActionStacks, EndlessActionsThatTakeNoTimeAreDoneOnceInAStep) {
    begin(std::make_shared<RepeatForeverAction>(count()));
    for (int turn = 1; turn <= 3; ++turn) {
        EXPECT_EQ(step(), Type::REPEAT_FOREVER);
        EXPECT_EQ(scene.tally, turn);
    }
    stack = {};
    scene.tally = 0;
    begin(std::make_shared<RepeatForCountAction>(count(), Distribution::CreateConstant(3 * MOST_AT_ONCE)));
    int steps = 1;
    while (step() && steps < 100) ++steps;
    EXPECT_EQ(scene.tally, 3 * MOST_AT_ONCE);
    EXPECT_LE(steps, 8);
    EXPECT_GT(steps, 1);
}

TEST_F(ActionStacks, RandomOrdersDoEachActionOnce) {
    Actions const actions{std::make_shared<SetColorAction>(), std::make_shared<ClearColorAction>(),
                          std::make_shared<ClearAvatarAction>(), std::make_shared<ClearHistoryAction>()};
    auto const root =
        compile(plan, document, *std::make_shared<ListAction>(actions, ListActionAssignment::IN_RANDOM_ORDER));
    std::set<std::vector<Type>> orders;
    for (draws.agent = 0; draws.agent < 500; ++draws.agent) {
        stack = {};
        scene.happened.clear();
        start(stack, root);
        EXPECT_EQ(step(), std::nullopt);
        orders.insert(scene.happened);
        EXPECT_THAT(std::set<Type>(scene.happened.begin(), scene.happened.end()), SizeIs(4));
    }
    EXPECT_THAT(orders, SizeIs(24));
}

TEST_F(ActionStacks, ChoicesFollowTheWeights) {
    auto const root = compile(plan, document, SeekPortalAction({portal, exit}, {1, 3}, false));
    auto const goals_of = [&](std::uint64_t seed) {
        std::vector<int> goals;
        for (std::uint64_t agent = 0; agent < 4000; ++agent) {
            ActionStack fresh;
            start(fresh, root);
            goals.push_back(advance(plan, fresh, {seed, agent}, scene)->goal);
        }
        return goals;
    };
    auto const goals = goals_of(1);
    // Four standard errors of a share of 3/4 among 4000.
    auto const share = static_cast<double>(std::ranges::count(goals, 1)) / 4000.0;
    EXPECT_NEAR(share, 0.75, 4 * std::sqrt(0.75 * 0.25 / 4000));
    EXPECT_EQ(goals_of(1), goals);
    EXPECT_NE(goals_of(2), goals);
}

TEST_F(ActionStacks, OrdersAreActionsOfTheirKind) {
    struct {
        std::shared_ptr<Task> task;
        Type type;
        int goal;
    } const cases[] = {
        {std::make_shared<FollowSignTask>(std::vector{portal, link}), Type::FOLLOW_SIGN, 0},
        {std::make_shared<SeekAreaTask>(std::vector{portal, link}), Type::SEEK_AREA, ANY_GOAL},
        {std::make_shared<SeekPortalTask>(portal, true), Type::SEEK_PORTAL, ANY_GOAL},
        {std::make_shared<SeekProcessStartTask>(server), Type::SEEK_PROCESS_START, ANY_GOAL},
        {std::make_shared<WaitForeverTask>(standing), Type::WAIT_FOREVER, ANY_GOAL},
        {std::make_shared<WaitForDurationTask>(3, standing), Type::WAIT_FOR_DURATION, ANY_GOAL},
        {std::make_shared<WaitUntilTimeTask>(3, standing), Type::WAIT_UNTIL_TIME, ANY_GOAL},
    };
    for (auto const& [task, type, goal] : cases) {
        stack = {};
        scene.clock = 0;
        start(stack, compile(plan, order_of(*task)));
        auto const active = advance(plan, stack, draws, scene);
        ASSERT_TRUE(active);
        auto const& node = plan.nodes[static_cast<std::size_t>(active->node)];
        EXPECT_EQ(node.type, type);
        EXPECT_EQ(active->goal, goal);
        EXPECT_EQ(node.erase_route_history, order_of(*task).erase_route_history);
        bool const is_timed = type == Type::WAIT_FOR_DURATION || type == Type::WAIT_UNTIL_TIME;
        EXPECT_EQ(step(3) == std::nullopt, is_timed);
    }
    stack = {};
    start(stack, compile(plan, order_of(ExitTask())));
    EXPECT_EQ(step(), std::nullopt);
    EXPECT_THAT(scene.happened, ElementsAre(Type::EXIT_SIMULATION));
}

TEST_F(ActionStacks, OrdersHaveActionsOfTheirOwnForAsLongAsTheyLast) {
    auto const order = [](Task const& task) {
        auto const program = std::make_shared<ActionProgram>();
        EXPECT_EQ(compile(*program, order_of(task)), 0);
        return std::shared_ptr<OrderProgram const>(program, reinterpret_cast<OrderProgram const*>(program.get()));
    };
    auto first = order(WaitForDurationTask(3, standing));
    auto second = order(WaitUntilTimeTask(8, standing));
    std::weak_ptr<OrderProgram const> const lasting_first = first;
    std::weak_ptr<OrderProgram const> const lasting_second = second;
    begin(wait(2));
    start(stack, 0, std::move(first));
    start_last(stack, 0, std::move(second));

    auto task = advance(plan, stack, draws, scene);
    ASSERT_TRUE(task);
    EXPECT_EQ(task->order, lasting_first.lock());
    auto const former = *std::exchange(task, std::nullopt);
    scene.clock = 3;
    task = advance(plan, stack, draws, scene);
    ASSERT_TRUE(task);
    EXPECT_EQ(task->order, nullptr) << "the project's action goes on";
    EXPECT_NE(*task, former);
    scene.clock = 5;
    task = advance(plan, stack, draws, scene);
    ASSERT_TRUE(task);
    EXPECT_EQ(task->order, lasting_second.lock());
    EXPECT_EQ(task->node, former.node);
    EXPECT_NE(*task, former) << "orders are told apart";
    scene.clock = 8;
    task = advance(plan, stack, draws, scene);
    EXPECT_FALSE(task);
    EXPECT_TRUE(lasting_second.expired()) << "an order that is done stays in memory";

    start(stack, 0, order(ExitTask()));
    EXPECT_EQ(step(), std::nullopt);
    EXPECT_THAT(scene.happened, ElementsAre(Type::EXIT_SIMULATION));
}

TEST_F(ActionStacks, NamedActionsAreCompiledOnce) {
    auto const object = create<AgentActionObjectState>("Named");
    object->SetAgentAction(wait(2));
    NamedAction const named(object->GetId());
    begin(in_order({std::make_shared<NamedAction>(named), std::make_shared<NamedAction>(named)}));
    EXPECT_THAT(plan.distributions, SizeIs(1));
    EXPECT_EQ(seconds_until_done(), 4);
    object->SetAgentAction(wait(5));
    begin(std::make_shared<NamedAction>(named));
    EXPECT_EQ(seconds_until_done(), 2) << "a plan does not follow later changes";
}

}  // namespace
}  // namespace pedflux::engine
