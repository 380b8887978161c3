#include "engine/model/document.h"
#include "tests/engine/project/building.h"

#include <functional>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double INFINITE = std::numeric_limits<double>::infinity();

TEST(CurrentProject, IsTheLastCreatedUntilItCloses) {
    auto const first = Project::Create();
    EXPECT_EQ(Project::GetCurrentProject(), first);
    auto const second = Project::Create();
    EXPECT_EQ(Project::GetCurrentProject(), second);
    first->Close();
    EXPECT_EQ(Project::GetCurrentProject(), second);
    second->Close();
    EXPECT_FALSE(Project::HasCurrentProject());
    EXPECT_EQ(Project::GetCurrentProject(), nullptr);
}

TEST(CurrentProject, LivesWithoutOtherOwners) {
    Project::Create()->CreateProfile("Adults");
    EXPECT_TRUE(Project::GetCurrentProject()->HasObject("Adults"));
    Project::GetCurrentProject()->Close();
}

TEST(ClosedProject, RefusesAllAndDetachesItsObjects) {
    auto const project = full_project();
    auto const stair = project->GetStair("Stair");
    auto const transform = project->GetTransform("Furniture");
    auto const selection = project->GetSelection();
    project->Close();
    project->Close();
    EXPECT_REFUSED(project->GetObjects(), "closed");
    EXPECT_REFUSED(project->CreateProfile("Adults"), "closed");
    EXPECT_REFUSED(project->SetFrameRate(3), "closed");
    EXPECT_REFUSED(project->Save("closed.pedflux"), "closed");
    EXPECT_EQ(stair->GetName(), "Stair");
    EXPECT_EQ(stair->GetLocalAgentMaxSpeedUp(), 0.6);
    EXPECT_FALSE(stair->HasBank());
    EXPECT_REFUSED(stair->SetName("Other"), "Stair 'Stair' is no longer part of a project");
    EXPECT_REFUSED(stair->SetBank(GlobalId::Generate()), "no longer part of a project");
    EXPECT_REFUSED(transform->SetScale(2), "no longer part of a project");
    EXPECT_TRUE(selection->IsEmpty());
    auto id = stair->GetId();
    EXPECT_REFUSED(selection->Add(id), "closed");
}

TEST(Settings, RefuseWhatMakesNoSenseAndKeepWhatTheyHad) {
    auto const project = Project::Create();
    EXPECT_REFUSED(project->SetStartTimeInSeconds(-1), "the project: startTimeInSeconds must be at least 0, not -1");
    EXPECT_REFUSED(project->SetDurationInSeconds(0), "durationInSeconds must be at least 1, not 0");
    EXPECT_REFUSED(project->SetFrameRate(1001),
                   "frameRate must be at least 1 and at most 1000 frames per second, not 1001");
    EXPECT_REFUSED(project->SetPopulationMultiplier(NOT_A_NUMBER), "populationMultiplier must be at least 0, not nan");
    EXPECT_REFUSED(project->SetPopulationMultiplier(INFINITE), "not inf");
    EXPECT_REFUSED(project->SetProjectOrigin({0, NOT_A_NUMBER, 0}),
                   "projectOrigin must be a vector of finite components");
    EXPECT_REFUSED(project->GetProjectOrigin(), "the project has no projectOrigin");
    EXPECT_REFUSED(project->SetDefaultBookmark(GlobalId::Generate()),
                   "defaultBookmark must be the identifier of a bookmark");
    EXPECT_REFUSED(project->SetWorkingDirectory("/nowhere"), "must be an existing directory, not '/nowhere'");
    EXPECT_FALSE(project->HasProjectOrigin());
    EXPECT_EQ(project->GetFrameLength(), 1.0 / project->GetFrameRate());
    project->SetProjectOrigin({1, 2, 3});
    EXPECT_TRUE(project->HasProjectOrigin());
    project->ClearProjectOrigin();
    EXPECT_FALSE(project->HasProjectOrigin());
    project->Close();
}

TEST(Lookups, FindByIdByNameAndByClass) {
    auto const project = full_project();
    std::map<std::string, std::size_t> const counts{{"objects", project->GetObjects().size()},
                                                    {"scene", project->GetSceneObjects().size()},
                                                    {"network", project->GetNetworkObjects().size()},
                                                    {"walkable", project->GetWalkableObjects().size()},
                                                    {"connections", project->GetConnectionObjects().size()},
                                                    {"floors", project->GetFloors().size()},
                                                    {"queries", project->GetMaxDensityMapQueries().size()}};
    EXPECT_EQ(counts, (std::map<std::string, std::size_t>{{"objects", 23},
                                                          {"scene", 7},
                                                          {"network", 6},
                                                          {"walkable", 5},
                                                          {"connections", 3},
                                                          {"floors", 2},
                                                          {"queries", 1}}));
    auto const stair = project->GetStair("Stair");
    EXPECT_EQ(project->GetStair(stair->GetId()), stair);
    EXPECT_EQ(project->GetObject("Stair"), stair);
    EXPECT_EQ(project->GetConnectionObject(stair->GetId()), stair);
    EXPECT_EQ(stair->GetTypeId(), static_cast<int>(ObjectType::STAIR));
    EXPECT_EQ(project->GetRamp("Stair"), nullptr);
    EXPECT_EQ(project->GetFloor(stair->GetId()), nullptr);
    EXPECT_EQ(project->GetStair("stair"), nullptr);
    EXPECT_EQ(project->GetObject(GlobalId::Generate()), nullptr);
    EXPECT_EQ(project->GetObject(GlobalId()), nullptr);
    EXPECT_EQ(project->GetObjects().front()->GetName(), "Hall \"große\" €");
    EXPECT_EQ(project->GetObjects().back()->GetName(), "Population");
    project->Close();
}

TEST(Factories, RefuseNamesAndValuesAndLeaveNothingBehind) {
    auto const project = Project::Create();
    auto const floor = project->CreateFloor("Hall", slab(0, 0, 5, 5));
    EXPECT_REFUSED(project->CreateProfile("Hall"), "the name 'Hall' is taken by Floor 'Hall'");
    EXPECT_REFUSED(project->CreateProfile(""), "the name '' is empty");
    EXPECT_REFUSED(project->CreateProfile("\xff"), "the name is not UTF-8");
    EXPECT_REFUSED(project->CreateFloor("Second", nullptr), "Floor 'Second': geometry must be a mesh, not empty");
    EXPECT_REFUSED(project->CreateZone("Zone", {GlobalId::Generate()}), "which no object of the project has");
    EXPECT_REFUSED(project->CreateZone("Zone", {floor->GetId(), floor->GetId()}), "different objects");
    EXPECT_REFUSED(project->CreateZone("Zone", {GlobalId()}), "not the invalid identifier");
    EXPECT_REFUSED(project->CreateAverageDensityMapQuery("Map", floor->GetId()),
                   "simulationRun must be the identifier of a simulation run, not that of Floor 'Hall'");
    EXPECT_EQ(project->GetObjects().size(), 1U);
    EXPECT_TRUE(project->CreateZone("Zone", {}));
    project->Close();
}

TEST(Names, AreUniqueAndCanBeTakenAgain) {
    auto const project = Project::Create();
    auto const floor = project->CreateFloor("Floor", slab(0, 0, 5, 5));
    auto const profile = project->CreateProfile("Adults");
    EXPECT_REFUSED(profile->SetName("Floor"), "the name 'Floor' is taken by Floor 'Floor'");
    EXPECT_REFUSED(profile->SetName(" "), "blank");
    floor->SetName("Floor");
    floor->SetName("Hall");
    profile->SetName("Floor");
    EXPECT_EQ(project->GetFloor("Hall"), floor);
    EXPECT_FALSE(project->HasObject("Adults"));
    EXPECT_TRUE(SimObject::S_IsValidName("Adults"));
    EXPECT_FALSE(SimObject::S_IsValidName(""));
    project->Close();
}

TEST(Names, CountOnFromTheLowestFreeNumber) {
    auto const project = Project::Create();
    for (char const* const name : {"Floor", "Floor 2", "Floor 4", "Line 7", "A 99999999999"})
        project->CreateProfile(name);
    struct {
        std::string base, next;
    } const cases[] = {
        {"Hall", "Hall"},     {"Floor", "Floor 3"}, {"Floor 2", "Floor 3"},   {"Floor 4", "Floor 5"},
        {"Line 7", "Line 8"}, {"", "Object"},       {"Floor 02", "Floor 02"}, {"A 99999999999", "A 99999999999 2"},
    };
    for (auto const& [base, next] : cases) EXPECT_EQ(project->FindNextUniqueName(base), next);
    EXPECT_REFUSED(project->FindNextUniqueName("\n"), "control character");
    std::string const longest(255, 'x');
    project->CreateProfile(longest);
    EXPECT_REFUSED(project->FindNextUniqueName(longest), "longer than 255 bytes");
    project->Close();
}

TEST(Removal, IsRefusedWhileOthersReferAndNamesThem) {
    auto const project = full_project();
    struct {
        std::string name, referrers;
    } const held[] = {
        {"West door", "Collection 'Doors', Journey 'Rush', Evacuation 'Alarm'"},
        {"Surroundings", "Link 'Gate', Stair 'Stair', Ramp 'Ramp'"},
        {"Commuters", "Journey 'Rush', Evacuation 'Alarm'"},
        {"Pillar", "Transform 'Furniture'"},
        {"Run", "AverageDensityMapQuery 'Average', MaxDensityMapQuery 'Greatest'"},
        {"Stair", "RouteBank 'Ways up'"},
    };
    for (auto const& [name, referrers] : held) EXPECT_REFUSED(project->RemoveAndDeleteObject(name), referrers);
    EXPECT_EQ(project->GetObjects().size(), 23U);

    // Whatever the order of creation, everything can be removed, the referrers first.
    std::size_t removed = 0;
    while (!project->GetObjects().empty()) {
        std::size_t const before = project->GetObjects().size();
        for (auto const& object : project->GetObjects()) {
            if (document_of(*project).references_to(object->GetId()).empty()) project->RemoveAndDeleteObject(object);
        }
        removed += before - project->GetObjects().size();
        ASSERT_LT(project->GetObjects().size(), before);
    }
    EXPECT_EQ(removed, 23U);
    project->Close();
}

TEST(Removal, DetachesTheObjectAndFreesItsName) {
    auto const project = Project::Create();
    auto const floor = project->CreateFloor("Hall", slab(0, 0, 5, 5));
    auto id = floor->GetId();
    auto const selection = project->GetSelection();
    selection->Add(id);
    project->RemoveAndDeleteObject(floor);
    EXPECT_TRUE(selection->IsEmpty());
    EXPECT_FALSE(project->HasObject(id));
    EXPECT_EQ(floor->GetName(), "Hall");
    EXPECT_REFUSED(project->RemoveAndDeleteObject(floor), "Floor 'Hall' is not an object of this project");
    EXPECT_REFUSED(project->RemoveAndDeleteObject(id), id.GetString());
    EXPECT_REFUSED(project->RemoveAndDeleteObject("Hall"), "no object of the project has the name 'Hall'");
    EXPECT_REFUSED(project->RemoveAndDeleteObject(std::shared_ptr<SimObject>()), "empty");
    EXPECT_TRUE(project->CreateFloor("Hall", slab(0, 0, 1, 1)));
    auto const other = Project::Create();
    EXPECT_REFUSED(other->RemoveAndDeleteObject(project->GetObject("Hall")), "not an object of this project");
    other->Close();
    project->Close();
}

TEST(Selection, KeepsObjectsInTheOrderOfSelection) {
    auto const project = full_project();
    auto const selection = project->GetSelection();
    auto stair = project->GetObject("Stair")->GetId();
    auto ramp = project->GetObject("Ramp")->GetId();
    auto stranger = GlobalId::Generate();
    selection->Add(ramp);
    selection->Add(stair);
    selection->Add(ramp);
    EXPECT_THAT(project->GetSelection()->GetSelectedObjects(),
                ElementsAre(project->GetObject("Ramp"), project->GetObject("Stair")));
    selection->Toggle(ramp);
    EXPECT_FALSE(selection->IsSelected(ramp));
    EXPECT_TRUE(selection->IsSelected(stair));
    selection->Toggle(ramp);
    EXPECT_EQ(selection->GetCount(), 2);
    selection->Remove(stair);
    selection->SetObjects({stair, stair, ramp});
    EXPECT_EQ(selection->GetCount(), 2);
    EXPECT_REFUSED(selection->SetObjects({stair, stranger}), stranger.GetString());
    EXPECT_REFUSED(selection->Toggle(stranger), "which no object of the project has");
    EXPECT_EQ(selection->GetCount(), 2);
    selection->SetObject(stair);
    EXPECT_THAT(selection->GetSelectedObjects(), ElementsAre(project->GetObject("Stair")));
    selection->Clear();
    EXPECT_TRUE(selection->IsEmpty());
    project->Close();
}

TEST(WorkingDirectory, IsAbsoluteAndThatOfTheProcessUntilSet) {
    TemporaryDirectory const directory;
    auto const project = Project::Create();
    EXPECT_EQ(project->GetWorkingDirectory(), std::filesystem::current_path());
    project->SetWorkingDirectory(directory.path().string() + "/");
    EXPECT_EQ(project->GetWorkingDirectory(), directory.path());
    project->SetWorkingDirectory(".");
    EXPECT_EQ(project->GetWorkingDirectory(), std::filesystem::current_path());
    project->Close();
}

TEST(SimulationRun, ConnectsWithWhatIsADatabaseOnly) {
    TemporaryDirectory const directory;
    write(directory.file("plain.txt"), "no database");
    auto const project = Project::Create();
    project->SetWorkingDirectory(directory.path());
    auto const run = project->CreateSimulationRun("Run");
    EXPECT_FALSE(run->IsConnected());
    EXPECT_EQ(run->GetDatabaseFileName(), "");
    EXPECT_REFUSED(run->Connect("missing.db"), directory.file("missing.db"));
    EXPECT_REFUSED(run->Connect("plain.txt"), "plain.txt");
    EXPECT_REFUSED(run->Connect("\xff"), "text in UTF-8");
    EXPECT_FALSE(run->IsConnected());
    EXPECT_EQ(run->GetDatabaseFileName(), "");
    project->Close();
}

TEST(ExportGeometry, WritesGroupsOfVerticesAndFaces) {
    TemporaryDirectory const directory;
    auto const path = directory.file("a.obj");
    auto const project = Project::Create();
    project->CreateFloor("Big hall", slab(0, 0, 2, 1));
    auto const pillar = project->CreateBarrier("Pillar", MeshGeometry::CreateBox({0, 0, 0}, {1, 1, 1}));
    project->ExportGeometry(path, {});
    auto const all = contents_of(path);
    EXPECT_EQ(all.substr(0, all.find("f ")),
              "# pedflux geometry: metres, y up\ng Big_hall\nv 0 0 0\nv 2 0 0\nv 2 0 1\nv 0 0 1\n");
    auto const faces = [](std::string const& text) {
        std::set<int> corners;
        for (auto at = text.find("\nf "); at != std::string::npos; at = text.find("\nf ", at + 1)) {
            int a = 0, b = 0, c = 0;
            EXPECT_EQ(std::sscanf(text.c_str() + at, "\nf %d %d %d", &a, &b, &c), 3);
            corners.insert({a, b, c});
        }
        return corners;
    };
    EXPECT_EQ(*faces(all).begin(), 1);
    EXPECT_EQ(*faces(all).rbegin(), 4 + 8);
    EXPECT_EQ(faces(all).size(), 12U);
    project->ExportGeometry(path, {pillar});
    EXPECT_EQ(*faces(contents_of(path)).rbegin(), 8);
    EXPECT_REFUSED(project->ExportGeometry(path, {pillar, nullptr}), "empty pointer");
    EXPECT_EQ(*faces(contents_of(path)).rbegin(), 8);
    project->Close();
}

}  // namespace
}  // namespace pedflux::engine
