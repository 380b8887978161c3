#include "tests/engine/simulation/scene.h"

#include <pedflux/elevators.h>

namespace pedflux {
namespace {

using testing::HasSubstr;

TEST(ElevatorCars, AreFoundAndPlannedWhileNobodyRides) {
    Scene const scene;
    auto const hall = scene.room("Hall", 0, 0, 20, 4)->GetId();
    auto const gallery = scene.room("Gallery", 0, 0, 20, 4, 5)->GetId();
    auto const exit = scene.portal("Exit", 20, 0, 20, 4)->GetId();
    scene.journey("Out", hall, exit, 1);
    auto const box = MeshGeometry::CreateBox({2, 0, 1}, {4, 8, 3});
    auto const lift = scene.project->CreateElevator("Lift", box);
    lift->SetTwoWayFloors({hall}, {gallery});
    lift->SetRestFloor(gallery);
    scene.project->CreateElevator("Out of order", box)->SetEnabled(false);
    auto const simulation = scene.simulate();
    ASSERT_EQ(simulation->GetIssues().size(), 1U);
    EXPECT_EQ(simulation->GetIssues().front().GetTitle(), "Elevators stand still");

    auto const car = simulation->GetElevatorCar("Lift");
    EXPECT_TRUE(car->GetId().InternalEquals(lift->GetId()));
    EXPECT_EQ(car->GetRestStop().GetString(), "Gallery");
    car->AddStopToServiceList(car->GetStopForFloor(hall));
    EXPECT_EQ(simulation->GetElevatorCar(lift->GetId())->GetServiceList().size(), 1U) << "it is one car";
    lift->SetRestFloor(hall);
    EXPECT_EQ(car->GetRestStop().GetString(), "Gallery") << "the simulation keeps the project as it was";
    EXPECT_THAT(refusal_of([&] { simulation->GetElevatorCar("Out of order"); }),
                HasSubstr("'Out of order' is no enabled elevator"));
    EXPECT_THAT(refusal_of([&] { simulation->GetElevatorCar(exit); }), HasSubstr("is no enabled elevator"));

    auto const agent = simulation->CreateAgents().front();
    EXPECT_FALSE(agent->HasElevatorTripDestinationStop());
    EXPECT_THAT(refusal_of([&] { agent->GetElevatorTripDestinationStop(); }), HasSubstr("neither waits for"));
    scene.run_until_empty(*simulation, 60);
    EXPECT_THAT(refusal_of([&] { agent->HasElevatorTripDestinationStop(); }), HasSubstr("Agent 0"));
}

}  // namespace
}  // namespace pedflux
