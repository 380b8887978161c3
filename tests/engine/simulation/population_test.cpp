#include "tests/engine/simulation/rooms.h"

#include <array>

namespace pedflux {
namespace {

using Source = std::shared_ptr<PopulationSource>;

/// Two rooms with one journey of a source, and tallies of who came and left where.
struct Populated : Rooms {
    explicit Populated(std::function<Source(Rooms&)> const& source) {
        people = project->CreateJourney("People");
        people->SetPopulationSource(source(*this));
        people->SetProfile(steady);
        for (auto const& portal : {west, north, east}) {
            came.push_back(total(Transition::SimEnter(portal)));
            left.push_back(total(Transition::SimExit(portal)));
        }
    }
    GlobalId total(std::shared_ptr<Transition> const& transition) const {
        auto const object = project->CreateTallyObject(numbered("Total"));
        object->SetTallyValueByAggregateSumOverTime(std::make_shared<TransitionTally>(transition));
        return object->GetId();
    }

    std::shared_ptr<Journey> people;
    std::vector<GlobalId> came, left;
};

template <class Kind, class... Arguments>
std::shared_ptr<Kind> source(Arguments&&... arguments) {
    return std::make_shared<Kind>(std::forward<Arguments>(arguments)...);
}

TEST(Populations, ComeFromAndGoWhereTheirSourceSays) {
    using Ids = std::vector<GlobalId>;
    using Count = CountPopulationSource;
    struct Case {
        char const* name;
        std::function<Source(Rooms&)> source;
        std::array<double, 3> came;  ///< by the west, north and east
        std::array<double, 3> left;
        double multiplier = 1;
    };
    std::vector<Case> const cases{
        {"count", [](Rooms& r) { return source<Count>(Ids{r.west}, Ids{r.east}, 4.0); }, {4, 0, 0}, {0, 0, 4}},
        {"multiplied",
         [](Rooms& r) { return source<Count>(Ids{r.west}, Ids{r.east}, 4.0); },
         {10, 0, 0},
         {0, 0, 10},
         2.5},
        {"weighted origins",
         [](Rooms& r) {
             auto const made = source<Count>(Ids{}, Ids{r.east}, 8.0);
             made->SetOriginsWeighted({r.west, r.north}, std::vector{3.0, 1.0});
             return made;
         },
         {6, 2, 0},
         {0, 0, 8}},
        {"weighted destinations",
         [](Rooms& r) {
             auto const made = source<Count>(Ids{r.west}, 4.0);
             made->SetDestinationsWeightedByChance({r.east, r.north}, std::vector{0.0, 1.0});
             return made;
         },
         {4, 0, 0},
         {0, 4, 0}},
        {"nearest destination",
         [](Rooms& r) {
             auto const made = source<Count>(Ids{r.west}, 4.0);
             made->SetDestinationsByLowestCost({r.east, r.north});
             return made;
         },
         {4, 0, 0},
         {0, 4, 0}},
        {"count per origin",
         [](Rooms& r) {
             return source<CountPerOriginPopulationSource>(Ids{r.west, r.north}, 3.0, Ids{r.east});
         },
         {3, 3, 0},
         {0, 0, 6}},
        {"count per destination",
         [](Rooms& r) {
             return source<CountPerDestinationPopulationSource>(Ids{r.west}, Ids{r.north, r.east}, 2.0);
         },
         {4, 0, 0},
         {0, 2, 2}},
        {"table of origins",
         [](Rooms& r) {
             return source<OriginTablePopulationSource>(std::vector<IdValuePair>{{r.west, 1}, {r.north, 3}},
                                                        Ids{r.east});
         },
         {1, 3, 0},
         {0, 0, 4}},
        {"table of destinations",
         [](Rooms& r) {
             return source<DestinationTablePopulationSource>(Ids{r.west},
                                                             std::vector<IdValuePair>{{r.north, 1}, {r.east, 3}});
         },
         {4, 0, 0},
         {0, 1, 3}},
        {"matrix",
         [](Rooms& r) {
             return source<ODMatrixPopulationSource>(Ids{r.west, r.east}, Ids{r.north, r.west},
                                                     std::vector{1.0, 0.0, 2.0, 3.0});
         },
         {1, 0, 5},
         {3, 3, 0}},
    };
    for (auto const& each : cases) {
        Populated scene(each.source);
        scene.project->SetPopulationMultiplier(each.multiplier);
        auto const simulation = scene.simulate();
        scene.run_until_empty(*simulation, 90);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(simulation->GetTallyValue(scene.came[i]), each.came[i]) << each.name << ", in by portal " << i;
            EXPECT_EQ(simulation->GetTallyValue(scene.left[i]), each.left[i]) << each.name << ", out by portal " << i;
        }
    }
}

TEST(Populations, DrawTheirDestinationsByChance) {
    Populated scene([](Rooms& r) {
        auto const made = source<CountPopulationSource>(std::vector{r.left}, 60.0);
        made->SetDestinationsByChance({r.east, r.north});
        return made;
    });
    auto const simulation = scene.simulate();
    scene.run_until_empty(*simulation, 120);
    double const north = simulation->GetTallyValue(scene.left[1]);
    EXPECT_NEAR(north, 30, 12) << "three standard deviations";
    EXPECT_EQ(simulation->GetTallyValue(scene.left[2]), 60 - north);
}

TEST(Populations, ArriveWhenTheirArrivalSays) {
    struct Case {
        char const* name;
        std::function<Source(Rooms&)> source;
        std::vector<double> times;  ///< seconds
    };
    auto const four = [](std::shared_ptr<PopulationArrival> const& arrival) {
        return [arrival](Rooms& rooms) {
            auto const made = source<CountPopulationSource>(std::vector{rooms.west}, std::vector{rooms.east}, 4.0);
            made->SetPopulationArrival(arrival);
            return made;
        };
    };
    std::vector<Case> const cases{
        {"instant", four(PopulationArrival::CreateInstant()), {0, 0, 0, 0}},
        {"even", four(PopulationArrival::CreateEvenlySpaced(20)), {0, 5, 10, 15}},
        {"drawn", four(PopulationArrival::CreateRandomDistribution(Distribution::CreateConstant(7))), {7, 7, 7, 7}},
        {"curve", four(PopulationArrival::CreateWeightedCurve({{10, 1}, {5, 0}, {18, 3}})), {0, 15, 21, 27}},
        {"schedule",
         [](Rooms& rooms) {
             return source<SchedulePopulationSource>(std::vector{rooms.west}, std::vector{rooms.east},
                                                     std::vector<DurationValuePair>{{8, 1}, {8, 0}, {8, 2}});
         },
         {0, 16, 20}},
    };
    for (auto const& each : cases) {
        Populated scene(each.source);
        auto const simulation = scene.simulate();
        std::vector<double> times;
        while (!simulation->IsDone()) {
            double const began = simulation->GetClock()->GetCurrentSecond();
            simulation->Step();
            while (static_cast<double>(times.size()) < simulation->GetTallyValue(scene.came[0])) times.push_back(began);
        }
        // At a portal of 2 m two come in at once, and the next ones when there is room again.
        EXPECT_THAT(times, testing::Pointwise(testing::DoubleNear(1.5), each.times)) << each.name;
    }
}

TEST(Populations, OfDisabledEventsStayAway) {
    Populated scene(
        [](Rooms& r) { return source<CountPopulationSource>(std::vector{r.west}, std::vector{r.east}, 4.0); });
    scene.people->SetEnabled(false);
    auto const simulation = scene.simulate();
    EXPECT_TRUE(simulation->IsDone());
    EXPECT_EQ(simulation->GetTallyValue(scene.came[0]), 0);
}

}  // namespace
}  // namespace pedflux
