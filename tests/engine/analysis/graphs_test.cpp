#include "engine/analysis/graph_query_states.h"
#include "tests/engine/analysis/small_run.h"

namespace pedflux::engine {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// Twelve frames, six seconds. Person 0, who is quick, comes by the west door: two frames in the west, three in the
/// east, out by the east door in the sixth frame. Person 1 comes by the west door in the second frame, goes to the east
/// in the fourth, to the west in the fifth, to the east in the seventh, and is lost after the eighth. Person 2 stands
/// in the west.
class GraphsOfThree : public SmallRun {
  protected:
    GraphsOfThree() {
        Moment const w{9, 5, WEST, 2};
        Moment const e{11, 5, EAST, 2};
        Moment const slow_w{9, 7};
        Moment const slow_e{11, 7, EAST};
        store({{1, {w, w, e, e, e}, west_door, east_door, true},
               {2, {slow_w, slow_w, slow_e, slow_w, slow_w, slow_e, slow_e}, west_door, {}, false},
               {1, std::vector<Moment>(12, {2, 2})}},
              12);
    }
};

TEST_F(GraphsOfThree, PopulationIsTheMeanOverAWindow) {
    auto const count = query<PopulationCountGraphQueryState>();
    // Frame by frame: 2, 3, 3, 3, 3, 2, 2, 2, 1, 1, 1, 1.
    EXPECT_THAT(values(*count), ElementsAre(2.5, 3, 2.5, 2, 1, 1));
    count->SetWindowSizeInSeconds(4);
    EXPECT_THAT(values(*count), ElementsAre(20 / 8.0, 1)) << "eight frames, and the four that are left";
    auto const times = count->Evaluate()->GetSeries().at(0)->GetValues();
    EXPECT_EQ(Vec2d(times.at(0)).GetX(), 4);
    EXPECT_EQ(Vec2d(times.at(1)).GetX(), 6);
    count->SetWindowSizeInSeconds(100);
    EXPECT_THAT(values(*count), ElementsAre(2)) << "24 over twelve frames";
    select(*count, std::make_shared<SpeedFilter>(1, 9));
    EXPECT_THAT(values(*count), ElementsAre(DoubleNear(5 / 12.0, 1e-12)));
}

TEST_F(GraphsOfThree, PopulationIsCountedForEachArea) {
    auto const count = query<PopulationCountGraphQueryState>();
    count->SetWindowSizeInSeconds(6);
    count->SetAreaIds({west, east, stair, halls});
    // In the west 2, 2 and 12 frames of person 0, 1 and 2, with 2 more of person 1; in the east 3 and 1 and 2.
    EXPECT_THAT(series(*count), ElementsAre(Pair("East", ElementsAre(6 / 12.0)), Pair("Halls", ElementsAre(24 / 12.0)),
                                            Pair("Stair", ElementsAre(0)), Pair("West", ElementsAre(18 / 12.0))));
}

TEST_F(GraphsOfThree, WindowsAreThoseOfTheClock) {
    auto const count = query<PopulationCountGraphQueryState>();
    count->SetTimeRange(TimeRange(101, 102));
    EXPECT_THAT(values(*count), ElementsAre(3, 3)) << "the second frame, and the third and fourth";
    EXPECT_EQ(count->Evaluate()->GetStartTimeInSeconds(), 1);
    EXPECT_EQ(count->Evaluate()->GetEndTimeInSeconds(), 2);
    count->SetWindowSizeInSeconds(3);
    count->SetTimeRange(TimeRange(102, 104));
    EXPECT_THAT(values(*count), ElementsAre(8 / 3.0, 2)) << "the frames 4 to 6, and 7 and 8";
    count->SetTimeRange(TimeRange(200, 300));
    EXPECT_THAT(values(*count), IsEmpty()) << "after the run";
    count->SetTimeRange(TimeRange(0, 99));
    EXPECT_THAT(values(*count), IsEmpty()) << "before it";
}

TEST_F(GraphsOfThree, FlowsCountEachTransitionThatHappens) {
    auto const flow = query<FlowCountGraphQueryState>();
    flow->SetWindowSizeInSeconds(6);
    struct Case {
        std::shared_ptr<Transition> transition;
        double times;
        char const* why;
    };
    auto const in = Transition::SimEnter(west_door);
    for (auto const& [transition, times, why] : std::vector<Case>{
             {Transition::AreaEnter(east), 3, "0 in frame 3, 1 in 4 and 7"},
             {Transition::AreaExit(east), 3, "1 in frame 5, 0 leaves in 6, 1 is lost in 9"},
             {Transition::AreaEnter(west), 4, "0 and 2 in frame 1, 1 in 2 and 5"},
             {Transition::AreaExit(west), 3, "0 in frame 3, 1 in 4 and 7"},
             {Transition::AreaEnter(halls), 3, "who goes from one hall to the other stays in the zone"},
             {Transition::AreaExit(halls), 2, "who leaves and who is lost"},
             {Transition::ChannelTransition(west, east), 3, ""},
             {Transition::ChannelTransition(east, west), 1, ""},
             {Transition::ChannelTransition(west_door, west), 2, ""},
             {Transition::ChannelTransition(east, east_door), 1, ""},
             {Transition::ChannelTransition(west_door, east), 0, "nobody came to the east by a door"},
             {Transition::AtPortal(west_door), 2, ""},
             {Transition::AtPortal(east_door), 1, ""},
             {in, 2, ""},
             {Transition::SimEnter(east_door), 0, ""},
             {Transition::SimExit(east_door), 1, ""},
             {Transition::SimExit(west_door), 0, ""},
             {Transition::AnyOf({in, Transition::AreaEnter(west)}), 4, "a passage that is both counts once"},
             {Transition::AnyOf({in, Transition::SimExit(east_door)}), 3, ""},
         }) {
        flow->SetTransitions({transition});
        EXPECT_THAT(values(*flow), ElementsAre(times)) << flow->Evaluate()->GetSeries().at(0)->GetName() << ": " << why;
    }
}

TEST_F(GraphsOfThree, FlowsAddUpOverWindows) {
    auto const flow = query<FlowCountGraphQueryState>();
    auto const total = query<CumulativeFlowCountGraphQueryState>();
    flow->SetTransitions({Transition::AreaEnter(east), Transition::AreaExit(east)});
    total->SetTransitions({Transition::AreaEnter(east)});
    EXPECT_THAT(series(*flow), ElementsAre(Pair("EnterAreaTransition East", ElementsAre(0, 2, 0, 1, 0, 0)),
                                           Pair("ExitAreaTransition East", ElementsAre(0, 0, 2, 0, 1, 0))));
    EXPECT_THAT(values(*total), ElementsAre(0, 2, 2, 3, 3, 3));
    flow->SetTransitions({Transition::AreaEnter(east)});
    for (GraphQuery* const either : std::vector<GraphQuery*>{flow.get(), total.get()}) {
        either->SetTimeRange(TimeRange(102, 103));
    }
    EXPECT_THAT(values(*flow), ElementsAre(1, 0)) << "frame 4, and 5 and 6";
    EXPECT_THAT(values(*total), ElementsAre(1, 1)) << "what came before the range does not count";
}

TEST_F(GraphsOfThree, FlowsAreOfThoseWhomTheFilterSelectsThen) {
    auto const flow = query<FlowCountGraphQueryState>();
    flow->SetWindowSizeInSeconds(6);
    auto const counted = [&](std::shared_ptr<Transition> const& transition,
                             std::shared_ptr<AgentFilter> const& filter) {
        flow->SetTransitions({transition});
        select(*flow, filter);
        return values(*flow).at(0);
    };
    auto const quick = std::make_shared<SpeedFilter>(1, 9);
    EXPECT_EQ(counted(Transition::AreaExit(east), quick), 1) << "judged by the last frame that shows the person";
    EXPECT_EQ(counted(Transition::AreaExit(east), AgentFilter::Negated(quick)), 2);
    EXPECT_EQ(counted(Transition::AreaEnter(east), AgentFilter::InArea(east)), 3) << "judged by the frame after it";
    EXPECT_EQ(counted(Transition::AreaEnter(east), AgentFilter::InArea(west)), 0);
    EXPECT_EQ(counted(Transition::AreaEnter(east), std::make_shared<ExitedAtFilter>(east_door)), 1);
}

using GraphsOf = SmallRun;

TEST_F(GraphsOf, DensitiesShowTheMeanAndTheGreatestOfSamples) {
    auto const feels = [](float density) { return Moment{1, 1, WEST, 0, density}; };
    // One sample a second: the frames 1, 3, 5 and 7; nobody is there in the last two of them.
    store({{1, {feels(0.5F), feels(9), feels(1.5F)}}, {1, {feels(1), feels(9)}}, {8, {feels(9)}}}, 8);
    auto const density = query<AgentDensityGraphQueryState>();
    EXPECT_THAT(series(*density),
                ElementsAre(Pair("Maximum", ElementsAre(1, 1.5)), Pair("Mean", ElementsAre(0.75, 1.5))));
    density->SetWindowSizeInSeconds(2);
    EXPECT_THAT(series(*density),
                ElementsAre(Pair("Maximum", ElementsAre((1 + 1.5) / 2)), Pair("Mean", ElementsAre((0.75 + 1.5) / 2))));
    density->SetSamplingPeriodInSeconds(2);
    EXPECT_THAT(series(*density), ElementsAre(Pair("Maximum", ElementsAre(1)), Pair("Mean", ElementsAre(0.75))))
        << "the frames 1 and 5";
    select(*density, std::make_shared<LocalDensityFilter>(0.8, 10));
    EXPECT_THAT(series(*density), ElementsAre(Pair("Maximum", ElementsAre(1)), Pair("Mean", ElementsAre(1))));
}

TEST_F(GraphsOf, RunsWithoutFramesAreEmpty) {
    store({}, 0);
    EXPECT_THAT(series(*query<AgentDensityGraphQueryState>()),
                ElementsAre(Pair("Maximum", IsEmpty()), Pair("Mean", IsEmpty())));
    EXPECT_THAT(values(*query<PopulationCountGraphQueryState>()), IsEmpty());
    EXPECT_THAT(values(*query<FlowCountGraphQueryState>()), IsEmpty());
}

}  // namespace
}  // namespace pedflux::engine
