#include "engine/analysis/csv.h"
#include "engine/analysis/graph_data.h"
#include "engine/analysis/raster.h"
#include "engine/analysis/table_data.h"
#include "tests/engine/files.h"
#include "tests/engine/refusal.h"

#include <pedflux/color_functions.h>
#include <pedflux/maps.h>

#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pedflux {
namespace {

using engine::Surface;
using testing::HasSubstr;
using testing::SizeIs;

/// A floor of 4 by 3 m that rises from 0 to 4 m along x, with a hole of 1 by 1 m.
Surface slope() {
    Surface surface;
    surface.walkable = {{{{10, 0}, {14, 0}, {14, 3}, {10, 3}}, {{{11, 1}, {11, 2}, {12, 2}, {12, 1}}}}};
    surface.faces = {{{{10, 0, 0}, {14, 4, 0}, {14, 4, 3}}}, {{{10, 0, 0}, {14, 4, 3}, {10, 0, 3}}}};
    return surface;
}

TEST(Rasters, CoverWhereOneCanWalkAtItsHeight) {
    auto const raster = engine::raster_of(slope(), 0.5);
    EXPECT_EQ(raster->columns, 8);
    EXPECT_EQ(raster->rows, 6);
    int covered = 0;
    for (int y = 0; y < raster->rows; ++y) {
        for (int x = 0; x < raster->columns; ++x) {
            auto const index = raster->index(x, y);
            double const center_x = raster->center_x(x);
            bool const in_hole = center_x > 11 && center_x < 12 && raster->center_z(y) > 1 && raster->center_z(y) < 2;
            EXPECT_EQ(raster->has(index), !in_hole) << x << ", " << y;
            if (!raster->has(index)) continue;
            ++covered;
            EXPECT_NEAR(static_cast<double>(raster->heights[index]), center_x - 10, 1e-5);
        }
    }
    EXPECT_EQ(covered, 44);
}

TEST(Rasters, HaveLargerPixelsWhereTheyWouldHaveTooMany) {
    EXPECT_EQ(engine::raster_of(slope(), 0.25, 48)->pixel_size, 0.5);
    EXPECT_EQ(engine::raster_of(Surface())->size(), 0U);
}

TEST(Maps, AnswerByPixelIndexAndPosition) {
    auto const raster = engine::raster_of(slope(), 1);
    std::vector<float> values(raster->size());
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<float>(i);
    auto const map = std::make_shared<ValueMap2d>(raster, values, nullptr);
    EXPECT_EQ(map->GetMapTypeId(), static_cast<int>(MapType::VALUES));
    EXPECT_EQ(map->GetPixelCount(), 12);
    EXPECT_EQ(map->GetXSize(), 4);
    EXPECT_EQ(map->GetYSize(), 3);
    EXPECT_EQ(map->GetValueAtPixel(2, 1), 6);
    EXPECT_EQ(map->GetValueAtIndex(6), 6);
    EXPECT_EQ(map->GetValueAtPosition({12.5, 9, 1.5}), 6);
    EXPECT_EQ(map->GetPixelXIndexAtPosition({12.5, 0, 1.5}), 2);
    EXPECT_EQ(map->GetPixelYIndexAtPosition({12.5, 0, -1}), -1);
    EXPECT_TRUE(map->GetCenterOfPixel(2, 1).InternalEquals(Vec3d(12.5, 2.5, 1.5)));
    EXPECT_TRUE(map->IsValidPixel(1, 1));
    EXPECT_FALSE(map->HasPixel(1, 1)) << "the hole";
    EXPECT_TRUE(map->HasPixelAtIndex(0));
    EXPECT_FALSE(map->IsValidPixelAtIndex(12));
    EXPECT_FALSE(map->IsValidPixelAtIndex(-1));
    EXPECT_FALSE(map->IsValidPixelAtPosition({9, 0, 0}));
    EXPECT_THAT(map->GetPixelValues(), SizeIs(11));
    EXPECT_EQ(map->AsMap2d(), map);
    EXPECT_EQ(map->AsValueMap2d(), map);
    EXPECT_EQ(map->AsColorMap2d(), nullptr) << "it has no colour function";
    EXPECT_THAT(refusal_of([&] { map->GetValueAtPixel(4, 0); }), HasSubstr("(4, 0)"));
    EXPECT_THAT(refusal_of([&] { map->GetValueAtIndex(12); }), HasSubstr("12"));
    EXPECT_THAT(refusal_of([&] { map->GetValueAtPosition({0, 0, 0}); }), HasSubstr("does not lie on the map"));
    EXPECT_THAT(refusal_of([&] { map->HasPixelAtPosition(Vec3d::INVALID); }),
                HasSubstr("A position is (nan, nan, nan)"));
}

TEST(Maps, OfValuesHaveAPictureInTheirColours) {
    auto const raster = engine::raster_of(slope(), 1);
    auto const colors = ColorFunction::CreateCustom({0, 10}, {Color::BLACK, Color::WHITE}, ColorTransition::GRADUAL);
    auto const map = std::make_shared<ValueMap2d>(raster, std::vector<float>(raster->size(), 5), colors);
    auto const picture = map->AsColorMap2d();
    ASSERT_NE(picture, nullptr);
    EXPECT_TRUE(picture->GetColorAtPixel(0, 0).InternalEquals(Color(0.5, 0.5, 0.5)));
    EXPECT_TRUE(picture->GetColorAtPixel(1, 1).InternalEquals(Color::CLEAR)) << "the hole";
    EXPECT_THAT(picture->GetPixelColors(), SizeIs(11));
    EXPECT_EQ(picture->AsValueMap2d(), nullptr);
    EXPECT_EQ(picture->AsColorMap2d(), picture);
}

TEST(ColorFunctions, StepOrMixBetweenTheirValues) {
    std::vector<Color> const colors{Color::BLUE, Color::GREEN, Color::RED};
    auto const raster = engine::raster_of(slope(), 4);
    auto const color_of = [&](double value, ColorTransition transition) {
        auto const function = ColorFunction::CreateCustom({1, 2, 4}, colors, transition);
        auto const map = std::make_shared<ValueMap2d>(raster, std::vector{static_cast<float>(value)}, function);
        return map->AsColorMap2d()->GetColorAtIndex(0);
    };
    struct Case {
        double value;
        Color stepped;
        Color mixed;
    };
    for (auto& [value, stepped, mixed] : std::vector<Case>{{-5, Color::BLUE, Color::BLUE},
                                                           {1.5, Color::BLUE, Color(0, 0.5, 0.5)},
                                                           {2, Color::GREEN, Color::GREEN},
                                                           {3, Color::GREEN, Color(0.5, 0.5, 0)},
                                                           {4, Color::RED, Color::RED},
                                                           {99, Color::RED, Color::RED}}) {
        EXPECT_TRUE(stepped.InternalEquals(color_of(value, ColorTransition::STEPS))) << value;
        EXPECT_TRUE(mixed.InternalEquals(color_of(value, ColorTransition::GRADUAL))) << value;
    }
    auto const fruin = ColorFunction::CreateFruinWalkway(ColorTransition::GRADUAL);
    EXPECT_EQ(fruin->GetMinValue(), 0);
    EXPECT_NEAR(fruin->GetMaxValue(), 2.153, 0.001);
    EXPECT_EQ(fruin->GetColorTransition(), ColorTransition::GRADUAL);
    EXPECT_NEAR(ColorFunction::CreateFruinStairway({})->GetMaxValue(), 2.691, 0.001);
    EXPECT_NEAR(ColorFunction::CreateFruinPlatform({})->GetMaxValue(), 5.382, 0.001);
    EXPECT_NEAR(ColorFunction::CreateIATAWaitCirculate({})->GetMaxValue(), 1, 1e-12);
}

TEST(ColorFunctions, RefuseWhatIsNoScale) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        std::vector<double> values;
        std::size_t colors;
        int transition;
        char const* message;
    };
    for (Case const& one : std::vector<Case>{{{1, 2}, 3, 0, "3 colours for 2 values"},
                                             {{}, 0, 0, "at least one value"},
                                             {{2, 1}, 2, 0, "greater than the one before, 2, not 1"},
                                             {{1, 1}, 2, 0, "greater than the one before"},
                                             {{nan}, 1, 0, "Value 0"},
                                             {{1}, 1, 7, "not 7"}}) {
        EXPECT_THAT(refusal_of([&] {
                        ColorFunction::CreateCustom(one.values, std::vector<Color>(one.colors),
                                                    static_cast<ColorTransition>(one.transition));
                    }),
                    HasSubstr(one.message));
    }
}

TEST(CsvFiles, QuoteWhatNeedsIt) {
    engine::Csv csv;
    csv.add_line({"plain", "with, comma", "with \"quotes\"", "two\nlines", ""});
    EXPECT_EQ(csv.text(), "plain,\"with, comma\",\"with \"\"quotes\"\"\",\"two\nlines\",\r\n");
    EXPECT_THAT(refusal_of([&] { csv.write("/nowhere/at/all.csv"); }), HasSubstr("'/nowhere/at/all.csv'"));
}

TEST(Graphs, BecomeOneLineForEachTime) {
    auto const series = [](std::string name, std::vector<engine::SeriesData::Entry> entries) {
        return std::make_shared<engine::SeriesData const>(engine::SeriesData{name, Color::RED, entries});
    };
    auto const data = std::make_shared<engine::GraphData>(engine::GraphData{
        "Title", "Time, s", "Persons", 0, 3, {series("A", {{1, 5}, {2.5, 6}}), series("B", {{2.5, 0.1}, {3, 8}})}});
    Graph graph(data);
    EXPECT_THAT(graph.GetSeries(), SizeIs(2));
    EXPECT_EQ(graph.GetSeries()[1]->GetName(), "B");
    EXPECT_EQ(graph.GetSeries()[0]->GetValues()[1].GetX(), 2.5);
    EXPECT_EQ(graph.GetSeries()[0]->GetValues()[1].GetZ(), 6);
    auto const path = testing::TempDir() + "graph.csv";
    graph.ExportCsv(path);
    EXPECT_EQ(contents_of(path), "\"Time, s\",A,B\r\n1,5,\r\n2.5,6,0.1\r\n3,,8\r\n");
}

TEST(Tables, GiveTheirCellsInEveryForm) {
    auto const data = std::make_shared<engine::TableData>(engine::TableData{
        true, {"first", "second"}, {"number", "text"}, {7, std::string("a,b"), 2.5, std::string("c")}});
    Table table(data);
    EXPECT_EQ(table.GetRowCount(), 2);
    EXPECT_EQ(table.GetColumnLabel(1), "text");
    EXPECT_EQ(table.GetIntValue(0, 0), 7);
    EXPECT_EQ(table.GetIntValue(1, 0), 3);
    EXPECT_EQ(table.GetDoubleValue(1, 0), 2.5);
    EXPECT_EQ(table.GetStringValue(1, 0), "2.5");
    EXPECT_EQ(table.GetStringValue(0, 1), "a,b");
    EXPECT_THAT(refusal_of([&] { table.GetDoubleValue(0, 1); }), HasSubstr("'a,b'"));
    EXPECT_THAT(refusal_of([&] { table.GetRowLabel(2); }), HasSubstr("row index is 2; it must be from 0 to 1"));
    EXPECT_THAT(refusal_of([&] { table.GetIntValue(0, -1); }), HasSubstr("column index is -1; it must be from 0 to 1"));
    auto const path = testing::TempDir() + "table.csv";
    table.ExportCsv(path);
    EXPECT_EQ(contents_of(path), ",number,text\r\nfirst,7,\"a,b\"\r\nsecond,2.5,c\r\n");
    EXPECT_FALSE(Table(std::make_shared<engine::TableData>()).IsValid());
}

}  // namespace
}  // namespace pedflux
