#include "tests/engine/project/building.h"

#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace pedflux::engine {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

class Objects : public ::testing::Test {
  protected:
    Objects() : project(Project::Create()) {}
    ~Objects() override { project->Close(); }

    std::shared_ptr<Stair> stair(std::string const& name) {
        return project->CreateStair(name, MeshGeometry::CreateRamp({0, 0, 0}, {4, 2, 0}, 1));
    }

    std::shared_ptr<Project> project;
};

TEST_F(Objects, OptionalPropertiesThatAreNotSetSayWhich) {
    auto const link = project->CreateLink("Gate", slab(0, 0, 2, 1));
    auto const flight = stair("Up");
    auto const profile = project->CreateProfile("Adults");
    struct {
        std::function<void()> get;
        std::string message;
    } const cases[] = {
        {[&] { link->GetDistanceAdded(); }, "Link 'Gate' has no distanceAdded"},
        {[&] { link->GetEnteringFlowRateType(); }, "Link 'Gate' has no enteringFlowCap"},
        {[&] { link->GetEnteringFlowRateValue(); }, "Link 'Gate' has no enteringFlowCap"},
        {[&] { link->GetEntranceDelayDistribution(); }, "Link 'Gate' has no entranceDelayDistribution"},
        {[&] { link->GetExitDelayDistribution(); }, "Link 'Gate' has no exitDelayDistribution"},
        {[&] { link->GetPriorityDirection(); }, "Link 'Gate' has no priority"},
        {[&] { link->GetPriorityCost(); }, "Link 'Gate' has no priority"},
        {[&] { link->GetBank(); }, "Link 'Gate' has no bank"},
        {[&] { link->GetLocalAgentBodyRadius(); }, "Link 'Gate' has no localAgentBodyRadius"},
        {[&] { link->GetLocalAgentMaxSpeed(); }, "Link 'Gate' has no localAgentMaxSpeed"},
        {[&] { link->GetLocalDirectionBias(); }, "Link 'Gate' has no localDirectionBias"},
        {[&] { flight->GetLocalSpeedDensityStandard(); }, "Stair 'Up' has no localSpeedDensityStandard"},
        {[&] { flight->GetLocalAgentMaxSpeedUp(); }, "Stair 'Up' has no localAgentMaxSpeed"},
        {[&] { profile->GetPersonalSpaceDistribution(); }, "Profile 'Adults' has no personalSpaceDistribution"},
        {[&] { profile->GetAvatar(); }, "Profile 'Adults' has no avatar"},
        {[&] { profile->GetNetwork(); }, "Profile 'Adults' has no network"},
    };
    for (auto const& [get, message] : cases) EXPECT_REFUSED(get(), message);
}

TEST_F(Objects, SettersNameTheObjectThePropertyTheValueAndTheRange) {
    auto const flight = stair("Up");
    auto const profile = project->CreateProfile("Adults");
    auto const portal = project->CreatePortal("Door", MeshGeometry::CreateVerticalRectangle({0, 0, 0}, {0, 2, 1}));
    struct {
        std::function<void()> set;
        std::string message;
    } const cases[] = {
        {[&] { flight->SetDistanceAdded(-1); }, "Stair 'Up': distanceAdded must be at least 0 m, not -1"},
        {[&] { flight->SetLocalAgentBodyRadius(0); },
         "Stair 'Up': localAgentBodyRadius must be greater than 0 and at most 2 m, not 0"},
        {[&] { flight->SetLocalAgentMaxSpeedUpAndDown(1, NOT_A_NUMBER); },
         "Stair 'Up': localAgentMaxSpeed.down must be greater than 0 and at most 20 m/s, not nan"},
        {[&] { flight->SetEnteringFlowCap(FlowRateType::PERSONS_PER_MINUTE, 0); },
         "Stair 'Up': enteringFlowCap.value must be greater than 0, not 0"},
        {[&] { flight->SetEnteringFlowCap(static_cast<FlowRateType>(7), 1); },
         "Stair 'Up': enteringFlowCap.type must be one of PERSONS_PER_SECOND (0), "},
        {[&] { flight->SetDirection(static_cast<ConnectionObjectDirection>(-1)); },
         "direction must be one of BOTH_WAYS (0), BALL_TO_BOX (1), BOX_TO_BALL (2), not -1"},
        {[&] { flight->SetPriorityDirection(ConnectionObjectDirection::BOTH_WAYS); },
         "Stair 'Up': priority.direction must be one direction, not both ways"},
        {[&] { flight->SetPriorityDirection(static_cast<ConnectionObjectDirection>(9)); },
         "Stair 'Up': priority.direction must be one of"},
        {[&] { flight->SetEntranceDelayDistribution(nullptr); },
         "Stair 'Up': entranceDelayDistribution must be given, not empty"},
        {[&] { flight->SetExitDelayDistribution(Distribution::CreateUniform(-1, 5)); },
         "a distribution of values at least 0 s, not one that reaches -1"},
        {[&] { flight->SetExitDelayDistribution(Distribution::CreateUniform(5, 1)); }, "must be a valid distribution"},
        {[&] { flight->SetBank(profile->GetId()); },
         "Stair 'Up': bank must be the identifier of a route bank, not that of Profile 'Adults'"},
        {[&] { flight->AddPerimeter(portal->GetId()); },
         "Stair 'Up': perimeters must be the identifier of a perimeter, not that of Portal 'Door'"},
        {[&] { flight->RemovePerimeter(portal->GetId()); }, "one without it"},
        {[&] { flight->SetGeometry(nullptr); }, "Stair 'Up': geometry must be a mesh, not empty"},
        {[&] {
             flight->SetGeometry(PolylineGeometry::Create({{0, 0, 0}, {1, 0, 0}}));
         },
         "Stair 'Up': geometry must be a mesh, not another kind of geometry"},
        {[&] { profile->SetRadius(2.5); }, "values greater than 0 and at most 2 m, not one that reaches 2.5"},
        {[&] { profile->SetSpeedDistribution(Distribution::CreateUniform(0, 1)); }, "not one that reaches 0"},
        {[&] { profile->SetSpeedShuffleFactor(1.5); },
         "Profile 'Adults': speedShuffleFactor must be at least 0 and at most 1, not 1.5"},
        {[&] { profile->SetAvatar(portal->GetId()); }, "the identifier of an avatar, not that of Portal 'Door'"},
        {[&] { profile->SetNetwork(GlobalId()); }, "the identifier of a network, not the invalid identifier"},
        {[&] { portal->SetAgentInitialPlacement(static_cast<AgentInitialPlacement>(5)); },
         "agentInitialPlacement must be one of RANDOM (0), EVEN (1), CENTER (2), not 5"},
    };
    for (auto const& [set, message] : cases) EXPECT_REFUSED(set(), message);
    EXPECT_FALSE(flight->HasDistanceAdded() || flight->IsEnteringFlowCapped() || flight->HasPriority() ||
                 flight->HasEntranceDelayDistribution() || flight->HasExitDelayDistribution() || flight->HasBank() ||
                 flight->HasLocalAgentMaxSpeed() || flight->GetPerimeterCount() != 0 || profile->HasAvatar());
    EXPECT_EQ(flight->GetDirection(), ConnectionObjectDirection::BOTH_WAYS);
}

TEST_F(Objects, ClearedPropertiesAreGone) {
    auto const project_before = full_project();
    auto const link = project_before->GetLink("Gate");
    link->ClearEnteringFlowCap();
    link->ClearEntranceDelayDistribution();
    link->ClearExitDelayDistribution();
    link->ClearLocalAgentBodyRadius();
    link->ClearLocalAgentMaxSpeed();
    link->ClearLocalDirectionBias();
    link->ClearLocalSpeedDensityStandard();
    link->ClearPerimeters();
    link->DisablePriority();
    EXPECT_FALSE(link->IsEnteringFlowCapped() || link->HasEntranceDelayDistribution() ||
                 link->HasExitDelayDistribution() || link->HasLocalAgentBodyRadius() || link->HasLocalAgentMaxSpeed() ||
                 link->HasLocalDirectionBias() || link->HasLocalSpeedDensityStandard() || link->HasPriority());
    EXPECT_THAT(link->GetPerimeters(), IsEmpty());
    project_before->Close();
}

TEST_F(Objects, KeepAndGiveCopiesOfDistributions) {
    auto const profile = project->CreateProfile("Adults");
    auto const given = Distribution::CreateUniform(0.5, 1);
    profile->SetSpeedDistribution(given);
    given->SetMax(2);
    EXPECT_EQ(profile->GetSpeedDistribution()->GetMax(), 1);
    std::dynamic_pointer_cast<UniformDistribution>(profile->GetSpeedDistribution())->SetMax(3);
    EXPECT_EQ(profile->GetSpeedDistribution()->GetMax(), 1);
}

TEST_F(Objects, SceneObjectsMove) {
    auto const pillar = project->CreateBarrier("Pillar", MeshGeometry::CreateBox({1, 0, 1}, {2, 3, 2}));
    auto const corner = [&] {
        auto box = pillar->GetGeometry()->GetBoundingBox();
        return std::vector{box.GetXMin(), box.GetYMin(), box.GetZMin()};
    };
    pillar->Translate({1, 0, 0});
    EXPECT_THAT(corner(), ElementsAre(2, 0, 1));
    pillar->ScaleAbout({0, 0, 0}, 2);
    EXPECT_THAT(corner(), ElementsAre(4, 0, 2));
    pillar->ScaleAlong(Axis3d({0, 0, 0}, {1, 0, 0}), 0.5);
    EXPECT_THAT(corner(), ElementsAre(2, 0, 2));
    pillar->RotateAbout(Axis3d({0, 0, 0}, {0, 1, 0}), 180);
    EXPECT_THAT(corner(), ElementsAre(DoubleNear(-3, 1e-12), 0, DoubleNear(-4, 1e-12)));
    pillar->MirrorAcross(Axis3d({0, 0, 0}, {1, 0, 0}));
    EXPECT_THAT(corner(), ElementsAre(DoubleNear(2, 1e-12), 0, DoubleNear(-4, 1e-12)));
    EXPECT_REFUSED(pillar->ScaleAbout({0, 0, 0}, -1), "-1");
    EXPECT_REFUSED(pillar->Translate({NOT_A_NUMBER, 0, 0}), "nan");
}

TEST_F(Objects, PortalsKnowWhetherEventsUseThem) {
    auto const shape = MeshGeometry::CreateVerticalRectangle({0, 0, 0}, {0, 2, 1});
    auto const in = project->CreatePortal("In", shape);
    auto const out = project->CreatePortal("Out", shape);
    auto const journey = project->CreateJourney("Journey");
    EXPECT_FALSE(in->IsEntrance() || in->IsExit() || out->IsEntrance() || out->IsExit());
    auto const source = std::make_shared<CountPopulationSource>(std::vector{in->GetId()}, 10.0);
    source->SetDestinationsByChance({out->GetId()});
    journey->SetPopulationSource(source);
    EXPECT_TRUE(in->IsEntrance() && !in->IsExit() && !out->IsEntrance() && out->IsExit());
    project->RemoveAndDeleteObject("Journey");
    EXPECT_FALSE(in->IsEntrance() || out->IsExit());
}

TEST_F(Objects, ZonesListMembersOnce) {
    auto const hall = project->CreateFloor("Hall", slab(0, 0, 5, 5))->GetId();
    auto const annex = project->CreateFloor("Annex", slab(5, 0, 5, 5))->GetId();
    auto const profile = project->CreateProfile("Adults")->GetId();
    auto const zone = project->CreateZone("Zone", {hall});
    zone->AddBaseMembers({hall, annex, annex});
    EXPECT_EQ(zone->GetBaseMembers().size(), 2U);
    EXPECT_TRUE(zone->HasBaseMember(annex));
    EXPECT_REFUSED(zone->AddBaseMembers({annex, profile}),
                   "Zone 'Zone': baseMembers must be the identifier of a floor");
    EXPECT_REFUSED(zone->SetBaseMembers({profile}), "not that of Profile 'Adults'");
    zone->SetBaseMembers({annex});
    EXPECT_FALSE(zone->HasBaseMember(hall));
}

TEST_F(Objects, CollectionsKeepAWeightForEachItem) {
    auto const a = project->CreateProfile("a")->GetId();
    auto const b = project->CreateProfile("b")->GetId();
    auto const c = project->CreateProfile("c")->GetId();
    auto const group = project->CreateCollection("Group", {a});
    EXPECT_FALSE(group->HasWeights());
    EXPECT_EQ(group->GetItemWeight(a), 1);
    group->AddItemWithWeight(b, 4);
    EXPECT_TRUE(group->HasWeights());
    EXPECT_THAT(group->GetItemWeights(), ElementsAre(1, 4));
    group->AddItem(c);
    EXPECT_THAT(group->GetItemWeights(), ElementsAre(1, 4, 1));
    group->SetItemWeight(c, 0);
    group->AddItemWithWeight(a, 2);
    EXPECT_THAT(group->GetItemWeights(), ElementsAre(2, 4, 0));
    EXPECT_REFUSED(group->SetItemWeight(a, -2), "Collection 'Group': weights.0 must be at least 0, not -2");
    EXPECT_REFUSED(group->SetItemsWithWeights({a, b}, {1}),
                   "weights must be a list of 2 weights, one for each item, not one of 1");
    EXPECT_REFUSED(group->SetItemsWithWeights({b}, {-1}), "weights.0");
    EXPECT_REFUSED(group->GetItemWeight(GlobalId::Generate()), "one without it");
    EXPECT_THAT(group->GetItemWeights(), ElementsAre(2, 4, 0));
    EXPECT_EQ(group->GetItems().size(), 3U);
    group->RemoveItem(b);
    EXPECT_THAT(group->GetItemWeights(), ElementsAre(2, 0));
    group->SetManualWeights(7);
    EXPECT_THAT(group->GetItemWeights(), ElementsAre(7, 7));
    group->SetItemsWithWeights({c, b}, {1, 2});
    EXPECT_EQ(group->GetItemWeight(b), 2);
    group->SetAutomaticWeights();
    EXPECT_THAT(group->GetItemWeights(), ElementsAre(1, 1));
    group->SetItems({});
    EXPECT_THAT(group->GetItemWeights(), IsEmpty());
}

TEST_F(Objects, GroupsShowAndEnableTheirItems) {
    auto const a = project->CreateProfile("a");
    auto const b = project->CreateProfile("b");
    auto const group = project->CreateCollection("Group", {a->GetId()});
    group->HideItems();
    group->DisableItems();
    EXPECT_FALSE(a->IsVisible() || a->IsEnabled());
    EXPECT_TRUE(b->IsVisible() && b->IsEnabled() && group->IsVisible());
    group->ShowItems();
    group->EnableItems();
    EXPECT_TRUE(a->IsVisible() && a->IsEnabled());
}

TEST_F(Objects, ConnectionsBelongToOneBank) {
    auto const a = stair("a");
    auto const b = stair("b");
    auto const first = project->CreateRouteBank("First");
    auto const second = project->CreateRouteBank("Second");
    first->AddItems({a->GetId(), b->GetId()});
    a->SetBank(second->GetId());
    EXPECT_TRUE(second->HasItem(a->GetId()));
    EXPECT_FALSE(first->HasItem(a->GetId()));
    second->SetItems({b->GetId()});
    EXPECT_FALSE(a->HasBank());
    EXPECT_TRUE(b->GetBank().InternalEquals(second->GetId()));
    EXPECT_THAT(first->GetItems(), IsEmpty());
    b->SetBank(GlobalId());
    EXPECT_THAT(second->GetItems(), IsEmpty());
    EXPECT_REFUSED(first->AddItem(second->GetId()), "a link, stair, ramp or other connection, not that of RouteBank");
}

class Transforms : public Objects {
  protected:
    Transforms()
        : pillar(project->CreateBarrier("Pillar", MeshGeometry::CreateBox({1, 0, 0}, {2, 1, 1}))),
          transform(project->CreateTransform("Furniture")) {}

    /// Where the corner that was at (1, 0, 0) lies.
    std::vector<double> corner() const {
        auto const vertices = pillar->GetGeometry()->AsMeshGeometry()->GetVertices();
        auto const& vertex = vertices[index_];
        return {vertex.GetX(), vertex.GetY(), vertex.GetZ()};
    }
    static auto at(double x, double y, double z) {
        constexpr double NEARLY = 1e-9;
        return ElementsAre(DoubleNear(x, NEARLY), DoubleNear(y, NEARLY), DoubleNear(z, NEARLY));
    }

    std::shared_ptr<Barrier> pillar;
    std::shared_ptr<Transform> transform;

  private:
    std::size_t index_ = [this] {
        auto const vertices = pillar->GetGeometry()->AsMeshGeometry()->GetVertices();
        std::size_t index = 0;
        while (!Vec3d(vertices[index]).InternalEquals({1, 0, 0})) ++index;
        return index;
    }();
};

TEST_F(Transforms, PlaceTheirItemsFromWhereTheyWere) {
    transform->AddItem(pillar->GetId());
    transform->SetTranslation({0, 5, 0});
    EXPECT_THAT(corner(), at(1, 5, 0));
    transform->SetScale(2);
    EXPECT_THAT(corner(), at(2, 5, 0));
    transform->SetRotation({0, 90, 0});
    EXPECT_THAT(corner(), at(0, 5, -2));
    transform->SetRotation({90, 90, 0});
    EXPECT_THAT(corner(), at(0, 5, -2));
    transform->SetRotation({0, 0, 90});
    EXPECT_THAT(corner(), at(0, 7, 0));
    transform->SetTranslation({0, 0, 0});
    transform->SetRotation({0, 0, 0});
    transform->SetScale(1);
    EXPECT_THAT(corner(), at(1, 0, 0));
}

TEST_F(Transforms, PlaceWhatComesInAndPutBackWhatGoesOut) {
    transform->SetTranslation({0, 0, 3});
    EXPECT_THAT(corner(), at(1, 0, 0));
    transform->AddItem(pillar->GetId());
    transform->AddItem(pillar->GetId());
    EXPECT_THAT(corner(), at(1, 0, 3));
    transform->SetItems({});
    EXPECT_THAT(corner(), at(1, 0, 0));
    transform->SetItems({pillar->GetId()});
    transform->ResetTransformWithoutChangingMembers();
    EXPECT_THAT(corner(), at(1, 0, 3));
    EXPECT_EQ(transform->GetTranslation().GetZ(), 0);
    transform->SetTranslation({0, 0, 1});
    EXPECT_THAT(corner(), at(1, 0, 4));
}

TEST_F(Transforms, RefuseWithoutMovingAnything) {
    auto const profile = project->CreateProfile("Adults");
    transform->AddItem(pillar->GetId());
    EXPECT_REFUSED(transform->SetScale(0), "Transform 'Furniture': scale must be greater than 0, not 0");
    EXPECT_REFUSED(transform->SetTranslation({0, NOT_A_NUMBER, 0}), "translation must be a vector");
    EXPECT_REFUSED(transform->AddItems({profile->GetId()}), "a scene object, not that of Profile 'Adults'");
    EXPECT_REFUSED(transform->SetTranslation({2e9, 0, 0}), "2");
    EXPECT_THAT(corner(), at(1, 0, 0));
    EXPECT_EQ(transform->GetScale(), 1);
    EXPECT_EQ(transform->GetTranslation().GetX(), 0);
}

}  // namespace
}  // namespace pedflux::engine
