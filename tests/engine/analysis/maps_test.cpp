#include "engine/analysis/map_query_states.h"
#include "tests/engine/analysis/small_run.h"

#include <cmath>

namespace pedflux::engine {
namespace {

std::shared_ptr<AgentFilter> fast() { return std::make_shared<SpeedFilter>(1, 9); }

/// Person 0, who is quick, is at (1.1, 1.1) in the first two frames and the fourth, and at (5.1, 5.1) in the third;
/// person 1 stands at (1.2, 1.2), in the same pixel, in the second and third. Nobody is there in the last four frames.
class MapsOfTwo : public SmallRun {
  protected:
    MapsOfTwo() {
        store({{1, {{1.1F, 1.1F, WEST, 2}, {1.1F, 1.1F, WEST, 2}, {5.1F, 5.1F, WEST, 2}, {1.1F, 1.1F, WEST, 2}}},
               {2, {{1.2F, 1.2F}, {1.2F, 1.2F}}}},
              8);
    }
};

TEST_F(MapsOfTwo, CountEachPersonOnceForAPixel) {
    auto const count = query<AgentCountMapQueryState>();
    EXPECT_EQ(value(*count, 1.1, 1.1), 2);
    EXPECT_EQ(value(*count, 5.1, 5.1), 1);
    EXPECT_EQ(value(*count, 8, 8), 0);
    EXPECT_EQ(value(*count, 15, 5), 0) << "nobody was in the east";
    count->SetAgentFilter(fast());
    EXPECT_EQ(value(*count, 1.1, 1.1), 1);
    count->SetAgentFilter(nullptr);
    count->SetTimeRange(TimeRange(102, 102));
    EXPECT_EQ(value(*count, 1.1, 1.1), 1) << "the fourth frame alone";
    count->SetTimeRange(TimeRange(103, 104));
    EXPECT_EQ(value(*count, 1.1, 1.1), 0) << "after the last one";
}

TEST_F(MapsOfTwo, AreOccupiedByOneAsByTwo) {
    auto const occupied = query<TimeOccupiedMapQueryState>();
    struct Case {
        TimeRange range;
        std::shared_ptr<AgentFilter> filter;
        double seconds;
    };
    for (auto const& [range, filter, seconds] :
         std::vector<Case>{{TimeRange(0, 1000), nullptr, 2},      // four frames
                           {TimeRange(0, 1000), fast(), 1.5},     // the first, second and fourth
                           {TimeRange(101, 102), nullptr, 1.5},   // from the second to the fourth
                           {TimeRange(101, 102), fast(), 1},      // the second and fourth
                           {TimeRange(103, 1000), nullptr, 0},    // nobody any more
                           {TimeRange(1000, 2000), nullptr, 0}})  // no frame at all
    {
        occupied->SetTimeRange(range);
        occupied->SetAgentFilter(filter);
        EXPECT_EQ(value(*occupied, 1.1, 1.1), seconds);
    }
}

TEST_F(MapsOfTwo, AreClearAfterTheLastPerson) {
    auto const clear = query<TimeUntilClearMapQueryState>();
    EXPECT_EQ(value(*clear, 1.1, 1.1), 2) << "the fourth frame";
    EXPECT_EQ(value(*clear, 5.1, 5.1), 1.5) << "the third";
    clear->SetTimeRange(TimeRange(101, 1000));
    EXPECT_EQ(value(*clear, 1.1, 1.1), 1) << "from the start of the range on";
    clear->SetAgentFilter(AgentFilter::Negated(fast()));
    EXPECT_EQ(value(*clear, 1.1, 1.1), 0.5) << "the third frame shows the slow one for the last time";
}

TEST_F(MapsOfTwo, DensityIsMeasuredInTheFramesOfTheRange) {
    auto const most = query<MaxDensityMapQueryState>();
    auto const mean = query<AverageDensityMapQueryState>();
    double const once = value(*most, 5.1, 5.1);
    EXPECT_GT(once, 0.2);
    EXPECT_NEAR(value(*mean, 5.1, 5.1), once / 8, 1e-5) << "in one of eight frames";
    mean->SetTimeRange(TimeRange(101, 102));
    EXPECT_NEAR(value(*mean, 5.1, 5.1), once / 3, 1e-5) << "in one of three";
    most->SetTimeRange(TimeRange(103, 104));
    EXPECT_EQ(value(*most, 5.1, 5.1), 0);
    auto const present = query<NonZeroAverageDensityMapQueryState>();
    present->SetTimeRange(TimeRange(103, 104));
    EXPECT_EQ(value(*present, 5.1, 5.1), 0) << "not the mean of nothing";
    auto const above = query<TimeAboveDensityMapQueryState>();
    above->SetDensityThreshold(once / 2);
    EXPECT_EQ(value(*above, 5.1, 5.1), 0.5);
    above->SetDensityThreshold(once * 2);
    EXPECT_EQ(value(*above, 5.1, 5.1), 0);
}

using MapsOf = SmallRun;

TEST_F(MapsOf, TellTheMeanTimeToTheExit) {
    // At the place in the frames 1 to 4 and gone in the fifth: 2, 1.5, 1 and 0.5 s. The other one comes by in the sixth
    // and is gone in the tenth: 2 s. The third one never arrives.
    Moment const place{3.1F, 3.1F, WEST, 2};
    Moment const elsewhere{7.1F, 7.1F};
    store({{1, {place, place, place, place}, {}, east_door, true},
           {6, {{3.1F, 3.1F}, elsewhere, elsewhere, elsewhere}, {}, west_door, true},
           {1, {{3.1F, 3.1F}, {3.1F, 3.1F}}}},
          10);
    auto const exit = query<AgentTimeToExitMapQueryState>();
    EXPECT_NEAR(value(*exit, 3.1, 3.1), (2 + 1.5 + 1 + 0.5 + 2) / 5, 1e-6);
    EXPECT_NEAR(value(*exit, 7.1, 7.1), (1.5 + 1 + 0.5) / 3, 1e-6);
    exit->SetAgentFilter(fast());
    EXPECT_NEAR(value(*exit, 3.1, 3.1), 1.25, 1e-6);
    EXPECT_TRUE(std::isnan(value(*exit, 7.1, 7.1)));
    exit->SetAgentFilter(std::make_shared<ExitedAtFilter>(west_door));
    EXPECT_NEAR(value(*exit, 3.1, 3.1), 2, 1e-6);
}

TEST_F(MapsOf, DrawNoPathAcrossWhatWasNotWalked) {
    // From the west to the east and back at another place, and a second person who comes to the same way later.
    store({{1, {{1, 1}, {15, 1, EAST}, {9, 1}, {9, 3}}}, {4, {{9, 5}, {9, 2.5F}}}}, 6);
    auto const paths = query<AgentPathMapQueryState>();
    auto const color = [&](double x, double z) {
        paths->SetMapDisplayObjects({west});
        return paths->Evaluate().at(0)->AsMap2d()->AsColorMap2d()->GetColorAtPosition({x, 0, z});
    };
    EXPECT_TRUE(color(1.1, 1.1).InternalEquals(Color::RED));
    EXPECT_TRUE(color(5, 1.1).InternalEquals(Color::CLEAR)) << "that way led through the east";
    EXPECT_TRUE(color(9.1, 2.1).InternalEquals(Color::RED));
    EXPECT_TRUE(color(9.1, 4.1).InternalEquals(Color::BLUE));
    EXPECT_TRUE(color(9.1, 2.9).InternalEquals(Color::BLUE)) << "the later one lies above";
    paths->SetTimeRange(TimeRange(101, 102));
    EXPECT_TRUE(color(9.1, 4.1).InternalEquals(Color::CLEAR)) << "not walked by the fourth frame";
    EXPECT_TRUE(color(1.1, 1.1).InternalEquals(Color::CLEAR)) << "left in the first one";
}

TEST_F(MapsOf, CountWhoIsNear) {
    // Two stand a metre apart all eight frames, a third one between them in the third and fourth; a fourth and a fifth
    // stand 0.2 m apart on either side of the line between the halls.
    std::vector<Moment> const a(8, {1, 1});
    std::vector<Moment> const b(8, {2, 1});
    std::vector<Moment> const here(8, {9.9F, 8});
    std::vector<Moment> const there(8, {10.1F, 8, EAST});
    store({{1, a}, {1, b}, {3, {{1.5F, 1}, {1.5F, 1}}}, {1, here}, {1, there}}, 8);

    auto const time = query<TimeInProximityMapQueryState>();
    for (auto const& [distance, seconds] : std::map<double, double>{{0.4, 0}, {0.5, 1}, {0.99, 1}, {1, 4}, {3, 4}}) {
        time->SetDistance(distance);
        EXPECT_EQ(value(*time, 1, 1), seconds) << distance;
    }
    EXPECT_EQ(value(*time, 1.5, 1), 1) << "two frames, in which two are near";
    EXPECT_EQ(value(*time, 9.9, 8), 0) << "who is on another surface is not near";
    time->SetTimeRange(TimeRange(102, 103));
    EXPECT_EQ(value(*time, 1, 1), 1.5) << "the frames 4 to 6";

    auto const most = query<MaximumProximityMapQueryState>();
    most->SetDistance(1);
    EXPECT_EQ(value(*most, 1, 1), 2) << "a second apart: the frames 1, 3, 5 and 7";
    most->SetSamplePeriod(2);
    EXPECT_EQ(value(*most, 1, 1), 1) << "the frames 1 and 5";
    EXPECT_TRUE(std::isnan(value(*most, 5, 5))) << "nobody stood there";

    auto const now = query<InstantaneousProximityMapQueryState>();
    now->SetDistance(1);
    EXPECT_EQ(value(*now, 1, 1), 1) << "in the last frame";
    EXPECT_TRUE(std::isnan(value(*now, 1.5, 1)));
    EXPECT_EQ(value(*now, 9.9, 8), 0);
}

TEST_F(MapsOf, RunsWithoutFramesAreEmpty) {
    store({}, 0);
    EXPECT_EQ(value(*query<AgentCountMapQueryState>(), 1, 1), 0);
    EXPECT_EQ(value(*query<TimeOccupiedMapQueryState>(), 1, 1), 0);
    EXPECT_EQ(value(*query<TimeUntilClearMapQueryState>(), 1, 1), 0);
    EXPECT_EQ(value(*query<AverageDensityMapQueryState>(), 1, 1), 0);
    EXPECT_EQ(value(*query<InstantaneousDensityMapQueryState>(), 1, 1), 0);
    EXPECT_EQ(value(*query<ExperiencedDensityMapQueryState>(), 1, 1), 0);
    EXPECT_TRUE(std::isnan(value(*query<AgentTimeToExitMapQueryState>(), 1, 1)));
    EXPECT_TRUE(std::isnan(value(*query<InstantaneousProximityMapQueryState>(), 1, 1)));
}

}  // namespace
}  // namespace pedflux::engine
