#include "engine/analysis/table_query_states.h"
#include "tests/engine/analysis/small_run.h"

namespace pedflux::engine {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The persons of the graphs' tests, frame for frame: 0 goes from the west to the east and arrives, 1 goes there twice
/// and is lost, 2 stays.
class TablesOfThree : public SmallRun {
  protected:
    TablesOfThree() {
        store({{1, {{8, 5}, {9, 5}, {11, 5, EAST}, {12, 5, EAST}, {12, 6, EAST}}, west_door, east_door, true},
               {2, {{9, 7}, {9, 7}, {11, 7, EAST}, {9, 7}, {9, 7}, {11, 7, EAST}, {11, 7, EAST}}, west_door, {}, false},
               {1, std::vector<Moment>(12, {2, 2})}},
              12);
    }
};

TEST_F(TablesOfThree, TripsAreMadeAgainAndAgain) {
    auto const trips = query<AgentTripTimeTableQueryState>();
    EXPECT_THAT(rows(*trips), ElementsAre("0 100.5 103 2.5")) << "the whole stay of who arrived";
    using enum TripBoundaryMethod;
    trips->SetTrip(std::make_shared<Trip>(west, east, ENTER, ENTER));
    EXPECT_THAT(rows(*trips), ElementsAre("0 100.5 101.5 1", "1 101 102 1", "1 102.5 103.5 1"));
    trips->SetTrip(std::make_shared<Trip>(west, east, ENTER, EXIT));
    EXPECT_THAT(rows(*trips), ElementsAre("0 100.5 103 2.5", "1 101 102.5 1.5", "1 102.5 104.5 2"));
    trips->SetTrip(std::make_shared<Trip>(west_door, east_door, EXIT, ENTER));
    EXPECT_THAT(rows(*trips), ElementsAre("0 100.5 103 2.5"));
    trips->SetTrip(std::make_shared<Trip>(east, west, ENTER, ENTER));
    EXPECT_THAT(rows(*trips), ElementsAre("1 102 102.5 0.5"));
    trips->SetTrip(std::make_shared<Trip>(west, east, ENTER, ENTER));
    trips->SetTimeRange(TimeRange(101, 103));
    EXPECT_THAT(rows(*trips), ElementsAre("1 101 102 1")) << "begun and ended in the range";
    trips->SetTimeRange(TimeRange(0, 1000));
    trips->SetAgentFilter(std::make_shared<ExitedAtFilter>(east_door));
    EXPECT_THAT(rows(*trips), ElementsAre("0 100.5 101.5 1"));
}

TEST_F(TablesOfThree, TimesInAreasAreCutByTheRange) {
    auto const times = query<AgentAreaTimeTableQueryState>();
    times->SetArea(east);
    EXPECT_THAT(rows(*times), ElementsAre("0 East 101.5 103 1.5", "1 East 102 102.5 0.5", "1 East 103.5 104.5 1"));
    times->SetAreas({east, halls});
    EXPECT_THAT(rows(*times), ElementsAre("0 East 101.5 103 1.5", "0 Halls 100.5 103 2.5", "1 East 102 102.5 0.5",
                                          "1 East 103.5 104.5 1", "1 Halls 101 104.5 3.5", "2 Halls 100.5 106.5 6"))
        << "a zone is not left on the way from one member to the other";
    times->SetArea(east);
    times->SetTimeRange(TimeRange(102, 103));
    EXPECT_THAT(rows(*times), ElementsAre("0 East 102 103 1", "1 East 102 102.5 0.5"));
    times->SetTimeRange(TimeRange(105, 106));
    EXPECT_THAT(rows(*times), IsEmpty());
    times->SetArea(west);
    EXPECT_THAT(rows(*times), ElementsAre("2 West 105 106.5 1.5")) << "to the end of the last frame of the range";
}

TEST_F(TablesOfThree, TransitionsAreListedInTheOrderOfTime) {
    auto const passages = query<AgentTransitionTableQueryState>();
    passages->SetTransition(Transition::AreaExit(east));
    EXPECT_THAT(rows(*passages), ElementsAre("1 102.5 East West", "0 103 East ", "1 104.5 East "));
    passages->SetTimeRange(TimeRange(102, 104));
    EXPECT_THAT(rows(*passages), ElementsAre("1 102.5 East West", "0 103 East "));
    passages->SetTransition(Transition::AreaEnter(west));
    passages->SetTimeRange(TimeRange(0, 1000));
    EXPECT_THAT(rows(*passages), ElementsAre("0 100.5  West", "2 100.5  West", "1 101  West", "1 102.5 East West"));
    passages->SetAgentFilter(std::make_shared<EndStateFilter>(AgentStateAtSimulationEnd::FAILED));
    EXPECT_THAT(rows(*passages), ElementsAre("1 101  West", "1 102.5 East West"));
}

TEST_F(TablesOfThree, SummariesAddUpTheWayWithinTheRange) {
    auto const summary = query<AgentSummaryTableQueryState>();
    auto const cells = [&](int row) {
        auto const table = summary->Evaluate();
        std::vector<double> found;
        for (int column = 3; column < 9; ++column) found.push_back(table->GetDoubleValue(row, column));
        return found;
    };
    // Start, end, duration, whether it arrived, metres, metres per second.
    EXPECT_THAT(cells(0), ElementsAre(100.5, 103, 2.5, 1, 5, 2.5)) << "1 + 2 + 1 + 1 m in four steps of half a second";
    EXPECT_THAT(cells(1), ElementsAre(101, 104.5, 3.5, 0, 6, 2));
    EXPECT_THAT(cells(2), ElementsAre(100.5, 106, 5.5, 0, 0, 0)) << "still there: to the last frame";
    summary->SetTimeRange(TimeRange(101, 102));
    EXPECT_THAT(cells(0), ElementsAre(100.5, 103, 2.5, 1, 3, 3)) << "the frames 2 to 4";
    summary->SetTimeRange(TimeRange(104, 104));
    EXPECT_THAT(cells(0), ElementsAre(101, 104.5, 3.5, 0, 0, 0)) << "person 0 has left; one frame is no way";
    EXPECT_EQ(summary->Evaluate()->GetRowCount(), 2);
}

TEST_F(TablesOfThree, AreasAreCrossedFromWhereToWhere) {
    auto const across = query<AreaOriginDestinationCountTableQueryState>();
    across->SetFloor(east);
    auto const labels = [&] {
        auto const table = across->Evaluate();
        std::vector<std::string> found;
        for (int column = 0; column < table->GetColumnCount(); ++column) found.push_back(table->GetColumnLabel(column));
        return found;
    };
    EXPECT_THAT(rows(*across), ElementsAre("West 1 1"));
    EXPECT_THAT(labels(), ElementsAre("East door", "West")) << "who is lost in it has crossed nothing";
    across->SetFloor(west);
    EXPECT_THAT(rows(*across), ElementsAre("East 1", "West door 2"));
    EXPECT_THAT(labels(), ElementsAre("East"));
    across->SetTimeRange(TimeRange(102, 103));
    EXPECT_THAT(rows(*across), ElementsAre("East 1")) << "entered in the range";
    across->SetZone(halls);
    across->SetTimeRange(TimeRange(0, 1000));
    across->SetOriginDestinationMatrixTableOutput(OriginDestinationMatrixTableOutput::LIST);
    EXPECT_THAT(rows(*across), ElementsAre("1 West door East door 1"));
}

TEST_F(TablesOfThree, StaysCountBetweenPortalsAsTheRangeSays) {
    auto const counts = query<SimulationOriginDestinationCountTableQueryState>();
    counts->SetOriginDestinationMatrixTableOutput(OriginDestinationMatrixTableOutput::LIST);
    using enum AgentCountIfInRangeType;
    // Person 0 is there from 100.5 to 103 s.
    struct Case {
        TimeRange range;
        bool start;
        bool end;
        bool part;
    };
    for (auto const& [range, start, end, part] : std::vector<Case>{{TimeRange(101, 102), false, false, true},
                                                                   {TimeRange(100, 102), true, false, true},
                                                                   {TimeRange(101, 103), false, true, true},
                                                                   {TimeRange(100, 103), true, true, true},
                                                                   {TimeRange(104, 105), false, false, false},
                                                                   {TimeRange(90, 100), false, false, false}}) {
        counts->SetTimeRange(range);
        auto const counted = [&](AgentCountIfInRangeType type) {
            counts->SetCountIfInRangeType(type);
            return !rows(*counts).empty();
        };
        SCOPED_TRACE(TimeRange(range).GetEndTimeInSeconds());
        EXPECT_EQ(counted(START_IN_RANGE), start);
        EXPECT_EQ(counted(END_IN_RANGE), end);
        EXPECT_EQ(counted(START_AND_END_IN_RANGE), start && end);
        EXPECT_EQ(counted(ANY_PART_IN_RANGE), part);
    }
}

using TablesOf = SmallRun;

TEST_F(TablesOf, ManyTakeTheirTimesTogether) {
    std::vector<Walker> people;
    for (int const frames : {2, 4, 12, 6}) {
        people.push_back({1, std::vector<Moment>(static_cast<std::size_t>(frames)), west_door, east_door, true});
    }
    people.push_back({1, std::vector<Moment>(2), east_door, west_door, true});
    people.push_back({1, std::vector<Moment>(2), west_door, east_door, false});
    store(people, 12);
    auto const times = query<SimulationOriginDestinationTimeTableQueryState>();
    struct Case {
        AggregationType type;
        char const* seconds;
    };
    for (auto const& [type, seconds] : std::vector<Case>{{AggregationType::MEAN, "3"},
                                                         {AggregationType::MINIMUM, "1"},
                                                         {AggregationType::MAXIMUM, "6"},
                                                         {AggregationType::SUM, "12"},
                                                         {AggregationType::MEDIAN, "2.5"}}) {
        times->SetAggregationType(type);
        EXPECT_THAT(rows(*times), ElementsAre("East door  1", "West door " + std::string(seconds) + " "));
    }
    auto const counts = query<SimulationOriginDestinationCountTableQueryState>();
    EXPECT_THAT(rows(*counts), ElementsAre("East door 0 1", "West door 4 0")) << "of five, one did not arrive";
}

TEST_F(TablesOf, LevelsOfServiceAreThoseOfTheSurface) {
    auto const feels = [](float density, std::uint16_t surface) {
        return Moment{surface == STAIR ? 22.F : 1, 1, surface, 0, density};
    };
    // Square metres per person: 5, 2.9, 2, 1.25, 0.67 and 0.33 on a level; 2 and 0.33 on a stair.
    store({{1,
            {feels(0.2F, WEST), feels(0.35F, WEST), feels(0.5F, WEST), feels(0.8F, WEST), feels(1.5F, WEST),
             feels(3, WEST)}},
           {1, {feels(0.5F, STAIR), feels(0.5F, STAIR), feels(3, STAIR)}}},
          6);
    auto const levels = query<AgentLevelOfServiceTimeTableQueryState>();
    EXPECT_THAT(rows(*levels), ElementsAre("0 0.5 0.5 0.5 0.5 0.5 0.5", "1 1 0 0 0 0 0.5"));
    levels->SetTimeRange(TimeRange(101, 102));
    EXPECT_THAT(rows(*levels), ElementsAre("0 0 0.5 0.5 0.5 0 0", "1 0.5 0 0 0 0 0.5"));
    levels->SetAgentFilter(AgentFilter::InArea(stair));
    EXPECT_THAT(rows(*levels), ElementsAre("1 0.5 0 0 0 0 0.5"));
}

TEST_F(TablesOf, EncountersAreJoinedOverGaps) {
    // Close in the frames 1 and 2 and from 4 to 6; the third person stands by in frame 5 alone.
    store({{1, std::vector<Moment>(6, {1, 1})},
           {1, {{2, 1}, {2, 1}, {8, 1}, {2, 1}, {2, 1}, {2, 1}}},
           {5, {{1, 2, WEST, 2}}}},
          6);
    auto const table = query<AgentProximityTableQueryState>();
    table->SetProximityDistance(1.2);
    EXPECT_THAT(rows(*table), ElementsAre("0 1 100.5 101.5 1", "0 1 102 103.5 1.5", "0 2 102.5 103 0.5"));
    table->SetMinInteractionDurationInSeconds(1.5);
    EXPECT_THAT(rows(*table), ElementsAre("0 1 102 103.5 1.5"));
    table->SetMaxGapDurationInSeconds(0.5);
    EXPECT_THAT(rows(*table), ElementsAre("0 1 100.5 103.5 3")) << "the gap counts with it";
    table->SetMinInteractionDurationInSeconds(0);
    table->SetMaxGapDurationInSeconds(0);
    table->SetTimeRange(TimeRange(101, 102));
    EXPECT_THAT(rows(*table), ElementsAre("0 1 101 101.5 0.5", "0 1 102 102.5 0.5"));
    table->SetTimeRange(TimeRange(0, 1000));
    table->SetViewType(AgentProximityTableViewType::BY_AGENT);
    EXPECT_THAT(rows(*table), ElementsAre("0 2 3 3", "1 1 2 2.5", "2 1 1 0.5"));
    table->SetAgentFilter(std::make_shared<SpeedFilter>(0, 1));
    EXPECT_THAT(rows(*table), ElementsAre("0 1 2 2.5", "1 1 2 2.5")) << "who is not selected meets nobody";
    table->SetAgentFilter(nullptr);
    table->SetOneWayInteractionViewAgentFilters(std::make_shared<SpeedFilter>(1, 9), nullptr);
    EXPECT_THAT(rows(*table), ElementsAre("2 0 102.5 103 0.5"));
}

TEST_F(TablesOf, NobodyAreEmpty) {
    store({}, 0);
    EXPECT_THAT(rows(*query<AgentSummaryTableQueryState>()), IsEmpty());
    EXPECT_THAT(rows(*query<AgentTripTimeTableQueryState>()), IsEmpty());
    EXPECT_THAT(rows(*query<AgentLevelOfServiceTimeTableQueryState>()), IsEmpty());
    EXPECT_THAT(rows(*query<AgentProximityTableQueryState>()), IsEmpty());
    EXPECT_THAT(rows(*query<SimulationOriginDestinationTimeTableQueryState>()),
                ElementsAre("East door  ", "West door  "));
    auto const times = query<AgentAreaTimeTableQueryState>();
    times->SetArea(west);
    EXPECT_THAT(rows(*times), IsEmpty());
}

}  // namespace
}  // namespace pedflux::engine
