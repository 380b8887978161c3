#include "tests/engine/simulation/rooms.h"

#include <pedflux/tasks.h>

#include <malloc.h>

namespace pedflux {
namespace {

/// Bytes of the heap that are in use.
std::size_t heap() { return mallinfo2().uordblks; }

TEST(Orders, AHundredThousandFillNoMemoryAndLeaveTheOthersAlone) {
    Rooms const rooms;
    rooms.journey("Walk", rooms.west, rooms.east, 2, rooms.steady);
    auto const simulation = rooms.simulate();
    step_to(*simulation, 5);
    auto const agents = simulation->GetAllAgents();
    ASSERT_EQ(agents.size(), 2U);
    agents[0]->AddTaskAsActive(std::make_shared<SeekPortalTask>(rooms.north));
    agents[0]->AddTaskAsLast(std::make_shared<WaitForDurationTask>(9, WaitStyle::StandStill()));
    auto const before = heap();
    for (int i = 1; i <= 100'000; ++i) {
        agents[1]->ClearTasks();
        agents[1]->AddTaskAsActive(std::make_shared<WaitForDurationTask>(i, WaitStyle::StandStill()));
    }
    EXPECT_LT(heap(), before + 2'000'000) << "an order takes more than 200 bytes";
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
