#include "engine/behaviour/population/population_handle.h"
#include "engine/model/codec.h"
#include "tests/engine/refusal.h"

#include <pedflux/distributions.h>
#include <pedflux/exception.h>
#include <pedflux/population_sources.h>

#include <functional>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace pedflux::engine {
namespace {

using Ids = std::vector<GlobalId>;
using Numbers = std::vector<double>;

struct PopulationSources : testing::Test {
    GlobalId a = GlobalId::Generate();
    GlobalId b = GlobalId::Generate();
    GlobalId c = GlobalId::Generate();
    GlobalId x = GlobalId::Generate();
    GlobalId y = GlobalId::Generate();

    // A source of each kind, with the persons that it makes in all.
    struct Sample {
        std::shared_ptr<PopulationSource> source;
        double total;
        DestinationAssignment assignment;
    };
    std::vector<Sample> samples() const {
        using enum DestinationAssignment;
        auto const weighted = std::make_shared<CountPopulationSource>(Ids{a}, 12.5);
        weighted->SetOriginsWeighted(Ids{a, b}, Numbers{1, 3});
        weighted->SetDestinationsWeightedByChance(Ids{x, y}, Numbers{2, 0});
        auto const random = std::make_shared<CountPerOriginPopulationSource>(Ids{a, b, c}, 4);
        random->SetDestinationsByLowestCost({x, y});
        random->SetPopulationArrival(PopulationArrival::CreateRandomDistribution(Distribution::CreateUniform(5, 59.5)));
        return {
            {std::make_shared<CountPopulationSource>(Ids{a, b}, Ids{x}, 7), 7, BY_CHANCE},
            {weighted, 12.5, WEIGHTED_BY_CHANCE},
            {random, 12, BY_LOWEST_COST},
            {std::make_shared<CountPerDestinationPopulationSource>(Ids{a}, Ids{x, y}, 2.5), 5, BY_COUNT},
            {std::make_shared<OriginTablePopulationSource>(std::vector{IdValuePair(a, 3), IdValuePair(b, 4)}, Ids{x}),
             7, BY_CHANCE},
            {std::make_shared<DestinationTablePopulationSource>(Ids{a}, std::vector{IdValuePair(x, 3)}), 3, BY_COUNT},
            {std::make_shared<SchedulePopulationSource>(
                 Ids{a}, Ids{x}, std::vector{DurationValuePair(60, 10), DurationValuePair(30.5, 5)}),
             15, BY_CHANCE},
            {std::make_shared<ODMatrixPopulationSource>(Ids{a, b}, Ids{x, y}, Numbers{1, 2, 3, 4}), 10, BY_COUNT},
        };
    }
};

Json written(PopulationSource const& source) { return json_of(population_of(source)); }

TEST_F(PopulationSources, AddUpAndTellHowDestinationsAreFound) {
    for (auto const& sample : samples()) {
        EXPECT_EQ(sample.source->GetTotalPopulationCount(), sample.total);
        EXPECT_EQ(sample.source->GetDestinationAssignment(), sample.assignment);
    }
}

TEST_F(PopulationSources, CloneDeeplyAndSurviveFiles) {
    std::vector<Issue> warnings;
    Reading reading{warnings, ""};
    for (auto const& sample : samples()) {
        auto const before = written(*sample.source);
        auto const clone = sample.source->Clone();
        auto const& same_class = *clone;
        auto const& original_class = *sample.source;
        EXPECT_EQ(typeid(same_class), typeid(original_class));
        EXPECT_EQ(written(*clone), before);
        PopulationAccess::population(*clone).origins.clear();
        EXPECT_EQ(written(*sample.source), before);

        Population opened;
        read_json(opened, Json::parse(before.dump()), reading);
        EXPECT_EQ(written(*make_source(opened)), before);
    }
    EXPECT_TRUE(warnings.empty());

    CountPopulationSource const original({a}, {x}, 7);
    CountPopulationSource copy(original);
    copy.SetPopulationCount(8);
    EXPECT_EQ(original.GetPopulationCount(), 7);
}

TEST_F(PopulationSources, GiveWeightsAsListsAndAsPairs) {
    CountPopulationSource source({a, b}, 1);
    EXPECT_FALSE(source.HasOriginWeights());
    EXPECT_TRUE(source.GetOriginWeightPairs().empty());
    source.SetOriginsWeighted({IdValuePair(b, 2), IdValuePair(c, 3)});
    source.SetDestinationsWeightedByChance({IdValuePair(y, 5)});
    EXPECT_EQ(source.GetOriginWeights(), (Numbers{2, 3}));
    auto pairs = source.GetOriginWeightPairs();
    ASSERT_EQ(pairs.size(), 2U);
    EXPECT_TRUE(pairs[1].GetId().InternalEquals(c));
    EXPECT_EQ(pairs[1].GetValue(), 3);
    EXPECT_EQ(source.GetDestinationWeights(), Numbers{5});
    source.SetOrigins({a});
    source.SetDestinationsByChance({x});
    EXPECT_FALSE(source.HasOriginWeights());
    EXPECT_FALSE(source.HasDestinationWeights());
}

TEST_F(PopulationSources, AnswerTheTablesByPlace) {
    OriginTablePopulationSource const origins({IdValuePair(a, 3), IdValuePair(b, 4)});
    EXPECT_EQ(origins.GetPopulationForOrigin(b), 4);
    EXPECT_THROW(origins.GetPopulationForOrigin(c), Exception);
    DestinationTablePopulationSource const destinations({a}, {IdValuePair(x, 3), IdValuePair(y, 4)});
    EXPECT_EQ(destinations.GetPopulationForDestination(y), 4);
    EXPECT_THROW(destinations.GetPopulationForDestination(GlobalId::INVALID), Exception);
}

TEST_F(PopulationSources, MatrixStandsInRowsOfOneOrigin) {
    ODMatrixPopulationSource matrix({a, b}, {x, y}, {1, 2, 3, 0});
    EXPECT_EQ(matrix.GetPopulationDataIndexForOD(b, x), 2);
    EXPECT_EQ(matrix.GetPopulationForOD(a, y), 2);
    EXPECT_EQ(matrix.GetODMatrixEntriesAll().size(), 4U);
    auto const entries = matrix.GetODMatrixEntriesNonZero();
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_TRUE(entries[2]->GetOrigin().InternalEquals(b));
    EXPECT_EQ(entries[2]->GetPopulation(), 3);
    ODMatrixPopulationSource const again(entries);
    EXPECT_EQ(written(again), written(matrix));

    matrix.SetPopulationForOD(b, y, 9);
    matrix.SetOrigins({c, b});  // b keeps its row at its new place
    EXPECT_EQ(matrix.GetPopulationData(), (Numbers{0, 0, 3, 9}));
    matrix.SetDestinations({y});
    EXPECT_EQ(matrix.GetPopulationData(), (Numbers{0, 9}));
    EXPECT_FALSE(matrix.HasOrigin(a));
    EXPECT_TRUE(matrix.HasDestination(y));
    EXPECT_EQ(matrix.GetOriginCount() * matrix.GetDestinationCount(), 2);
    EXPECT_TRUE(ODMatrixPopulationSource({a}, {x}, {0}).GetODMatrixEntriesNonZero().empty());
}

TEST_F(PopulationSources, ArrivalsTellTheirKindAndLength) {
    struct Case {
        std::shared_ptr<PopulationArrival> arrival;
        PopulationArrivalTypeId type;
        int seconds;
    };
    auto const delay = Distribution::CreateUniform(1, 9.25);
    auto const random = PopulationArrival::CreateRandomDistribution(delay);
    delay->SetMax(1000);  // the arrival has a copy
    auto const curve = PopulationArrival::CreateWeightedCurve({DurationValuePair(60, 1), DurationValuePair(0.5, 0)});
    for (auto const& each :
         {Case{PopulationArrival::CreateInstant(), PopulationArrivalTypeId::INSTANT, 0},
          Case{PopulationArrival::CreateEvenlySpaced(90), PopulationArrivalTypeId::EVENLY_SPACED, 90},
          Case{random, PopulationArrivalTypeId::RANDOM_DISTRIBUTION, 10},
          Case{curve, PopulationArrivalTypeId::WEIGHTED_CURVE, 61}}) {
        CountPopulationSource source({a}, 1);
        source.SetPopulationArrival(each.arrival);
        EXPECT_EQ(source.GetPopulationArrivalTypeId(), each.type);
        EXPECT_EQ(source.GetPopulationArrivalDurationInSeconds(), each.seconds);
        auto const back = source.GetPopulationArrival();
        EXPECT_EQ(back->GetPopulationArrivalDurationInSeconds(), each.seconds);
        EXPECT_EQ(back->GetDistribution() != nullptr, each.type == PopulationArrivalTypeId::RANDOM_DISTRIBUTION);
        EXPECT_EQ(back->GetWeightedCurvePairs().size(), each.type == PopulationArrivalTypeId::WEIGHTED_CURVE ? 2U : 0U);
    }
    EXPECT_EQ(SchedulePopulationSource().GetPopulationArrivalTypeId(), PopulationArrivalTypeId::WEIGHTED_CURVE);
}

TEST_F(PopulationSources, RefuseWhatDoesNotFitAndStayAsTheyAre) {
    CountPopulationSource count({a, b}, {x}, 7);
    CountPerOriginPopulationSource per_origin({a}, 1);
    OriginTablePopulationSource table({IdValuePair(a, 3)});
    SchedulePopulationSource schedule({a}, {DurationValuePair(60, 10)});
    ODMatrixPopulationSource matrix({a}, {x, y}, {1, 2});
    auto const of_a = GlobalId(a).GetString();
    auto const entry = std::make_shared<ODMatrixEntry>(a, x, 1);
    struct Case {
        std::function<void()> action;
        std::string message;
    };
    Case const cases[]{
        {[&] {
             count.SetOriginsWeighted(Ids{a, b, c}, Numbers{1, 2});
         },
         "CountPopulationSource: origins number 3, their weights 2; there must be as many of one as of the other"},
        {[&] { count.SetOriginsWeighted(Ids{a}, Numbers{}); },
         "CountPopulationSource: origins number 1, their weights 0; there must be as many of one as of the other"},
        {[&] {
             count.SetDestinationsWeightedByChance(Ids{x}, Numbers{1, 2});
         },
         "CountPopulationSource: destinations number 1, their weights 2; there must be as many of one as of the other"},
        {[&] {
             count.SetOriginsWeighted(Ids{a, b}, Numbers{0, 0});
         },
         "CountPopulationSource: origin weights are all 0; at least one must be above 0"},
        {[&] {
             count.SetDestinationsWeightedByChance(Ids{x, y}, Numbers{1, -2});
         },
         "CountPopulationSource: destination weight 1 is -2; it must be a finite number of 0 or more"},
        {[&] {
             count.SetOrigins({a, GlobalId::INVALID});
         },
         "CountPopulationSource: origin 1 is the invalid identifier; it must be that of an object"},
        {[&] {
             count.SetOrigins({a, b, a});
         },
         "CountPopulationSource: origin 2 is " + of_a + ", which the list holds already; each may occur once"},
        {[&] { count.SetPopulationCount(-1); },
         "CountPopulationSource: population count is -1; it must be a finite number of 0 or more"},
        {[&] { count.SetPopulationCount(std::numeric_limits<double>::infinity()); },
         "CountPopulationSource: population count is inf; it must be a finite number of 0 or more"},
        {[&] { count.SetPopulationArrival(nullptr); }, "CountPopulationSource: the arrival is empty; it must be given"},
        {[&] { per_origin.SetPopulationCountPerOrigin(-3); },
         "CountPerOriginPopulationSource: population count is -3; it must be a finite number of 0 or more"},
        {[&] { table.SetOriginsAndPopulations({IdValuePair(a, -1)}); },
         "OriginTablePopulationSource: number of persons 0 is -1; it must be a finite number of 0 or more"},
        {[&] { schedule.SetDurationPopulationPairs({DurationValuePair(60, -1)}); },
         "SchedulePopulationSource: period 0, value is -1; it must be a finite number of 0 or more"},
        {[&] {
             schedule.SetDurationPopulationPairs({DurationValuePair(2e9, 1), DurationValuePair(2e9, 1)});
         },
         "SchedulePopulationSource: the arrival lasts 4e+09 s; it may last 2147483647 s"},
        {[&] { matrix.SetPopulationData({1}); },
         "ODMatrixPopulationSource: numbers of persons number 1, places or pairs of them 2; there must be as many of "
         "one as of the other"},
        {[&] { matrix.SetPopulationForOD(a, c, 1); },
         "ODMatrixPopulationSource: " + GlobalId(c).GetString() + " is none of its destinations"},
        {[&] {
             matrix.SetFromODMatrixEntries({entry, nullptr});
         },
         "ODMatrixPopulationSource: entry 1 is empty; it must be given"},
        {[&] {
             matrix.SetFromODMatrixEntries({entry, entry});
         },
         "ODMatrixPopulationSource: entry 1 has the origin and destination of an earlier one; each pair may occur "
         "once"},
        {[&] { PopulationArrival::CreateEvenlySpaced(0); },
         "PopulationArrival: an even arrival lasts 0 s; it must last at least 1 s"},
        {[&] { PopulationArrival::CreateRandomDistribution(Distribution::CreateUniform(-1, 5)); },
         "PopulationArrival: the least delay is -1; it must be a finite number of 0 or more"},
        {[&] { PopulationArrival::CreateRandomDistribution(Distribution::CreateUniform(5, 1)); },
         "UniformDistribution: min is 5 and max is 1; min must not exceed max"},
        {[&] { PopulationArrival::CreateRandomDistribution(nullptr); },
         "PopulationArrival: the distribution is empty; it must be given"},
        {[&] { PopulationArrival::CreateWeightedCurve({}); },
         "PopulationArrival: the curve has no periods; it must have at least one"},
        {[&] { PopulationArrival::CreateWeightedCurve({DurationValuePair(60, 0)}); },
         "PopulationArrival: period values are all 0; at least one must be above 0"},
    };
    std::vector<Json> before;
    for (PopulationSource const* source :
         std::initializer_list<PopulationSource const*>{&count, &per_origin, &table, &schedule, &matrix})
        before.push_back(written(*source));
    for (auto const& each : cases) EXPECT_EQ(refusal_of(each.action), each.message);
    std::vector<Json> after;
    for (PopulationSource const* source :
         std::initializer_list<PopulationSource const*>{&count, &per_origin, &table, &schedule, &matrix})
        after.push_back(written(*source));
    EXPECT_EQ(before, after);
}

// What a damaged file may hold is refused when it is checked.
TEST_F(PopulationSources, DataThatNoSetterMakesAreRefused) {
    struct Case {
        PopulationSourceTypeId type;
        std::function<void(Population&)> damage;
    };
    using enum PopulationSourceTypeId;
    Case const cases[]{
        {COUNT, [](Population& data) { data.assignment = DestinationAssignment::BY_COUNT; }},
        {COUNT, [](Population& data) { data.amounts = {1}; }},
        {COUNT_PER_DESTINATION, [](Population& data) { data.assignment = DestinationAssignment::BY_CHANCE; }},
        {SCHEDULE, [](Population& data) { data.arrival = InstantArrival{}; }},
        {COUNT, [](Population& data) { data.arrival = CurveArrival{}; }},
        {COUNT, [](Population& data) { data.destination_weights = {1}; }},
        {OD_MATRIX, [&](Population& data) { data.origins = {a}, data.origin_weights = {1}; }},
    };
    for (auto const& each : cases) {
        auto population = empty_population(each.type);
        EXPECT_NO_THROW(require_valid(population));
        each.damage(population);
        EXPECT_THROW(require_valid(population), Exception);
    }
}

}  // namespace
}  // namespace pedflux::engine
