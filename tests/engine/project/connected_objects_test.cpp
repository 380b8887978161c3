#include "tests/engine/project/building.h"

#include <pedflux/elevators.h>
#include <pedflux/servers.h>

#include <string>
#include <vector>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Two halls with a corridor between them, and a gallery 3 m above the east one:
///
///     door |  west  |=corridor=|  east  |--stair up to the gallery
class Building : public ::testing::Test {
  protected:
    ~Building() override { project->Close(); }

    using Ids = std::vector<GlobalId>;
    std::vector<std::string> names(Ids const& ids) const {
        std::vector<std::string> found;
        for (auto const& id : ids) found.push_back(project->GetObject(id)->GetName());
        return found;
    }
    auto from(std::string const& name) const {
        return names(project->GetNetworkObjectsConnectedFrom(project->GetObject(name)->GetId()));
    }
    auto to(std::string const& name) const {
        return names(project->GetNetworkObjectsConnectedTo(project->GetObject(name)->GetId()));
    }
    auto to_or_from(std::string const& name) const {
        return names(project->GetNetworkObjectsConnectedToOrFrom(project->GetObject(name)->GetId()));
    }

    std::shared_ptr<Project> project = Project::Create();
    std::shared_ptr<Floor> west = project->CreateFloor("West", slab(0, 0, 10, 10));
    std::shared_ptr<Floor> east = project->CreateFloor("East", slab(12, 0, 10, 10));
    std::shared_ptr<Floor> gallery = project->CreateFloor("Gallery", slab(16, 0, 6, 10, 3));
    std::shared_ptr<Link> corridor = project->CreateLink("Corridor", slab(10, 4, 2, 1.5));
    std::shared_ptr<Stair> stair = project->CreateStair("Stair", MeshGeometry::CreateRamp({13, 0, 8}, {16, 3, 8}, 1.5));
    std::shared_ptr<Portal> door =
        project->CreatePortal("Door", MeshGeometry::CreateVerticalRectangle({0, 0, 4}, {0, 2, 6}));
};

TEST_F(Building, TellsWhatTouchesWhat) {
    EXPECT_THAT(to_or_from("West"), ElementsAre("Corridor", "Door"));
    EXPECT_THAT(to_or_from("East"), ElementsAre("Corridor", "Stair"));
    EXPECT_THAT(to_or_from("Gallery"), ElementsAre("Stair"));
    EXPECT_THAT(to_or_from("Corridor"), ElementsAre("West", "East"));
    EXPECT_THAT(to_or_from("Stair"), ElementsAre("East", "Gallery"));
    EXPECT_THAT(to_or_from("Door"), ElementsAre("West"));
}

TEST_F(Building, FollowsTheDirectionOfConnections) {
    stair->SetDirection(ConnectionObjectDirection::BALL_TO_BOX);
    EXPECT_THAT(from("East"), ElementsAre("Corridor", "Stair"));
    EXPECT_THAT(to("East"), ElementsAre("Corridor"));
    EXPECT_THAT(from("Stair"), ElementsAre("Gallery"));
    EXPECT_THAT(to("Stair"), ElementsAre("East"));
    EXPECT_THAT(from("Gallery"), IsEmpty());
    EXPECT_THAT(to_or_from("Stair"), ElementsAre("East", "Gallery"));
    stair->SetDirection(ConnectionObjectDirection::BOX_TO_BALL);
    EXPECT_THAT(from("Gallery"), ElementsAre("Stair"));
    EXPECT_THAT(from("Stair"), ElementsAre("East"));
    auto const escalator = project->CreateEscalator("Escalator", MeshGeometry::CreateRamp({13, 0, 2}, {16, 3, 2}, 1));
    EXPECT_THAT(from("Escalator"), ElementsAre("Gallery"));
    EXPECT_THAT(to("Escalator"), ElementsAre("East"));
}

TEST_F(Building, ChangesWithTheGeometryAndWhatIsEnabled) {
    corridor->Translate({0, 0, 40});
    EXPECT_THAT(to_or_from("Corridor"), IsEmpty());
    corridor->Translate({0, 0, -40});
    corridor->Translate({0, 0.25, 0});
    EXPECT_THAT(to_or_from("Corridor"), ElementsAre("West", "East"));
    corridor->Translate({0, 0.25, 0});
    EXPECT_THAT(to_or_from("Corridor"), IsEmpty());
    stair->Disable();
    EXPECT_THAT(to_or_from("Gallery"), IsEmpty());
    EXPECT_THAT(to_or_from("Stair"), IsEmpty());
    gallery->Disable();
    stair->Enable();
    EXPECT_THAT(to_or_from("Stair"), ElementsAre("East"));
}

TEST_F(Building, PutsPortalsAndServersOnTheNearestFloor) {
    auto const shape = MeshGeometry::CreateVerticalRectangle({22, 3, 4}, {22, 5, 6});
    project->CreatePortal("Upstairs", shape);
    project->CreateServer("Desk", PolylineGeometry::Create({{18, 0, 5}, {18, 0, 2}}));
    project->CreateServer("Outside", PolylineGeometry::Create({{100, 0, 5}, {18, 0, 5}}));
    EXPECT_THAT(to("Upstairs"), ElementsAre("Gallery"));
    EXPECT_THAT(from("Desk"), ElementsAre("East"));
    EXPECT_THAT(to_or_from("Outside"), IsEmpty());
    EXPECT_THAT(from("East"), ElementsAre("Corridor", "Stair", "Desk"));
}

TEST_F(Building, RefusesWhatIsNoNetworkObject) {
    auto const zone = project->CreateZone("Zone", {west->GetId()});
    EXPECT_REFUSED(project->GetNetworkObjectsConnectedFrom(zone->GetId()), "not that of Zone 'Zone'");
    EXPECT_REFUSED(project->GetNetworkObjectsConnectedTo(GlobalId::Generate()), "which no object of the project has");
    EXPECT_REFUSED(project->GetNetworkObjectsConnectedToOrFrom(GlobalId()), "the invalid identifier");
}

TEST_F(Building, ElevatorsLeadFromWhereTheyAreBoardedToWhereTheyAreLeft) {
    auto const elevator = project->CreateElevator("Lift", slab(30, 0, 2, 2));
    EXPECT_THAT(to_or_from("Lift"), IsEmpty());
    elevator->SetBallBoardingFloors({east->GetId()});
    elevator->SetBoxAlightingFloors({gallery->GetId(), west->GetId()});
    EXPECT_THAT(to("Lift"), ElementsAre("East"));
    EXPECT_THAT(from("Lift"), ElementsAre("West", "Gallery"));
    EXPECT_THAT(from("Gallery"), ElementsAre("Stair"));
}

TEST_F(Building, PathsLeadFromFloorToFloor) {
    project->CreatePath("Lane", PolylineGeometry::Create({{5, 0, 5}, {11, 0, 5}, {14, 0, 5}}));
    EXPECT_THAT(to_or_from("Lane"), ElementsAre("West", "East"));
}

}  // namespace
}  // namespace pedflux::engine
