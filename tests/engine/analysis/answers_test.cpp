#include "engine/analysis/graph_query_states.h"
#include "engine/analysis/map_query_states.h"
#include "engine/analysis/table_query_states.h"
#include "engine/behaviour/access/access_rule_states.h"
#include "engine/behaviour/events/event_states.h"
#include "engine/model/document.h"
#include "engine/model/kind.h"
#include "engine/results/run_writer.h"
#include "engine/scene/server_states.h"
#include "tests/engine/refusal.h"

#include <pedflux/database.h>
#include <pedflux/graphs.h>
#include <pedflux/tables.h>
#include <pedflux/timetables.h>

#include <cmath>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace pedflux::engine {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A run of ten frames, two a second, from 100 s of the day on. Two halls, west from x = 0 to 10 and east from 10 to
/// 20, with a wall from (5, 4) to (5, 10) in the west.
///
/// Person 0 walks from the west door along z = 2, one metre a frame from (6.5, 2) on, and leaves by the east door after
/// the eighth frame. Person 1 stands at (6.5, 6) all the time. Person 2 stands at (4.5, 6), behind the wall, in the
/// first four frames and is then lost.
class Answers : public testing::Test {
  protected:
    Answers() {
        west = document.add<FloorState>("West").id;
        east = document.add<FloorState>("East").id;
        west_door = document.add<PortalState>("West door").id;
        east_door = document.add<PortalState>("East door").id;
        token = document.add<TokenState>("Token").id;
        server = document.add<ServerState>("Server").id;
        journey = document.add<JourneyState>("Journey").id;
        auto& run = document.add<SimulationRunState>("Run");
        run.database_file_name = path;
        run_id = run.id;
        Ring const wall{{4.99, 4}, {5.01, 4}, {5.01, 10}, {4.99, 10}};
        Surface const halls[] = {
            {west, "West", SurfaceKind::LEVEL, {{{{0, 0}, {10, 0}, {10, 12}, {0, 12}}, {wall}}}, {}},
            {east, "East", SurfaceKind::LEVEL, {{{{10, 0}, {20, 0}, {20, 12}, {10, 12}}, {}}}, {}}};
        RunWriter writer(path, {"Run", 2, 100}, {halls[0], halls[1]});
        for (int frame = 1; frame <= 10; ++frame) {
            std::vector<AgentFrame> persons;
            auto const add = [&](std::uint32_t number, float x, float z, float density) {
                AgentFrame person;
                person.agent = number;
                person.surface = x < 10 ? 0 : 1;
                person.x = x;
                person.z = z;
                person.density = density;
                person.speed = number == 0 ? 2.F : 0.F;
                auto const activity = number == 0 ? AgentActivity::WALKING : AgentActivity::WAITING;
                person.activity = static_cast<std::uint8_t>(activity);
                person.color = {255, 0, 0, 255};
                persons.push_back(person);
            };
            if (frame <= 8) add(0, 5.5F + static_cast<float>(frame), 2, 0.5F);
            add(1, 6.5F, 6, 0.1F);
            if (frame <= 4) add(2, 4.5F, 6, 3);
            writer.write_frame(persons);
        }
        writer.finish({{{}, west_door, east_door, 1, 8, true, journey},
                       {{}, {}, {}, 1, 10, false},
                       {{}, {}, {}, 1, 4, false, journey}},
                      {{0, EpisodeKind::HELD_TOKEN, token, 3, 4},
                       {1, EpisodeKind::AT_SERVER, server, 2, 10},
                       {0, EpisodeKind::HELD_TOKEN, token, 7, 7}});
    }
    ~Answers() override { std::filesystem::remove(path); }

    template <class State>
    std::shared_ptr<typename State::Handle> query() {
        auto& state = document.add<State>(document.next_unique_name("Query"));
        state.run = run_id;
        return std::static_pointer_cast<typename State::Handle>(document.handle_of(state));
    }
    /// The value of the map of the west hall at a place.
    double value(MapQuery& found, double x, double z) {
        found.SetMapDisplayObjects({west});
        return found.Evaluate().at(0)->AsMap2d()->AsValueMap2d()->GetValueAtPosition({x, 0, z});
    }
    /// The rows of a table: the label and the cells as texts.
    std::vector<std::vector<std::string>> rows(TableQuery& found) {
        auto const table = found.Evaluate();
        std::vector<std::vector<std::string>> all;
        for (int row = 0; row < table->GetRowCount(); ++row) {
            auto& line = all.emplace_back(std::vector{table->GetRowLabel(row)});
            for (int column = 0; column < table->GetColumnCount(); ++column) {
                line.push_back(table->GetStringValue(row, column));
            }
        }
        return all;
    }
    std::vector<double> values(GraphQuery& found) {
        std::vector<double> all;
        for (auto& point : found.Evaluate()->GetSeries().at(0)->GetValues()) all.push_back(point.GetZ());
        return all;
    }

    std::string const path = testing::TempDir() + "answers-" + std::to_string(getpid()) + ".pfdb";
    Document document;
    GlobalId west;
    GlobalId east;
    GlobalId west_door;
    GlobalId east_door;
    GlobalId run_id;
    GlobalId journey;
    GlobalId token;
    GlobalId server;
};

TEST_F(Answers, OccupationAndTheWayOutAreMapped) {
    EXPECT_EQ(value(*query<TimeOccupiedMapQueryState>(), 6.5, 6), 5) << "ten frames of half a second";
    EXPECT_EQ(value(*query<TimeOccupiedMapQueryState>(), 7.5, 2), 0.5);
    auto const clear = query<TimeUntilClearMapQueryState>();
    EXPECT_EQ(value(*clear, 7.5, 2), 1) << "the second frame";
    EXPECT_EQ(value(*clear, 4.5, 6), 2);
    EXPECT_EQ(value(*clear, 1, 1), 0) << "nobody was ever there";
    auto const exit = query<AgentTimeToExitMapQueryState>();
    EXPECT_EQ(value(*exit, 6.5, 2), 4) << "from the first frame to the ninth";
    EXPECT_TRUE(std::isnan(value(*exit, 6.5, 6))) << "who stood there never arrived";
    auto const above = query<TimeAboveDensityMapQueryState>();
    above->SetDensityThreshold(0.2);
    EXPECT_EQ(value(*above, 6.5, 6), 5) << "one person alone makes 0.32 persons per square metre";
    above->SetDensityThreshold(0.9);
    EXPECT_EQ(value(*above, 6.5, 6), 0);
}

TEST_F(Answers, PathsAreDrawnAlongTheWholeWay) {
    auto const paths = query<AgentPathMapQueryState>();
    paths->SetMapDisplayObjects({west});
    auto const map = paths->Evaluate().at(0)->AsMap2d();
    ASSERT_EQ(map->AsValueMap2d(), nullptr);
    auto const picture = map->AsColorMap2d();
    EXPECT_TRUE(picture->GetColorAtPosition({7.05, 0, 2}).InternalEquals(Color::RED)) << "between two frames";
    EXPECT_TRUE(picture->GetColorAtPosition({6, 0, 2}).InternalEquals(Color::CLEAR)) << "before the first one";
}

TEST_F(Answers, WallsKeepPersonsApart) {
    auto const time = query<TimeInProximityMapQueryState>();
    time->SetDistance(2.5);
    EXPECT_EQ(value(*time, 6.5, 6), 0);
    time->SetIgnoreBarriers(true);
    EXPECT_EQ(value(*time, 6.5, 6), 2) << "the four frames in which the other one stands behind the wall";
    auto const most = query<MaximumProximityMapQueryState>();
    most->SetDistance(10);
    most->SetIgnoreBarriers(true);
    EXPECT_EQ(value(*most, 6.5, 6), 2);
    auto const table = query<AgentProximityTableQueryState>();
    table->SetProximityDistance(2.5);
    EXPECT_THAT(rows(*table), IsEmpty());
    table->SetIgnoreObstacles(true);
    EXPECT_THAT(rows(*table), ElementsAre(ElementsAre("1", "2", "100.5", "102.5", "2")));
    table->SetOneWayInteractionViewAgentFilters(std::make_shared<NotFilter>(std::make_shared<SpeedFilter>(1, 9)),
                                                nullptr);
    EXPECT_TRUE(table->IsOneWayInteractionView());
    EXPECT_THAT(rows(*table), ElementsAre(ElementsAre("1", "2", "100.5", "102.5", "2"),
                                          ElementsAre("2", "1", "100.5", "102.5", "2")));
    table->SetViewType(AgentProximityTableViewType::BY_AGENT);
    EXPECT_THAT(rows(*table), ElementsAre(ElementsAre("1", "1", "1", "2"), ElementsAre("2", "1", "1", "2")));
    table->SetMinInteractionDurationInSeconds(3);
    EXPECT_THAT(rows(*table), IsEmpty());
}

TEST_F(Answers, FlowsAreCountedWhereTransitionsHappen) {
    auto const flow = query<FlowCountGraphQueryState>();
    EXPECT_THAT(values(*flow), ElementsAre(0, 0, 0, 0, 1)) << "who leaves: the ninth frame";
    flow->SetTransitions({Transition::AreaEnter(east)});
    EXPECT_THAT(values(*flow), ElementsAre(0, 0, 1, 0, 0)) << "x = 10.5 in the fifth frame";
    auto const total = query<CumulativeFlowCountGraphQueryState>();
    total->SetTransitions({Transition::AtPortal(west_door)});
    total->SetWindowSizeInSeconds(2);
    EXPECT_THAT(values(*total), ElementsAre(1, 1, 1));
    std::shared_ptr<AgentFilter> standing = std::make_shared<SpeedFilter>(0, 1);
    total->SetAgentFilter(standing);
    EXPECT_THAT(values(*total), ElementsAre(0, 0, 0));
    total->ClearFilter();
    EXPECT_THAT(values(*total), ElementsAre(1, 1, 1));
    auto const density = query<AgentDensityGraphQueryState>();
    EXPECT_NEAR(values(*density).at(0), (0.5 + 0.1 + 3) / 3, 1e-6);
    EXPECT_NEAR(values(*density).at(4), 0.1, 1e-6);
}

TEST_F(Answers, PersonsFillTables) {
    EXPECT_THAT(rows(*query<AgentTripTimeTableQueryState>()), ElementsAre(ElementsAre("0", "100.5", "104.5", "4")));
    auto const trip = query<AgentTripTimeTableQueryState>();
    trip->SetTrip(std::make_shared<Trip>(west, east, TripBoundaryMethod::EXIT, TripBoundaryMethod::EXIT));
    EXPECT_THAT(rows(*trip), ElementsAre(ElementsAre("0", "102.5", "104.5", "2")));
    auto const area = query<AgentAreaTimeTableQueryState>();
    area->SetArea(east);
    EXPECT_THAT(rows(*area), ElementsAre(ElementsAre("0", "East", "102.5", "104.5", "2")));
    auto const levels = query<AgentLevelOfServiceTimeTableQueryState>();
    EXPECT_THAT(rows(*levels), ElementsAre(ElementsAre("0", "0", "0", "4", "0", "0", "0"),
                                           ElementsAre("1", "5", "0", "0", "0", "0", "0"),
                                           ElementsAre("2", "0", "0", "0", "0", "0", "2")));
    auto const passages = query<AgentTransitionTableQueryState>();
    EXPECT_THAT(refusal_of([&] { passages->Evaluate(); }), HasSubstr("needs a transition"));
    passages->SetTransition(Transition::ChannelTransition(west, east));
    EXPECT_THAT(rows(*passages), ElementsAre(ElementsAre("0", "102.5", "West", "East")));

    auto const summary = query<AgentSummaryTableQueryState>();
    summary->SetAgentFilter(AgentFilter::EnteredAt(west_door));
    auto const found = rows(*summary);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0][1], "West door");
    EXPECT_EQ(found[0][6], "4") << "seconds";
    EXPECT_EQ(found[0][8], "7") << "metres from the first frame to the eighth";
    EXPECT_EQ(found[0][9], "2") << "metres per second";
}

TEST_F(Answers, OriginsAndDestinationsAreCrossed) {
    auto const counts = query<SimulationOriginDestinationCountTableQueryState>();
    EXPECT_THAT(rows(*counts), ElementsAre(ElementsAre("East door", "0", "0"), ElementsAre("West door", "1", "0")))
        << "all portals by name";
    counts->SetPortals({west_door, east_door});
    EXPECT_THAT(rows(*counts), ElementsAre(ElementsAre("West door", "0", "1"), ElementsAre("East door", "0", "0")));
    EXPECT_FALSE(counts->ArePortalsSorted());
    counts->SetTimeRange(TimeRange(103, 110));
    EXPECT_EQ(rows(*counts)[0][2], "0") << "it came before";
    counts->SetCountIfInRangeType(AgentCountIfInRangeType::END_IN_RANGE);
    EXPECT_EQ(rows(*counts)[0][2], "1");
    auto const times = query<SimulationOriginDestinationTimeTableQueryState>();
    times->SetOriginDestinationMatrixTableOutput(OriginDestinationMatrixTableOutput::LIST);
    EXPECT_THAT(rows(*times), ElementsAre(ElementsAre("1", "West door", "East door", "4")));
    auto const across = query<AreaOriginDestinationCountTableQueryState>();
    EXPECT_THAT(refusal_of([&] { across->Evaluate(); }), HasSubstr("needs a floor or a zone"));
    across->SetFloor(east);
    EXPECT_THAT(rows(*across), ElementsAre(ElementsAre("West", "1")));
    EXPECT_THAT(refusal_of([&] { across->SetZone(east); }),
                HasSubstr("area must be the identifier of a Zone, not that of Floor 'East'"));
}

TEST_F(Answers, FiltersAreJudgedByTheRun) {
    auto const selected = [&](std::shared_ptr<AgentFilter> const& filter) {
        auto const levels = query<AgentLevelOfServiceTimeTableQueryState>();
        levels->SetAgentFilter(filter);
        std::string persons;
        for (auto const& row : rows(*levels)) persons += row[0];
        return persons;
    };
    auto const fast = std::make_shared<SpeedFilter>(1, 9);
    EXPECT_EQ(selected(nullptr), "012");
    EXPECT_EQ(selected(fast), "0");
    EXPECT_EQ(selected(AgentFilter::Negated(fast)), "12");
    EXPECT_EQ(selected(AgentFilter::InArea(east)), "0");
    EXPECT_EQ(selected(AgentFilter::ExitedAt(east_door)), "0");
    EXPECT_EQ(selected(std::make_shared<EndStateFilter>(AgentStateAtSimulationEnd::INSIDE)), "1");
    EXPECT_EQ(selected(std::make_shared<EndStateFilter>(AgentStateAtSimulationEnd::FAILED)), "2");
    EXPECT_EQ(selected(std::make_shared<ProximityFilter>(2.5, true)), "12");
    EXPECT_EQ(selected(AgentFilter::IsEver(AgentFilter::InArea(east))), "0");
    EXPECT_EQ(selected(AgentFilter::NoneOf({fast, AgentFilter::InArea(east)})), "12");
    EXPECT_EQ(selected(fast->And(AgentFilter::InArea(west))), "0");
    EXPECT_EQ(selected(std::make_shared<AtTransitionFilter>(Transition::AreaEnter(east))), "0");
    auto const at_server = std::make_shared<AtServerFilter>(server);
    auto const of_journey = std::make_shared<CreatedByFilter>(journey);
    auto const has_token = AgentFilter::HoldingToken(token);
    EXPECT_EQ(selected(std::make_shared<ActivityFilter>(AgentActivity::QUEUING)), "");
    EXPECT_EQ(selected(std::make_shared<ActivityFilter>(AgentActivity::WAITING)), "12");
    EXPECT_EQ(selected(of_journey), "02");
    EXPECT_EQ(selected(at_server), "1");
    EXPECT_EQ(selected(AgentFilter::NoneOf({at_server, has_token})), "012") << "each at some time";
    EXPECT_EQ(selected(AgentFilter::NoneOf({at_server, AgentFilter::IsEver(has_token)})), "12");
}

TEST_F(Answers, OldRunsTellNothingOfWhatTheyDidNotStore) {
    sqlite::Connection(path, sqlite::Connection::Mode::CREATE).execute(R"(
        ALTER TABLE agents DROP COLUMN event;
        DROP TABLE episodes;
        DROP TABLE joins;
        DROP TABLE objects;
        PRAGMA user_version = 1)");
    auto const count_of = [&](std::shared_ptr<AgentFilter> const& filter) {
        auto const levels = query<AgentLevelOfServiceTimeTableQueryState>();
        levels->SetAgentFilter(filter);
        return rows(*levels).size();
    };
    EXPECT_EQ(count_of(AgentFilter::InArea(west)), 3U);
    for (std::shared_ptr<AgentFilter> const& filter :
         {AgentFilter::HoldingToken(token), std::shared_ptr<AgentFilter>(std::make_shared<CreatedByFilter>(journey)),
          std::shared_ptr<AgentFilter>(std::make_shared<AtServerFilter>(server)),
          std::shared_ptr<AgentFilter>(std::make_shared<ActivityFilter>(AgentActivity::WAITING))}) {
        EXPECT_THAT(refusal_of([&] { count_of(filter); }), HasSubstr("recorded by an older release"));
    }
}

TEST_F(Answers, WhatIsNotEvaluatedYetSaysSo) {
    auto const vision = query<VisionTimeMapQueryState>();
    vision->SetMapDisplayObjects({west});
    std::vector<std::function<void()>> const questions{[&] { vision->Evaluate(); },
                                                       [&] { query<TallyGraphQueryState>()->Evaluate(); },
                                                       [&] { query<ServerSummaryTableQueryState>()->Evaluate(); }};
    for (auto const& question : questions) EXPECT_THAT(refusal_of(question), HasSubstr("cannot be evaluated yet"));
}

TEST_F(Answers, SettersRefuseAndClear) {
    auto const proximity = query<MaximumProximityMapQueryState>();
    auto const table = query<AgentProximityTableQueryState>();
    auto const cost = query<AgentSocialCostTableQueryState>();
    auto const elevators = query<AgentElevatorTripTimeTableQueryState>();
    auto const graph = query<VolumeDensityGraphQueryState>();
    struct Case {
        std::function<void()> set;
        char const* message;
    };
    for (auto const& [set, message] : std::vector<Case>{
             {[&] { proximity->SetDistance(0); }, "distance must be greater than 0 m, not 0"},
             {[&] { proximity->SetDistance(std::nan("")); }, "distance must be greater than 0 m, not nan"},
             {[&] { proximity->SetSamplePeriod(0); }, "samplePeriod must be at least 1, not 0"},
             {[&] { proximity->SetAgentFilter(AgentFilter::InArea(run_id)); },
              "agentFilter.area must be the identifier of a portal, floor"},
             {[&] { table->SetMaxGapDurationInSeconds(-1); }, "maxGapDurationInSeconds must be at least 0 s, not -1"},
             {[&] { table->SetViewType(static_cast<AgentProximityTableViewType>(9)); },
              "viewType must be one of INTERACTIONS (0), BY_AGENT (1)"},
             {[&] { table->SetOneWayInteractionViewAgentFilters(nullptr, AgentFilter::InArea(run_id)); },
              "oneWayInteractionTargetAgentFilter.area must be the identifier of a portal"},
             {[&] { cost->SetDaysPerYear(367); }, "daysPerYear must be at least 1 and at most 366 days, not 367"},
             {[&] { elevators->SetRestrictedOriginStops({west_door}); },
              "a floor at which an elevator stops, not that of Portal 'West door'"},
             {[&] { elevators->SetElevators({west}); }, "an elevator, not that of Floor 'West'"},
             {[&] {
                  graph->SetSimulationRunIds({run_id, run_id});
              },
              "must be a list of different objects"},
             {[&] { query<FlowCountGraphQueryState>()->SetTransitions({nullptr}); },
              "transitions.0 must be given, not empty"}}) {
        EXPECT_THAT(refusal_of(set), HasSubstr(message));
    }
    EXPECT_FALSE(table->IsOneWayInteractionView()) << "a refused filter changes nothing";

    proximity->SetSamplePeriod(4294967295U);
    EXPECT_EQ(proximity->GetSamplePeriod(), 4294967295U);
    EXPECT_EQ(proximity->GetAgentFilter(), nullptr);
    auto const filter = std::make_shared<SpeedFilter>(1, 2);
    proximity->SetAgentFilter(filter);
    filter->ClearSpeeds();
    EXPECT_TRUE(std::dynamic_pointer_cast<SpeedFilter>(proximity->GetAgentFilter())->HasRangeMin())
        << "the query keeps a copy";
    elevators->SetRestrictedOriginStops({west});
    EXPECT_TRUE(elevators->UsesRestrictedOriginStops());
    elevators->SetUseAllOriginStops();
    EXPECT_THAT(elevators->GetRestrictedOriginStops(), IsEmpty());
    static_cast<GraphQuery&>(*graph).SetSimulationRunId(run_id);
    EXPECT_EQ(graph->GetSimulationRunIds().size(), 1U) << "through the base as well";
    graph->SetSimulationRunIds({});
    EXPECT_FALSE(graph->GetSimulationRunId().IsValid());
}

}  // namespace
}  // namespace pedflux::engine
