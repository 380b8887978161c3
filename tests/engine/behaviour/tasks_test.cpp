#include "engine/behaviour/actions/task_order.h"
#include "tests/engine/behaviour/agent_rules.h"
#include "tests/engine/refusal.h"

#include <pedflux/tasks.h>

namespace pedflux::engine {
namespace {

using ::testing::HasSubstr;

TEST(Tasks, AreRefusedWithoutGoalStyleOrSense) {
    auto const goal = GlobalId::Generate();
    auto const standing = WaitStyle::StandStill();
    struct {
        std::function<void()> action;
        char const* message;
    } const cases[] = {
        {[&] { SeekAreaTask(std::vector<GlobalId>{}); }, "SeekAreaTask: there is no goal"},
        {[&] {
             SeekPortalTask({goal, goal}, true);
         },
         "SeekPortalTask: goal 1 is"},
        {[&] { FollowSignTask{GlobalId::INVALID}; }, "FollowSignTask: goal 0 is the invalid identifier"},
        {[&] { WaitForDurationTask(-1, standing); }, "WaitForDurationTask: seconds must be at least 0, not -1"},
        {[&] { WaitUntilTimeTask(-7, standing); }, "WaitUntilTimeTask: seconds must be at least 0, not -7"},
        {[&] { WaitForeverTask(std::shared_ptr<WaitStyle>()); }, "WaitForeverTask: the wait style must be given"},
    };
    for (auto const& [action, message] : cases) EXPECT_THAT(refusal_of(action), HasSubstr(message));
}

TEST(Tasks, HoldWhatTheyWereGivenAndNeverChange) {
    auto const first = GlobalId::Generate();
    auto const second = GlobalId::Generate();
    struct {
        std::shared_ptr<Task> task;
        TaskKind kind;
        std::size_t goals;
        bool erases;
        int seconds;
    } const cases[] = {
        {std::make_shared<ExitTask>(), TaskKind::EXIT, 0, false, 0},
        {std::make_shared<FollowSignTask>(first), TaskKind::FOLLOW_SIGN, 1, false, 0},
        {std::make_shared<FollowSignTask>(std::vector{second, first}, true), TaskKind::FOLLOW_SIGN, 2, true, 0},
        {std::make_shared<SeekAreaTask>(first, true), TaskKind::SEEK_AREA, 1, true, 0},
        {std::make_shared<SeekAreaTask>(std::vector{second, first}), TaskKind::SEEK_AREA, 2, false, 0},
        {std::make_shared<SeekPortalTask>(std::vector{first}, true), TaskKind::SEEK_PORTAL, 1, true, 0},
        {std::make_shared<SeekProcessStartTask>(first, true), TaskKind::SEEK_PROCESS_START, 1, true, 0},
        {std::make_shared<WaitForDurationTask>(5, WaitStyle::StandStill()), TaskKind::WAIT_FOR_DURATION, 0, false, 5},
        {std::make_shared<WaitForeverTask>(WaitStyle::StandStill()), TaskKind::WAIT_FOREVER, 0, false, 0},
        {std::make_shared<WaitUntilTimeTask>(9, WaitStyle::StandStill()), TaskKind::WAIT_UNTIL_TIME, 0, false, 9},
    };
    for (auto const& expected : cases) {
        auto const& order = order_of(*expected.task);
        EXPECT_EQ(order.kind, expected.kind);
        ASSERT_EQ(order.goals.size(), expected.goals);
        EXPECT_EQ(order.erase_route_history, expected.erases);
        EXPECT_EQ(order.seconds, expected.seconds);
        if (expected.goals > 0) {
            EXPECT_TRUE(GlobalId(order.goals.back()).InternalEquals(first));
        }
        EXPECT_EQ(order.style != nullptr, std::dynamic_pointer_cast<WaitTask>(expected.task) != nullptr);
    }

    auto const style = std::make_shared<AssignedWaitSpaceWaitStyle>(std::vector{first});
    WaitForeverTask task(style);
    style->SetFallbackWaitStyleSpreadOut();
    auto const fallback = [&] {
        return std::dynamic_pointer_cast<AssignedWaitSpaceWaitStyle>(task.GetWaitStyle())->GetFallbackWaitStyleId();
    };
    EXPECT_EQ(fallback(), WaitStyleTypeId::STAND_STILL);
    std::dynamic_pointer_cast<AssignedWaitSpaceWaitStyle>(task.GetWaitStyle())->SetFallbackWaitStyleSpreadOut();
    EXPECT_EQ(fallback(), WaitStyleTypeId::STAND_STILL);
}

}  // namespace
}  // namespace pedflux::engine
