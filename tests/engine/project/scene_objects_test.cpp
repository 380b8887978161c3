#include "tests/engine/project/building.h"

#include <pedflux/agent_actions.h>
#include <pedflux/agent_tests.h>
#include <pedflux/servers.h>
#include <pedflux/wait_styles.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

class SceneObjects : public ::testing::Test {
  protected:
    ~SceneObjects() override { project->Close(); }

    std::shared_ptr<Project> project = Project::Create();
    std::shared_ptr<MeshGeometry> ramp = MeshGeometry::CreateRamp({0, 0, 0}, {4, 3, 0}, 1);
    std::shared_ptr<PolylineGeometry> line = PolylineGeometry::Create({{0, 0, 0}, {3, 0, 0}, {3, 0, 1}});
    std::shared_ptr<Server> desk = project->CreateServer("Desk", line);
    std::shared_ptr<Path> path = project->CreatePath("Lane", line);
    std::shared_ptr<Cordon> cordon =
        project->CreateCordon("Gate line", MeshGeometry::CreateVerticalRectangle({0, 0, 0}, {2, 1, 0}));
    std::shared_ptr<Escalator> escalator = project->CreateEscalator("Up", ramp);
};

TEST_F(SceneObjects, RefuseWhatMakesNoSenseAndSayWhatWouldBeRight) {
    auto const distance = Distribution::CreateConstant(0.5);
    auto const everybody = std::make_shared<AlwaysTrueTest>();
    struct {
        std::function<void()> run;
        std::string message;
    } const cases[] = {
        {[&] { project->CreatePath("Second", nullptr); }, "Path 'Second': geometry must be a polyline, not empty"},
        {[&] { path->SetGeometry(ramp); }, "Path 'Lane': geometry must be a polyline, not another kind of geometry"},
        {[&] { escalator->SetGeometry(line); }, "Escalator 'Up': geometry must be a mesh, not another kind"},
        {[&] { desk->SetGeometry(ramp); }, "Server 'Desk': geometry must be a polyline, not another kind"},
        {[&] {
             project->CreateServer("Second", std::vector<Vec3d>{{0, 0, 0}});
         },
         "polyline has 1 vertices; it must have at least two"},
        {[&] { desk->GetCapacityLimit(); }, "Server 'Desk' has no capacityLimit"},
        {[&] { desk->IsAutoCapacityLimit(); }, "Server 'Desk' has no capacityLimit"},
        {[&] { desk->SetFixedCapacityLimit(0); }, "Server 'Desk': capacityLimit.limit must be at least 1, not 0"},
        {[&] { desk->SetAutoCapacityLimit(0); },
         "Server 'Desk': capacityLimit.spacing must be at least 0.1 and at most 100 m, not 0"},
        {[&] { desk->SetAutoCapacityLimit(NOT_A_NUMBER); }, "not nan"},
        {[&] { desk->GetContactTime(); }, "Server 'Desk' has no contactTime"},
        {[&] { desk->SetContactTime(nullptr); }, "Server 'Desk': contactTime must be given, not empty"},
        {[&] { desk->SetContactTime(Distribution::CreateConstant(-1)); }, "a distribution of values at least 0 s"},
        {[&] { desk->GetAccessRequiredTest(); }, "Server 'Desk' has no accessRequiredTest"},
        {[&] { desk->SetAccessPreferredTest(nullptr); }, "Server 'Desk': accessPreferredTest must be given, not empty"},
        {[&] {
             desk->SetContactTimeRules({everybody, everybody}, {distance});
         },
         "Server 'Desk': contactTimeRules: tests number 2, durations 1"},
        {[&] {
             desk->SetContactTimeRules({everybody, nullptr}, {distance, distance});
         },
         "Server 'Desk': contactTimeRules.1.test must be given, not empty"},
        {[&] { desk->SetContactTimeRules({everybody}, {nullptr}); }, "contactTimeRules.0.duration must be given"},
        {[&] { desk->SetAccessRequiredTest(std::make_shared<InAreaTest>(std::vector{GlobalId::Generate()})); },
         "which no object of the project has"},
        {[&] { desk->SetProcessedAction(std::make_shared<SeekPortalAction>(std::vector{path->GetId()}, false)); },
         "Server 'Desk': processedAction.portals"},
        {[&] { path->GetLocalAgentQueueSpacingType(); }, "Path 'Lane' has no localAgentQueueSpacing"},
        {[&] { path->SetLocalAgentQueueSpacingByDistance(nullptr); },
         "Path 'Lane': localAgentQueueSpacing.distance must be given for spacing by DISTANCE, not empty"},
        {[&] { path->SetLocalAgentQueueSpacingByDistance(Distribution::CreateConstant(-1)); },
         "localAgentQueueSpacing.distance must be a distribution of values at least 0 m"},
        {[&] {
             path->SetLocalAgentQueueSpacingByMaxOfDistanceAndPersonalSpace(distance,
                                                                            static_cast<PersonalSpaceSelection>(9));
         },
         "personalSpaceSelection must be one of BEHIND (0), AHEAD (1), LARGER (2), SMALLER (3), not 9"},
        {[&] { cordon->SetCordonDirection(static_cast<CordonDirection>(2)); },
         "Cordon 'Gate line': cordonDirection must be one of BOTH_WAYS (0), ONE_WAY (1), not 2"},
        {[&] {
             cordon->WillCountInDirection({NOT_A_NUMBER, 0, 0});
         },
         "Cordon 'Gate line': direction must be a vector of finite components"},
    };
    for (auto const& [run, message] : cases) EXPECT_REFUSED(run(), message);
    EXPECT_FALSE(desk->HasCapacityLimit() || desk->HasContactTime() || desk->HasAccessRequiredTest() ||
                 desk->HasAccessPreferredTest() || desk->HasProcessedAction() || path->HasLocalAgentQueueSpacing());
    EXPECT_THAT(desk->GetContactTimeRuleTests(), IsEmpty());
    EXPECT_FALSE(project->HasObject("Second"));
}

TEST_F(SceneObjects, ServersLimitHowManyQueue) {
    desk->SetFixedCapacityLimit(7);
    EXPECT_FALSE(desk->IsAutoCapacityLimit());
    EXPECT_EQ(desk->GetCapacityLimit(), 7);
    // The line is 4 m long.
    struct {
        double spacing;
        int limit;
    } const cases[] = {{0.1, 41}, {0.5, 9}, {0.7, 6}, {4, 2}, {4.5, 1}};
    for (auto const& [spacing, limit] : cases) {
        desk->SetAutoCapacityLimit(spacing);
        EXPECT_TRUE(desk->IsAutoCapacityLimit());
        EXPECT_EQ(desk->GetCapacityLimit(), limit) << spacing;
    }
    desk->ScaleAbout({0, 0, 0}, 2);
    EXPECT_EQ(desk->GetCapacityLimit(), 2);
    desk->ClearCapacityLimit();
    EXPECT_FALSE(desk->HasCapacityLimit());
}

TEST_F(SceneObjects, ServersKeepTestsAndDurationsInPairs) {
    auto const first = std::make_shared<AlwaysTrueTest>();
    auto const second = std::make_shared<NotTest>(std::make_shared<AlwaysTrueTest>());
    desk->SetContactTimeRules({first, second}, {Distribution::CreateConstant(5), Distribution::CreateUniform(1, 2)});
    auto const tests = desk->GetContactTimeRuleTests();
    auto const durations = desk->GetContactTimeRuleDurations();
    ASSERT_THAT(tests, SizeIs(2));
    ASSERT_THAT(durations, SizeIs(2));
    EXPECT_EQ(tests[0]->GetAgentTestTypeId(), first->GetAgentTestTypeId());
    EXPECT_EQ(tests[1]->GetAgentTestTypeId(), second->GetAgentTestTypeId());
    EXPECT_NE(tests[0], first);
    EXPECT_EQ(durations[0]->GetMax(), 5);
    EXPECT_EQ(durations[1]->GetMax(), 2);
    desk->SetContactTimeRules({}, {});
    EXPECT_THAT(desk->GetContactTimeRuleDurations(), IsEmpty());
}

/// The three operations of one action of an object.
struct ActionSlot {
    std::string name;
    std::function<bool()> has;
    std::function<std::shared_ptr<AgentAction>()> copy;
    std::function<void(std::shared_ptr<AgentAction> const&)> set;
};
#define SLOT(object, Name)                                                                   \
    ActionSlot {                                                                             \
#object " " #Name, [&] { return (object)->Has##Name##Action(); },                          \
            [&] { return (object)->Get##Name##ActionCopy(); },                                     \
            [&](std::shared_ptr<AgentAction> const& action) { (object)->Set##Name##Action(action); } \
    }

TEST_F(SceneObjects, KeepCopiesOfActionsEachInItsPlace) {
    auto const floor = project->CreateFloor("Hall", slab(0, 0, 5, 5));
    auto const portal = project->CreatePortal("Door", MeshGeometry::CreateVerticalRectangle({0, 0, 1}, {0, 2, 3}));
    auto const zone = project->CreateZone("Zone", {floor->GetId()});
    std::vector<ActionSlot> const slots{
        SLOT(floor, Enter),         SLOT(floor, Exit),         SLOT(portal, Enter),       SLOT(portal, Waypoint),
        SLOT(zone, Enter),          SLOT(zone, Exit),          SLOT(desk, Processed),     SLOT(desk, Release),
        SLOT(escalator, BallEnter), SLOT(escalator, BallExit), SLOT(escalator, BoxEnter), SLOT(escalator, BoxExit),
    };
    auto const seconds = [](AgentAction& action) {
        return dynamic_cast<WaitForDurationAction&>(action).GetDurationDistribution()->GetMax();
    };
    double number = 0;
    for (auto const& slot : slots) {
        SCOPED_TRACE(slot.name);
        EXPECT_FALSE(slot.has());
        EXPECT_EQ(slot.copy(), nullptr);
        auto const given =
            std::make_shared<WaitForDurationAction>(Distribution::CreateConstant(++number), WaitStyle::StandStill());
        slot.set(given);
        given->SetDurationInSeconds(99);
    }
    number = 0;
    for (auto const& slot : slots) {
        SCOPED_TRACE(slot.name);
        EXPECT_TRUE(slot.has());
        auto const read = slot.copy();
        EXPECT_EQ(seconds(*read), ++number);
        dynamic_cast<WaitForDurationAction&>(*read).SetDurationInSeconds(98);
        EXPECT_EQ(seconds(*slot.copy()), number);
        slot.set(nullptr);
        EXPECT_FALSE(slot.has());
    }
}

TEST_F(SceneObjects, AnActionOfAnObjectHoldsWhatItRefersTo) {
    auto const portal = project->CreatePortal("Door", MeshGeometry::CreateVerticalRectangle({0, 0, 1}, {0, 2, 3}));
    desk->SetReleaseAction(std::make_shared<SeekPortalAction>(std::vector{portal->GetId()}, false));
    EXPECT_REFUSED(project->RemoveAndDeleteObject(portal), "Server 'Desk'");
    desk->SetReleaseAction(nullptr);
    project->RemoveAndDeleteObject(portal);
    EXPECT_FALSE(project->HasObject("Door"));
}

TEST_F(SceneObjects, PathsKeepThePartsThatTheirSpacingNeeds) {
    auto const distance = Distribution::CreateUniform(0.25, 0.75);
    path->SetLocalAgentQueueSpacingByPersonalSpace(PersonalSpaceSelection::LARGER);
    EXPECT_EQ(path->GetLocalAgentQueueSpacingType(), QueueSpacingType::PERSONAL_SPACE);
    EXPECT_EQ(path->GetLocalAgentQueueSpacingPersonalSpaceSelection(), PersonalSpaceSelection::LARGER);
    EXPECT_REFUSED(path->GetLocalAgentQueueSpacingDistance(), "Path 'Lane' has no localAgentQueueSpacing.distance");
    path->SetLocalAgentQueueSpacingByDistance(distance);
    EXPECT_EQ(path->GetLocalAgentQueueSpacingDistance()->GetMax(), 0.75);
    EXPECT_REFUSED(path->GetLocalAgentQueueSpacingPersonalSpaceSelection(), "personalSpaceSelection");
    path->SetLocalAgentQueueSpacingByMaxOfDistanceAndPersonalSpace(distance, PersonalSpaceSelection::AHEAD);
    EXPECT_EQ(path->GetLocalAgentQueueSpacingType(), QueueSpacingType::MAX_OF_DISTANCE_AND_PERSONAL_SPACE);
    path->SetLocalAgentQueueSpacingBySumOfDistanceAndPersonalSpace(distance, PersonalSpaceSelection::BEHIND);
    EXPECT_EQ(path->GetLocalAgentQueueSpacingType(), QueueSpacingType::SUM_OF_DISTANCE_AND_PERSONAL_SPACE);
    EXPECT_EQ(path->GetLocalAgentQueueSpacingPersonalSpaceSelection(), PersonalSpaceSelection::BEHIND);
    path->ClearLocalAgentQueueSpacing();
    EXPECT_FALSE(path->HasLocalAgentQueueSpacing());
}

TEST_F(SceneObjects, PathsRunFromTheirFirstPointToTheirLast) {
    test::expect_near(path->GetBallGoalLine().GetMidpoint(), {0, 0, 0});
    test::expect_near(path->GetBoxGoalLine().GetMidpoint(), {3, 0, 1});
    EXPECT_NEAR(path->GetBoxGoalLine().GetLength(), 0.6, 1e-12);
    auto const across = path->GetBoxGoalLine();
    EXPECT_NEAR(LineSeg3d(across).GetStartPoint().GetZ(), 1, 1e-12);
}

TEST_F(SceneObjects, EscalatorsMoveTheWayOfTheirDirection) {
    EXPECT_EQ(escalator->GetDirection(), ConnectionObjectDirection::BALL_TO_BOX);
    EXPECT_EQ(escalator->GetTreadSpeedAlongIncline(), 0.5);
    EXPECT_NEAR(escalator->GetHorizontalTreadSpeed(), 0.5 * 4 / 5, 1e-12);
    escalator->SetDirection(ConnectionObjectDirection::BOX_TO_BALL);
    EXPECT_EQ(escalator->GetTreadSpeedAlongIncline(), 0.5);
    escalator->SetDirection(ConnectionObjectDirection::BOTH_WAYS);
    EXPECT_EQ(escalator->GetTreadSpeedAlongIncline(), 0);
    EXPECT_EQ(escalator->GetHorizontalTreadSpeed(), 0);
}

TEST_F(SceneObjects, CordonsCountWhoCrossesInTheirDirection) {
    struct {
        Vec3d end, across;
    } const lines[] = {
        {{2, 1, 0}, {0, 0, 1}}, {{-2, 1, 0}, {0, 0, 1}}, {{0, 1, 2}, {1, 0, 0}}, {{0, 1, -2}, {1, 0, 0}}};
    for (auto const& [end, across] : lines) {
        cordon->SetGeometry(MeshGeometry::CreateVerticalRectangle({0, 0, 0}, end));
        test::expect_near(cordon->GetDirectionVector(), across);
    }
    Vec3d const ahead{5, 2, 1}, back{-5, 0, -0.25}, along{0, 1, 3}, still{0, 0, 0};
    auto const counted = [&] {
        return std::vector<bool>{cordon->WillCountInDirection(ahead), cordon->WillCountInDirection(back),
                                 cordon->WillCountInDirection(along), cordon->WillCountInDirection(still)};
    };
    EXPECT_THAT(counted(), ElementsAre(true, true, false, false));
    cordon->SetCordonDirection(CordonDirection::ONE_WAY);
    EXPECT_THAT(counted(), ElementsAre(true, false, false, false));
    cordon->SetDirectionInverted(true);
    EXPECT_THAT(counted(), ElementsAre(false, true, false, false));
    test::expect_near(cordon->GetDirectionVector(), {-1, 0, 0});
}

TEST_F(SceneObjects, WaitSpacesSayHowToWait) {
    auto const space = project->CreateWaitSpace("Lounge", slab(0, 0, 3, 3));
    EXPECT_EQ(space->GetWaitStyle()->GetWaitStyleTypeId(), WaitStyleTypeId::STAND_STILL);
    space->SetSpreadOutWaitStyle();
    EXPECT_EQ(space->GetWaitStyle()->GetWaitStyleTypeId(), WaitStyleTypeId::SPREAD_OUT);
    space->SetStandStillWaitStyle();
    EXPECT_EQ(space->GetWaitStyle()->GetWaitStyleTypeId(), WaitStyleTypeId::STAND_STILL);
}

TEST_F(SceneObjects, AreExportedInTheFormatOfTheExtension) {
    TemporaryDirectory const directory;
    auto const floor = project->CreateFloor("Big hall", slab(0, 0, 2, 1));
    auto const roof = project->CreateVolume("Roof", MeshGeometry::Create({Tri3d({0, 3, 0}, {0, 3, 2}, {2, 3, 0}),
                                                                          Tri3d({9, 4, 0}, {9, 4, 1}, {10, 4, 0})}));
    auto const text = [&](std::string const& name, std::vector<std::shared_ptr<SimObject>> const& objects) {
        project->ExportGeometry(directory.file(name), objects);
        return contents_of(directory.file(name));
    };
    EXPECT_EQ(text("a.obj", {path}), "# pedflux geometry: metres, y up\ng Lane\nv 0 0 0\nv 3 0 0\nv 3 0 1\nl 1 2 3\n");
    EXPECT_EQ(
        text("a.STL", {path, roof}),
        "solid Roof\n"
        "facet normal 0 1 0\n  outer loop\n    vertex 0 3 0\n    vertex 0 3 2\n    vertex 2 3 0\n  endloop\nendfacet\n"
        "facet normal 0 1 0\n  outer loop\n    vertex 9 4 0\n    vertex 9 4 1\n    vertex 10 4 0\n  endloop\nendfacet\n"
        "endsolid Roof\n");
    auto const plan = text("a.wkt", {floor, roof, path, cordon});
    EXPECT_THAT(plan, ::testing::StartsWith("GEOMETRYCOLLECTION (MULTIPOLYGON (((")) << plan;
    EXPECT_THAT(plan, ::testing::EndsWith(", LINESTRING (0 0, 3 0, 3 1), LINESTRING (0 0, 2 0))\n")) << plan;
    EXPECT_THAT(plan, ::testing::HasSubstr(")), ((")) << "two parts of the roof";
    EXPECT_EQ(text("none.wkt", {project->CreateZone("Zone", {})}), "GEOMETRYCOLLECTION EMPTY\n");
    EXPECT_REFUSED(text("a.dxf", {}), "its extension must be .obj, .stl or .wkt");
    EXPECT_FALSE(std::filesystem::exists(directory.file("a.dxf")));
}

}  // namespace
}  // namespace pedflux::engine
