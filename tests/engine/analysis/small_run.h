#pragma once

#include "engine/behaviour/event_states.h"
#include "engine/model/document.h"
#include "engine/model/kind.h"
#include "engine/model/scene_states.h"
#include "engine/model/simulation_run_state.h"
#include "engine/results/run_writer.h"
#include "tests/engine/files.h"

#include <pedflux/agent_filters.h>
#include <pedflux/graph_queries.h>
#include <pedflux/graphs.h>
#include <pedflux/map_queries.h>
#include <pedflux/maps.h>
#include <pedflux/table_queries.h>
#include <pedflux/tables.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pedflux::engine {

/// Where a person is in one frame: by default at rest, alone, in the west.
struct Moment {
    float x = 1;
    float z = 1;
    std::uint16_t surface = 0;  ///< one of SmallRun
    float speed = 0;
    float density = 0;
};

/// A person from the first frame on, one moment a frame.
struct Walker {
    int first_frame = 1;
    std::vector<Moment> steps;
    GlobalId origin = {};
    GlobalId destination = {};
    bool arrived = false;
};

/// A run that a test draws by hand, two frames a second, from 100 s of the day on: frame n shows 100 + n / 2 s.
///
/// Surface 0 is a hall in the west from (0, 0) to (10, 10), surface 1 one in the east up to (20, 10), surface 2 a stair
/// up to (24, 2). There is a door at either end.
class SmallRun : public testing::Test {
  protected:
    static constexpr std::uint16_t WEST = 0;
    static constexpr std::uint16_t EAST = 1;
    static constexpr std::uint16_t STAIR = 2;

    SmallRun() {
        west = document.add<FloorState>("West").id;
        east = document.add<FloorState>("East").id;
        stair = document.add<StairState>("Stair").id;
        west_door = document.add<PortalState>("West door").id;
        east_door = document.add<PortalState>("East door").id;
        auto& zone = document.add<ZoneState>("Halls");
        zone.base_members = {west, east};
        halls = zone.id;
        auto& state = document.add<SimulationRunState>("Run");
        state.database_file_name = directory.file("run.pfdb");
        run = state.id;
    }

    /// Stores the run; there are so many frames.
    void store(std::vector<Walker> const& walkers, int frames) {
        auto const rectangle = [](GlobalId const& id, std::string const& name, SurfaceKind kind, double x1, double x2,
                                  double z2) {
            return Surface{id, name, kind, {{{{x1, 0}, {x2, 0}, {x2, z2}, {x1, z2}}, {}}}, {}};
        };
        RunWriter writer(directory.file("run.pfdb"), {"Run", 2, 100},
                         {rectangle(west, "West", SurfaceKind::LEVEL, 0, 10, 10),
                          rectangle(east, "East", SurfaceKind::LEVEL, 10, 20, 10),
                          rectangle(stair, "Stair", SurfaceKind::STAIR, 20, 24, 2)});
        for (int frame = 1; frame <= frames; ++frame) {
            std::vector<AgentFrame> persons;
            for (std::size_t i = 0; i < walkers.size(); ++i) {
                auto const place = frame - walkers[i].first_frame;
                if (place < 0 || place >= static_cast<int>(walkers[i].steps.size())) continue;
                auto const& step = walkers[i].steps[static_cast<std::size_t>(place)];
                AgentFrame& person = persons.emplace_back();
                person.agent = static_cast<std::uint32_t>(i);
                person.surface = step.surface;
                person.x = step.x;
                person.z = step.z;
                person.speed = step.speed;
                person.density = step.density;
                person.color =
                    i == 0 ? std::array<std::uint8_t, 4>{255, 0, 0, 255} : std::array<std::uint8_t, 4>{0, 0, 255, 255};
            }
            writer.write_frame(persons);
        }
        std::vector<AgentRecord> records;
        for (auto const& walker : walkers) {
            auto const last = walker.first_frame + static_cast<int>(walker.steps.size()) - 1;
            records.push_back({{}, walker.origin, walker.destination, walker.first_frame, last, walker.arrived});
        }
        writer.finish(records);
    }

    template <class State>
    std::shared_ptr<typename State::Face> query() {
        auto& state = document.add<State>(document.next_unique_name("Query"));
        state.run = run;
        return std::static_pointer_cast<typename State::Face>(document.face_of(state));
    }

    /// Sets a query's filter, also where the SDK takes none but a variable.
    template <class Query>
    static void select(Query& found, std::shared_ptr<AgentFilter> filter) {
        found.SetAgentFilter(filter);
    }
    /// The value of a map at a place of a hall.
    double value(MapQuery& found, double x, double z) const {
        found.SetMapDisplayObjects({x < 10 ? west : east});
        return found.Evaluate().at(0)->AsMap2d()->AsValueMap2d()->GetValueAtPosition({x, 0, z});
    }
    /// The values of a graph by the names of its series.
    static std::map<std::string, std::vector<double>> series(GraphQuery& found) {
        std::map<std::string, std::vector<double>> all;
        for (auto const& one : found.Evaluate()->GetSeries()) {
            auto& values = all[one->GetName()];
            for (auto& point : one->GetValues()) values.push_back(point.GetZ());
        }
        return all;
    }
    /// The values of a graph of one series.
    static std::vector<double> values(GraphQuery& found) {
        auto const all = series(found);
        EXPECT_EQ(all.size(), 1U);
        return all.empty() ? std::vector<double>() : all.begin()->second;
    }
    /// The rows of a table: the label and the cells as texts, with a space between them.
    static std::vector<std::string> rows(TableQuery& found) {
        auto const table = found.Evaluate();
        std::vector<std::string> all;
        for (int row = 0; row < table->GetRowCount(); ++row) {
            auto& line = all.emplace_back(table->GetRowLabel(row));
            for (int column = 0; column < table->GetColumnCount(); ++column) {
                line += " " + table->GetStringValue(row, column);
            }
        }
        return all;
    }

    TemporaryDirectory const directory;
    Document document;
    GlobalId west, east, stair, west_door, east_door, halls, run;
};

}  // namespace pedflux::engine
