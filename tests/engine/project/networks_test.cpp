#include "engine/model/document.h"
#include "engine/model/saving.h"
#include "engine/project/kinds.h"
#include "tests/engine/project/building.h"

#include <pedflux/elevators.h>
#include <pedflux/networks.h>

#include <functional>
#include <string>
#include <vector>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Ids = std::vector<GlobalId>;

struct Networks : testing::Test {
    std::shared_ptr<Project> project = Project::Create();
    GlobalId floor = project->CreateFloor("Floor", slab(0, 0, 20, 10))->GetId();
    GlobalId portal =
        project->CreatePortal("Portal", MeshGeometry::CreateVerticalRectangle({0, 0, 4}, {0, 2, 6}))->GetId();
    GlobalId pillar = project->CreateBarrier("Pillar", MeshGeometry::CreateBox({9, 0, 4}, {10, 3, 5}))->GetId();
    GlobalId link = project->CreateLink("Link", slab(20, 4, 1, 2))->GetId();
    GlobalId stair = project->CreateStair("Stair", MeshGeometry::CreateRamp({20, 0, 2}, {24, 3, 2}, 1.5, 0.2))->GetId();
    GlobalId escalator =
        project->CreateEscalator("Escalator", MeshGeometry::CreateRamp({20, 0, 4}, {24, 3, 4}, 1))->GetId();
    GlobalId ramp = project->CreateRamp("Ramp", MeshGeometry::CreateRamp({20, 0, 8}, {24, 3, 8}, 2))->GetId();
    GlobalId path = project->CreatePath("Path", PolylineGeometry::Create({{20, 0, 9}, {24, 3, 9}}))->GetId();
    GlobalId elevator = project->CreateElevator("Elevator", slab(12, 0, 2, 2))->GetId();
    std::shared_ptr<Network> network = project->CreateNetwork("Network");

    std::vector<std::string> members() const {
        std::vector<std::string> names;
        for (GlobalId const& id : network->GetMembers()) {
            EXPECT_TRUE(network->IsMember(id));
            names.push_back(project->GetObject(id)->GetName());
        }
        return names;
    }
};

TEST_F(Networks, HaveTheMembersThatTheyWereSetBy) {
    auto const definition = std::make_shared<NetworkDefinition>();
    definition->SetIncludeAllStairs(false);
    definition->SetIncludeAllRamps(false);
    definition->SetIncludeAllPaths(false);
    definition->SetIncludeAllEscalators(false);
    definition->SetIncludeObjects({ramp});
    struct {
        std::function<void()> set;
        std::array<bool, 4> answers;  // all, excluding, including only, definition
        std::vector<std::string> members;
    } const cases[] = {
        {[] {},
         {true, false, false, false},
         {"Floor", "Portal", "Link", "Stair", "Escalator", "Ramp", "Path", "Elevator"}},
        {[&] {
             network->SetByExcludingObjects({stair, floor});
         },
         {false, true, false, false},
         {"Portal", "Link", "Escalator", "Ramp", "Path", "Elevator"}},
        {[&] {
             network->SetByIncludingObjects({ramp, floor});
         },
         {false, false, true, false},
         {"Floor", "Ramp"}},
        {[&] { network->SetByIncludingObjects({}); }, {false, false, true, false}, {}},
        {[&] { network->SetByNetworkDefinition(definition); },
         {false, false, false, true},
         {"Floor", "Portal", "Link", "Ramp", "Elevator"}},
        {[&] { network->SetByNetworkDefinition(std::make_shared<NetworkDefinition>()); },
         {false, false, false, true},
         {"Floor", "Portal", "Link", "Stair", "Escalator", "Ramp", "Path", "Elevator"}},
        {[&] { network->SetUsingAllObjects(); },
         {true, false, false, false},
         {"Floor", "Portal", "Link", "Stair", "Escalator", "Ramp", "Path", "Elevator"}},
    };
    for (auto const& [set, answers, expected] : cases) {
        set();
        EXPECT_EQ((std::array{network->IsUsingAllObjects(), network->IsExcludingObjects(),
                              network->IsIncludingObjectsOnly(), network->IsUsingNetworkDefinition()}),
                  answers);
        EXPECT_EQ(members(), expected);
        EXPECT_EQ(network->GetExcludedObjects().size(), answers[1] ? 2u : 0u);
        EXPECT_EQ(network->GetIncludedObjects().size(), expected.size() * (answers[2] ? 1u : 0u));
        EXPECT_EQ(network->GetNetworkDefinition() != nullptr, answers[3]);
        EXPECT_FALSE(network->IsMember(pillar));
        EXPECT_FALSE(network->IsMember(GlobalId::Generate()));
    }
}

TEST_F(Networks, EachFlagOfADefinitionIsAboutItsOwnKind) {
    struct {
        void (NetworkDefinition::*set)(bool);
        bool (NetworkDefinition::*is)();
        GlobalId object;
    } const cases[] = {
        {&NetworkDefinition::SetIncludeAllElevators, &NetworkDefinition::IsIncludeAllElevators, elevator},
        {&NetworkDefinition::SetIncludeAllStairs, &NetworkDefinition::IsIncludeAllStairs, stair},
        {&NetworkDefinition::SetIncludeAllEscalators, &NetworkDefinition::IsIncludeAllEscalators, escalator},
        {&NetworkDefinition::SetIncludeAllRamps, &NetworkDefinition::IsIncludeAllRamps, ramp},
        {&NetworkDefinition::SetIncludeAllPaths, &NetworkDefinition::IsIncludeAllPaths, path},
    };
    for (auto const& [set, is, object] : cases) {
        auto const definition = std::make_shared<NetworkDefinition>();
        EXPECT_TRUE(((*definition).*is)());
        ((*definition).*set)(false);
        network->SetByNetworkDefinition(definition);
        EXPECT_FALSE((*network->GetNetworkDefinition().*is)());
        EXPECT_FALSE(network->IsMember(object));
        EXPECT_EQ(members().size(), 7u) << "only one of eight is left out";
    }
}

TEST_F(Networks, KeepACopyOfTheDefinition) {
    auto const definition = std::make_shared<NetworkDefinition>();
    definition->SetIncludeAllElevators(false);
    definition->SetIncludeObjects({stair});
    network->SetByNetworkDefinition(definition);
    definition->SetIncludeAllElevators(true);
    network->GetNetworkDefinition()->SetIncludeObjects({});
    EXPECT_FALSE(network->GetNetworkDefinition()->IsIncludeAllElevators());
    EXPECT_EQ(network->GetNetworkDefinition()->GetIncludeObjects().size(), 1u);
}

TEST_F(Networks, KeepWhatTheyHaveWhenAListIsRefused) {
    network->SetByExcludingObjects({stair});
    auto const definition = std::make_shared<NetworkDefinition>();
    EXPECT_REFUSED(definition->SetIncludeObjects({stair, stair}), "NetworkDefinition: included object");
    EXPECT_REFUSED(definition->SetIncludeObjects({GlobalId::INVALID}), "NetworkDefinition: included object");
    EXPECT_THAT(definition->GetIncludeObjects(), IsEmpty());
    definition->SetIncludeObjects({pillar});
    EXPECT_REFUSED(network->SetByNetworkDefinition(definition), "routes lead over, not that of Barrier 'Pillar'");
    EXPECT_REFUSED(network->SetByNetworkDefinition(nullptr), "Network 'Network': the network definition must be given");
    EXPECT_REFUSED(network->SetByIncludingObjects({GlobalId::Generate()}), "which no object of the project has");
    EXPECT_REFUSED(network->SetByExcludingObjects({ramp, ramp}), "twice");
    EXPECT_TRUE(network->IsExcludingObjects());
    EXPECT_EQ(network->GetExcludedObjects().size(), 1u);
}

TEST_F(Networks, AreSavedAndOpenedEqualAndHoldWhatTheyName) {
    project->CreateNetwork("Without")->SetByExcludingObjects({floor});
    project->CreateNetwork("Only")->SetByIncludingObjects({link, portal});
    auto const definition = std::make_shared<NetworkDefinition>();
    definition->SetIncludeAllElevators(false);
    definition->SetIncludeAllPaths(false);
    definition->SetIncludeObjects({path});
    project->CreateNetwork("Defined")->SetByNetworkDefinition(definition);

    auto const& document = document_of(*project);
    auto const opened = from_text(to_text(document), object_kinds());
    EXPECT_THAT(differences(document, *opened), IsEmpty());
    EXPECT_THAT(opened->open_warnings, IsEmpty());
    EXPECT_EQ(project->GetNetworks().size(), 4u);

    EXPECT_REFUSED(project->RemoveAndDeleteObject(floor), "Without");
    EXPECT_REFUSED(project->RemoveAndDeleteObject(link), "Only");
    EXPECT_REFUSED(project->RemoveAndDeleteObject(path), "Defined");
    project->RemoveAndDeleteObject(stair);
    EXPECT_THAT(members(), ElementsAre("Floor", "Portal", "Link", "Escalator", "Ramp", "Path", "Elevator"));
}

}  // namespace
}  // namespace pedflux::engine
