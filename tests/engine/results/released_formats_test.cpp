#include "tests/engine/files.h"
#include "tests/engine/refusal.h"

#include <pedflux/access_rules.h>
#include <pedflux/agent_filters.h>
#include <pedflux/database.h>
#include <pedflux/events.h>
#include <pedflux/graph_queries.h>
#include <pedflux/graphs.h>
#include <pedflux/issue.h>
#include <pedflux/map_queries.h>
#include <pedflux/maps.h>
#include <pedflux/profiles.h>
#include <pedflux/project.h>
#include <pedflux/scene.h>
#include <pedflux/simulation_run.h>
#include <pedflux/table_queries.h>
#include <pedflux/tables.h>

#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// The files of fixtures/, and what its README.md says of them. Figures were read from their rows by hand.
namespace pedflux {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

using Filter = std::shared_ptr<AgentFilter>;

std::string fixture(std::string const& name) { return std::string(PEDFLUX_FIXTURES) + "/" + name; }

/// The project with the run that the format's file stores.
class Released : public testing::TestWithParam<int> {
  protected:
    Released() {
        EXPECT_TRUE(project->GetSimulationRuns().at(0)->Connect(file));
        run = id_of("Morning");
    }
    ~Released() override { project->Close(); }

    GlobalId id_of(std::string const& name) const {
        for (auto const& object : project->GetObjects()) {
            if (object->GetName() == name) return object->GetId();
        }
        throw std::runtime_error("the project has no " + name);
    }
    int count(std::string const& floor, int frame, Filter const& filter = nullptr) const {
        return database->GetFloorPopulation(id_of(floor), frame, filter);
    }

    std::string const file = fixture("results-format-" + std::to_string(GetParam()) + ".pfdb");
    std::shared_ptr<Project> const project = Project::Open(fixture("project-version-1.json"));
    std::shared_ptr<Database> const database = Database::Open(file);
    GlobalId run;
};
INSTANTIATE_TEST_SUITE_P(Formats, Released, testing::Values(1, 2));

TEST_P(Released, DatabasesOpenAndShowTheirFrames) {
    EXPECT_EQ(database->GetFirstFrame(), 1);
    EXPECT_EQ(database->GetLastFrame(), 50);
    EXPECT_EQ(database->GetFrameRate(), 5);
    EXPECT_THAT(database->GetAllAgents(), ElementsAre(0, 1, 2));
    EXPECT_EQ(database->GetAgentLastFrame(0), 39);
    EXPECT_EQ(database->GetAgentLastFrame(1), 38);
    EXPECT_EQ(database->GetAgentLastFrame(2), 50);
    struct Case {
        int frame;
        int hall;
        int passage;
        int annex;
    };
    for (auto const& [frame, hall, passage, annex] : std::vector<Case>{
             {1, 2, 0, 1}, {16, 2, 0, 1}, {17, 1, 1, 1}, {20, 0, 2, 1}, {25, 0, 1, 2}, {38, 0, 0, 3}, {40, 0, 0, 1}}) {
        EXPECT_EQ(count("Hall", frame), hall) << frame;
        EXPECT_EQ(count("Passage", frame), passage) << frame;
        EXPECT_EQ(count("Annex", frame), annex) << frame;
    }
    auto stored = database->GetFrameData(10);
    ASSERT_THAT(stored, SizeIs(3));
    EXPECT_NEAR(stored[1].GetPosition().GetX(), 2.153, 0.001);
    EXPECT_NEAR(stored[1].GetPosition().GetZ(), 1.221, 0.001);
    EXPECT_NEAR(stored[1].GetSpeed(), 1.37, 0.01);
    EXPECT_EQ(stored[1].GetAgentMovement(), AgentMovement::WALK);
    EXPECT_EQ(stored[2].GetSpeed(), 0);
}

TEST_P(Released, RunsAnswerFiltersThatAskWhatEveryFormatStores) {
    auto const east = std::make_shared<ExitedAtFilter>(id_of("East"));
    EXPECT_EQ(count("Hall", 10, east), 2);
    EXPECT_EQ(count("Annex", 10, east), 0);
    EXPECT_EQ(count("Annex", 10, std::make_shared<ProfileFilter>(id_of("Walkers"))), 1);
    EXPECT_EQ(count("Annex", 10, std::make_shared<EndStateFilter>(AgentStateAtSimulationEnd::INSIDE)), 1);
    EXPECT_EQ(count("Hall", 10, AgentFilter::IsEver(AgentFilter::InArea(id_of("Passage")))), 2);
}

TEST_P(Released, RunsAnswerTheQueriesOfAProject) {
    auto const summary = project->CreateAgentSummaryTableQuery("Summary", run)->Evaluate();
    ASSERT_EQ(summary->GetRowCount(), 3);
    EXPECT_EQ(summary->GetStringValue(0, 0), "West");
    EXPECT_EQ(summary->GetStringValue(0, 1), "East");
    EXPECT_NEAR(summary->GetDoubleValue(0, 3), 28800.2, 1e-6);
    EXPECT_NEAR(summary->GetDoubleValue(0, 5), 7.8, 1e-6) << "gone in frame 40, there from the first one on";
    EXPECT_NEAR(summary->GetDoubleValue(0, 7), 9.939, 0.001);
    EXPECT_EQ(summary->GetIntValue(2, 6), 0) << "agent 2 did not arrive";

    auto const times = project->CreateAgentAreaTimeTableQuery("Times", run);
    times->SetArea(id_of("Passage"));
    auto const table = times->Evaluate();
    ASSERT_EQ(table->GetRowCount(), 2);
    EXPECT_NEAR(table->GetDoubleValue(0, 3), 1.4, 1e-6) << "frames 19 to 25";
    EXPECT_NEAR(table->GetDoubleValue(1, 3), 1.6, 1e-6) << "frames 17 to 24";

    std::vector<double> people;
    auto const graph = project->CreatePopulationCountGraphQuery("People", run)->Evaluate();
    for (auto& point : graph->GetSeries().at(0)->GetValues()) people.push_back(point.GetZ());
    EXPECT_THAT(people, ElementsAre(3, 3, 3, 3, 3, 3, 3, 2.4, 1, 1)) << "3, 3, 3, 2 and 1 in the eighth second";

    auto const occupied = project->CreateTimeOccupiedMapQuery("Occupied", run);
    occupied->SetMapDisplayObjects({id_of("Annex")});
    auto const map = occupied->Evaluate().at(0)->AsMap2d()->AsValueMap2d();
    EXPECT_EQ(map->GetValueAtPosition({6.41, 0, 0.89}), 10) << "agent 2 stands there all the time";
    EXPECT_EQ(map->GetValueAtPosition({9.9, 0, 2.9}), 0);
}

/// A filter of each kind that asks what format 1 did not store, the agents that it selects in the rooms in frame 10,
/// and what the refusal calls it.
TEST_P(Released, RunsTellWhatTheyStoredAndNameWhatTheyDidNot) {
    struct Case {
        Filter filter;
        int hall;
        int annex;
        char const* lacking;
    };
    for (auto const& [filter, hall, annex, lacking] : std::vector<Case>{
             {AgentFilter::HoldingToken(id_of("Ticket")), 2, 0, "the tokens and servers of its agents"},
             {std::make_shared<ActivityFilter>(AgentActivity::WAITING), 0, 1, "what its agents were doing"},
             {std::make_shared<CreatedByFilter>(id_of("Walk")), 2, 0, "which events its agents come from"},
         }) {
        if (GetParam() == 1) {
            EXPECT_THAT(refusal_of([&, &asked = filter] { count("Hall", 10, asked); }),
                        HasSubstr("recorded by an older release, which did not store " + std::string(lacking)));
        } else {
            EXPECT_EQ(count("Hall", 10, filter), hall) << lacking;
            EXPECT_EQ(count("Annex", 10, filter), annex) << lacking;
        }
    }
    auto const people = project->CreatePopulationCountGraphQuery("Everything's people", run);
    people->SetAreaIds({id_of("Everything")});
    if (GetParam() == 1) {
        EXPECT_THAT(refusal_of([&] { database->GetAgentTokens(0, 10); }), HasSubstr("the tokens of its agents"));
        EXPECT_THAT(refusal_of([&] { people->Evaluate(); }),
                    HasSubstr("which floors connections join, as Zone 'Everything' needs"));
        return;
    }
    EXPECT_TRUE(database->GetAgentTokens(0, 10).at(0).InternalEquals(id_of("Ticket")));
    EXPECT_THAT(database->GetAgentTokens(2, 10), IsEmpty());
    EXPECT_EQ(count("Hall", 10, std::make_shared<NamedFilter>(id_of("Holders"))), 2);
    EXPECT_EQ(count("Passage", 20, AgentFilter::InArea(id_of("Everything"))), 2) << "the passage joins both members";
    EXPECT_EQ(people->Evaluate()->GetSeries().at(0)->GetValues().at(3).GetZ(), 3) << "two of them in the passage";
}

TEST(ReleasedProjects, OpenAndAreSavedAsTheyWere) {
    auto const file = fixture("project-version-1.json");
    auto const project = Project::Open(file);
    EXPECT_THAT(project->GetWarningsFromOpen(), IsEmpty());
    EXPECT_THAT(project->GetObjects(), SizeIs(12));
    EXPECT_EQ(project->GetStartTimeInSeconds(), 28800);
    EXPECT_EQ(project->GetDurationInSeconds(), 10);
    EXPECT_EQ(project->GetZones().at(0)->GetMembershipType(), ZoneMembershipStrategy::BASE_MEMBERS_AND_CONNECTIONS);
    TemporaryDirectory const directory;
    std::filesystem::copy(fixture("results-format-2.pfdb"), directory.path());
    project->Save(directory.file("saved.json"));
    EXPECT_EQ(contents_of(directory.file("saved.json")), contents_of(file));
    project->Close();
}

}  // namespace
}  // namespace pedflux
