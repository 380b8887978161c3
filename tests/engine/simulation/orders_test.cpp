#include "tests/engine/allocations.h"
#include "tests/engine/simulation/rooms.h"

#include <pedflux/tasks.h>

namespace pedflux {
namespace {

TEST(Orders, AHundredThousandFillNoMemoryAndLeaveTheOthersAlone) {
    Rooms const rooms;
    rooms.journey("Walk", rooms.west, rooms.east, 2, rooms.steady);
    auto const simulation = rooms.simulate();
    step_to(*simulation, 5);
    auto const agents = simulation->GetAllAgents();
    ASSERT_EQ(agents.size(), 2U);
    agents[0]->AddTaskAsActive(std::make_shared<SeekPortalTask>(rooms.north));
    agents[0]->AddTaskAsLast(std::make_shared<WaitForDurationTask>(9, WaitStyle::StandStill()));
    auto const give_orders = [&] {
        for (int i = 1; i <= 100'000; ++i) {
            agents[1]->ClearTasks();
            agents[1]->AddTaskAsActive(std::make_shared<WaitForDurationTask>(i, WaitStyle::StandStill()));
        }
        return live_bytes();
    };
    // Lists grow to the size that they need and are tidied now and then; the same orders again find room in them.
    auto const before = live_bytes();
    auto const once = give_orders();
    auto const twice = give_orders();
    EXPECT_GT(before, 0U) << "nothing is counted";
    EXPECT_LT(once, before + 1'000'000);
    EXPECT_LT(twice, once + 100'000) << "an order that is over leaves a byte or more";
    agents[1]->ClearTasks();
    agents[1]->AddTaskAsActive(std::make_shared<SeekPortalTask>(rooms.west));
    EXPECT_TRUE(agents[0]->GetCurrentTaskGoalIds().front().InternalEquals(rooms.north));
    EXPECT_TRUE(agents[1]->GetCurrentTaskGoalIds().front().InternalEquals(rooms.west));
    step_to(*simulation, 12);
    EXPECT_LT(agents[1]->GetPosition().GetX(), 1);
    EXPECT_NEAR(agents[0]->GetPosition().GetX(), 12, 1.5);
    step_to(*simulation, 20);
    EXPECT_EQ(agents[0]->GetCurrentTaskType(), TaskType::WAIT_FOR_DURATION) << "that was given before";
}

}  // namespace
}  // namespace pedflux
