#include "engine/analysis/density.h"
#include "engine/analysis/graph_query_states.h"
#include "engine/analysis/map_query_states.h"
#include "engine/model/document.h"
#include "engine/model/kind.h"
#include "engine/results/run_writer.h"
#include "tests/engine/refusal.h"

#include <pedflux/database.h>
#include <pedflux/graph_queries.h>
#include <pedflux/graphs.h>
#include <pedflux/map_queries.h>

#include <cmath>
#include <filesystem>
#include <numbers>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace pedflux::engine {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

Surface square(GlobalId const& id, double side) {
    return {id, "Square", SurfaceKind::LEVEL, {{{{0, 0}, {side, 0}, {side, side}, {0, side}}, {}}}, {}};
}

TEST(Density, OfAnEvenCrowdIsItsNumberOverTheArea) {
    auto const raster = raster_of(square({}, 10));
    DensityField field(raster);
    // Two persons on each square metre, up to the walls.
    for (double x = 0.25; x < 10; x += 0.5) {
        for (double z = 0.5; z < 10; z += 1) field.add_person(x, z);
    }
    field.end_frame();
    for (std::size_t pixel = 0; pixel < raster->size(); ++pixel) EXPECT_NEAR(field.at(pixel).last, 2, 0.1);
}

TEST(Density, OfOnePersonFallsWithTheSquareOfTheDistance) {
    auto const raster = raster_of(square({}, 10));
    DensityField field(raster);
    field.add_person(5.125, 5.125);
    field.end_frame();
    auto const at = [&](double x) { return field.at(raster->index(static_cast<int>(x / 0.25), 20)).last; };
    EXPECT_NEAR(at(5.125), 1 / std::numbers::pi, 0.01) << "one person over the area of the weights, pi R^2";
    EXPECT_NEAR(at(6.125) / at(5.125), std::exp(-1), 1e-4);
    EXPECT_EQ(at(7.5), 0);
    field.add_person(-50, 5);
    field.add_person(5, 1e6);
    field.end_frame();
    EXPECT_EQ(at(5.125), 0) << "persons beside the map count nowhere";
}

/// A project with a run of four frames on one floor: nobody, two at one place, one of them, nobody.
class Queries : public testing::Test {
  protected:
    Queries() {
        auto& floor = document.add<FloorState>("Square");
        floor_id = floor.id;
        auto& zone = document.add<ZoneState>("Zone");
        zone.base_members = {floor_id};
        zone_id = zone.id;
        auto& run = document.add<SimulationRunState>("Run");
        run.database_file_name = path;
        run_id = run.id;
        auto const person = [](std::uint32_t number) {
            AgentFrame state;
            state.agent = number;
            state.x = 5.125F;
            state.z = 5.125F;
            return state;
        };
        RunWriter writer(path, {"Run", 2, 100}, {square(floor_id, 10)});
        writer.write_frame({});
        writer.write_frame(std::vector{person(0), person(1)});
        writer.write_frame(std::vector{person(1)});
        writer.write_frame({});
        writer.finish({{{}, {}, {}, 2, 2, true}, {{}, {}, {}, 2, 3, true}});
    }
    ~Queries() override { std::filesystem::remove(path); }

    template <class State>
    std::shared_ptr<typename State::Handle> query(std::string const& name) {
        auto& state = document.add<State>(name);
        state.run = run_id;
        return std::static_pointer_cast<typename State::Handle>(document.handle_of(state));
    }
    /// The value of the map in the middle.
    template <class Query>
    double value(Query& found) const {
        found.SetMapDisplayObjects({floor_id});
        auto const maps = found.Evaluate();
        return maps.at(0)->AsMap2d()->AsValueMap2d()->GetValueAtPosition({5.125, 0, 5.125});
    }

    std::string const path = testing::TempDir() + "queries-" + std::to_string(getpid()) + ".pfdb";
    Document document;
    GlobalId floor_id;
    GlobalId zone_id;
    GlobalId run_id;
};

TEST_F(Queries, DensityMapsShowTheirMeasures) {
    double const one = 1 / std::numbers::pi;
    auto const average = query<AverageDensityMapQueryState>("Average");
    EXPECT_NEAR(value(*average), 3 * one / 4, 0.01);
    EXPECT_NEAR(value(*query<MaxDensityMapQueryState>("Max")), 2 * one, 0.01);
    EXPECT_NEAR(value(*query<NonZeroAverageDensityMapQueryState>("NonZero")), 3 * one / 2, 0.01);
    EXPECT_NEAR(value(*query<ExperiencedDensityMapQueryState>("Experienced")), 5 * one / 3, 0.01);
    EXPECT_EQ(value(*query<InstantaneousDensityMapQueryState>("Instantaneous")), 0);
    EXPECT_EQ(value(*query<AgentCountMapQueryState>("Count")), 2);
    // The run starts at 100 s of the day and has two frames a second.
    average->SetTimeRange(TimeRange(101, 101));
    EXPECT_NEAR(value(*average), 2 * one, 0.01) << "the second frame, at 101 s";
    average->SetTimeRange(TimeRange(500, 600));
    EXPECT_EQ(value(*average), 0) << "no frame at all";
}

TEST_F(Queries, MapsAreKeptUntilSomethingChanges) {
    auto const average = query<AverageDensityMapQueryState>("Average");
    EXPECT_THAT(average->Evaluate(), IsEmpty()) << "there are no display objects";
    average->SetMapDisplayObjects({floor_id});
    auto const maps = average->Evaluate();
    EXPECT_EQ(average->Evaluate(), maps);
    average->SetLevelOfServiceColorFunction(LevelOfServiceColorFunctionTypeId::FRUIN_PLATFORM,
                                            ColorTransition::GRADUAL);
    EXPECT_NE(average->Evaluate(), maps);
    EXPECT_TRUE(maps[0]->GetSurfaceId().InternalEquals(floor_id));
    ASSERT_NE(maps[0]->AsMap2d()->AsColorMap2d(), nullptr);
}

TEST_F(Queries, ColoursAreThoseOfTheScaleOrTheProgramsOwn) {
    auto const average = query<AverageDensityMapQueryState>("Average");
    EXPECT_NEAR(average->GenerateColorFunctionForWalkableObject(floor_id)->GetMaxValue(), 2.153, 0.001);
    EXPECT_FALSE(average->UsesCustomColorFunction());
    auto const custom = ColorFunction::CreateCustom({0, 9}, {Color::RED, Color::BLUE}, ColorTransition::STEPS);
    average->SetCustomColorFunction(custom);
    EXPECT_TRUE(average->UsesCustomColorFunction());
    EXPECT_EQ(average->GenerateColorFunctionForWalkableObject(floor_id)->GetMaxValue(), 9);
    EXPECT_THAT(refusal_of([&] {
                    average->SetLevelOfServiceColorFunction(LevelOfServiceColorFunctionTypeId::IATA_WAIT_CIRCULATE,
                                                            static_cast<ColorTransition>(5));
                }),
                HasSubstr("must be one of STEPS (0), GRADUAL (1), not 5"));
    EXPECT_EQ(average->GetLevelOfServiceColorFunctionTypeId(), LevelOfServiceColorFunctionTypeId::FRUIN_BY_OBJECT);
    EXPECT_TRUE(average->UsesCustomColorFunction()) << "a refused scale changes nothing";
    EXPECT_THAT(refusal_of([&] { average->GenerateColorFunctionForWalkableObject(zone_id); }),
                HasSubstr("no walkable"));
}

TEST_F(Queries, WhatCannotBeAnsweredIsRefused) {
    auto const average = query<AverageDensityMapQueryState>("Average");
    auto& annex = document.add<FloorState>("Annex");
    average->SetMapDisplayObjects({annex.id});
    EXPECT_THAT(refusal_of([&] { average->Evaluate(); }), HasSubstr("Floor 'Annex' did not take part"));
    average->SetSimulationRunId(document.add<SimulationRunState>("Empty").id);
    EXPECT_THAT(refusal_of([&] { average->Evaluate(); }), HasSubstr("SimulationRun 'Empty' has no results"));
    EXPECT_THAT(refusal_of([&] { average->SetSimulationRunId(floor_id); }),
                HasSubstr("a simulation run, not that of Floor 'Square'"));
    EXPECT_THAT(refusal_of([&] { average->SetMapDisplayObjects({run_id}); }),
                HasSubstr("other walkable object, not that of SimulationRun 'Run'"));
}

TEST_F(Queries, PopulationIsCountedByAreaAndWindow) {
    auto const count = query<PopulationCountGraphQueryState>("People");
    auto const all = count->Evaluate();
    EXPECT_EQ(all->GetTitle(), "People");
    EXPECT_EQ(all->GetYLabel(), "Persons");
    EXPECT_EQ(all->GetEndTimeInSeconds(), 2);
    ASSERT_THAT(all->GetSeries(), SizeIs(1));
    std::vector<double> values;
    for (auto& entry : all->GetSeries()[0]->GetValues()) values.push_back(entry.GetZ());
    EXPECT_THAT(values, ElementsAre(1, 0.5)) << "the means over two seconds";
    count->SetWindowSizeInSeconds(2);
    count->SetAreaIds({zone_id, floor_id});
    count->SetTitle("Both");
    auto const both = count->Evaluate();
    EXPECT_EQ(both->GetTitle(), "Both");
    ASSERT_THAT(both->GetSeries(), SizeIs(2));
    EXPECT_EQ(both->GetSeries()[0]->GetName(), "Zone");
    EXPECT_EQ(both->GetSeries()[0]->GetValues()[0].GetZ(), 0.75);
    EXPECT_THAT(refusal_of([&] { count->SetWindowSizeInSeconds(0); }),
                HasSubstr("windowSizeInSeconds must be at least 1, not 0"));
    EXPECT_THAT(refusal_of([&] { count->SetAreaIds({run_id}); }),
                HasSubstr("a walkable object or a zone, not that of SimulationRun 'Run'"));
}

}  // namespace
}  // namespace pedflux::engine
