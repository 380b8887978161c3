#include "engine/base/identifiers.h"
#include "engine/results/agent_data.h"
#include "engine/results/level_of_service.h"
#include "engine/results/run_reader.h"
#include "engine/results/run_writer.h"
#include "tests/engine/files.h"
#include "tests/engine/refusal.h"

#include <pedflux/database.h>
#include <pedflux/exception.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pedflux::engine {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

GlobalId const hall("00000000-0000-4000-8000-000000000001");
GlobalId const stair("00000000-0000-4000-8000-000000000002");
GlobalId const ticket("00000000-0000-4000-8000-000000000003");

std::vector<Surface> surfaces() {
    Surface const floor{hall,
                        "Hall",
                        SurfaceKind::LEVEL,
                        {{{{0, 0}, {10, 0}, {10, 8}}, {{{1, 1}, {2, 1}, {2, 2}}}}},
                        {{{{0, 0, 0}, {10, 0, 0}, {10, 0, 8}}}}};
    return {floor, {stair, "Stair, \"up\"", SurfaceKind::STAIR, {}, {}}};
}

AgentFrame state(std::uint32_t agent, std::uint16_t surface, float x) {
    return {agent, surface, 1, 0, {255, 0, 0, 255}, x, 0.5F, 2.25F, 90, 1.25F, 0.2F, 3, 0.75F};
}

/// A path of a file that is gone when the test is over.
class Results : public testing::Test {
  protected:
    Results() { std::filesystem::remove(path); }
    ~Results() override { std::filesystem::remove(path); }

    void write_run() const {
        RunWriter writer(path, {"Station", 5, 28800}, surfaces(), {{{1, 0}}, {"{}"}});
        writer.write_frame({});
        writer.write_frame(std::vector{state(0, 0, 1), state(1, 1, 2)});
        writer.write_frame(std::vector{state(1, 0, 3)});
        writer.finish({{hall, stair, GlobalId(), 2, 2, true}, {GlobalId(), hall, stair, 2, 3, false, ticket}},
                      {{1, EpisodeKind::HELD_TOKEN, ticket, 3, 3},
                       {1, EpisodeKind::AT_SERVER, hall, 2, 3},
                       {0, EpisodeKind::HELD_TOKEN, ticket, 2, 2}});
    }
    std::string refusal_of_opening() const {
        return refusal_of([&] { Database::Open(path); });
    }

    std::string const path = testing::TempDir() + "run-" + std::to_string(getpid()) + ".pfdb";
};

TEST_F(Results, WhatWasWrittenIsReadBack) {
    write_run();
    RunReader reader(path);
    EXPECT_EQ(reader.info().project, "Station");
    EXPECT_EQ(reader.info().start_time, 28800);
    ASSERT_EQ(reader.surfaces().size(), 2U);
    EXPECT_EQ(reader.surfaces()[0].walkable[0].holes[0][1], (Point{2, 1}));
    EXPECT_EQ(reader.surfaces()[0].faces[0][2], (Vector{10, 0, 8}));
    EXPECT_EQ(reader.surfaces()[1].name, "Stair, \"up\"");
    EXPECT_TRUE(reader.agents()[0].profile.InternalEquals(hall));
    EXPECT_FALSE(reader.agents()[0].destination.IsValid());
    EXPECT_TRUE(reader.agents()[0].arrived);
    EXPECT_FALSE(reader.agents()[0].event.IsValid());
    EXPECT_TRUE(reader.agents()[1].event.InternalEquals(ticket));
    ASSERT_EQ(reader.episodes().size(), 3U);
    EXPECT_EQ(reader.episodes()[1].kind, EpisodeKind::AT_SERVER) << "by agent and time";
    EXPECT_EQ(reader.project().joins[0].connection, 1);
    EXPECT_THAT(reader.project().objects, ElementsAre("{}"));

    auto const database = Database::Open(path);
    EXPECT_EQ(database->GetFirstFrame(), 1);
    EXPECT_EQ(database->GetLastFrame(), 3);
    EXPECT_EQ(database->GetFrameRate(), 5);
    EXPECT_EQ(database->GetFrameLength(), 0.2);
    EXPECT_THAT(database->GetAllAgents(), ElementsAre(0, 1));
    EXPECT_EQ(database->GetAgentFirstFrame(1), 2);
    EXPECT_EQ(database->GetAgentLastFrame(1), 3);
    EXPECT_TRUE(database->HasAgent(1));
    EXPECT_FALSE(database->HasAgent(2));
    EXPECT_TRUE(database->GetAgentCurrentFloor(1, 2).InternalEquals(stair));
    EXPECT_THAT(database->GetAgentTokens(1, 2), IsEmpty());
    EXPECT_EQ(database->GetAgentTokens(1, 3).size(), 1U);
    EXPECT_THAT(database->GetAgentsOnFloor(hall, 3), ElementsAre(1));
    EXPECT_EQ(database->GetFloorPopulation(stair, 3), 0);
    EXPECT_THAT(database->GetFrameData(1), IsEmpty());

    auto data = database->GetFrameData(2);
    ASSERT_EQ(data.size(), 2U);
    EXPECT_EQ(data[1].GetAgentId(), 1);
    EXPECT_EQ(data[1].GetAgentMovement(), AgentMovement::WALK);
    EXPECT_TRUE(data[1].GetPosition().InternalEquals(Vec3d(2, 0.5, 2.25)));
    EXPECT_TRUE(data[1].GetColor().InternalEquals(Color::RED));
    EXPECT_EQ(data[1].GetHeading(), 90);
    EXPECT_EQ(data[1].GetSpeed(), 1.25);
    EXPECT_EQ(data[1].GetAnimationTime(), 0.75);
    EXPECT_EQ(data[1].GetLevelOfService().GetStandard(), LevelOfServiceStandard::FRUIN_STAIRWAY);
    EXPECT_EQ(data[1].GetLevelOfService().GetLevel(), LevelOfServiceValue::F);
}

TEST_F(Results, ATimeShowsTheLastFrameUpToIt) {
    write_run();
    auto const database = Database::Open(path);
    EXPECT_THAT(database->GetFrameData(0.0), IsEmpty());
    EXPECT_EQ(database->GetFrameData(0.4).size(), 2U);
    EXPECT_EQ(database->GetFrameData(0.59).size(), 2U);
    EXPECT_EQ(database->GetFrameData(0.6).size(), 1U);
    EXPECT_THAT(refusal_of([&] { database->GetFrameData(1.0); }), HasSubstr("ends after 0.6 s"));
    EXPECT_THAT(refusal_of([&] { database->GetFrameData(-1.0); }), HasSubstr("-1"));
}

TEST_F(Results, WhatTheRunDoesNotHaveIsRefusedByItsNumber) {
    write_run();
    auto const database = Database::Open(path);
    EXPECT_THAT(refusal_of([&] { database->GetFrameData(0); }), HasSubstr("the frames 1 to 3, not 0"));
    EXPECT_THAT(refusal_of([&] { database->GetFrameData(4); }), HasSubstr("not 4"));
    EXPECT_THAT(refusal_of([&] { database->GetAgentFirstFrame(-1); }), HasSubstr("the agents 0 to 1, not -1"));
    EXPECT_THAT(refusal_of([&] { database->GetAgentCurrentFloor(0, 3); }), HasSubstr("frames 2 to 2"));
    EXPECT_THAT(refusal_of([&] { database->GetFloorPopulation(GlobalId::Generate(), 1); }), HasSubstr("no walkable"));
    database->Close();
    database->Close();
    EXPECT_THAT(refusal_of([&] { database->GetAgentCount(); }), HasSubstr("closed"));
}

TEST_F(Results, ARunWithoutFramesAndAgentsIsARun) {
    RunWriter(path, {"", 25, 0}, {}).finish({});
    auto const database = Database::Open(path);
    EXPECT_EQ(database->GetLastFrame(), 0);
    EXPECT_THAT(database->GetAllAgents(), IsEmpty());
}

TEST_F(Results, AnUnfinishedRunLeavesTheFormerOne) {
    write_run();
    { RunWriter(path, {"Other", 1, 0}, {}).write_frame({}); }
    EXPECT_EQ(RunReader(path).info().project, "Station");
    EXPECT_FALSE(std::filesystem::exists(path + ".unfinished"));
    RunWriter(path, {"Other", 1, 0}, {}).finish({});
    EXPECT_EQ(RunReader(path).info().project, "Other");
}

TEST_F(Results, ForeignFilesAreRefusedAndKept) {
    EXPECT_THAT(refusal_of_opening(), HasSubstr("There is no database of results"));
    std::ofstream(path) << "a letter to somebody, long enough that it might be taken for a header of a database file";
    EXPECT_THAT(refusal_of_opening(), HasSubstr("is not a database of results"));
    EXPECT_THAT(refusal_of([&] { RunWriter(path, {}, {}); }), HasSubstr("is not a database of results"));
    EXPECT_GT(std::filesystem::file_size(path), 50U);
    std::filesystem::remove(path);
    sqlite::Connection(path, sqlite::Connection::Mode::CREATE).execute("CREATE TABLE meta (name, value)");
    EXPECT_THAT(refusal_of_opening(), HasSubstr("is not a database of results"));
    EXPECT_THAT(refusal_of([&] { RunWriter(path, {}, {}); }), HasSubstr("not overwritten"));
}

TEST_F(Results, ChangedFilesAreRefusedWithTheReason) {
    struct Case {
        char const* change;
        char const* message;
    };
    for (auto const& [change, message] : std::vector<Case>{
             {"PRAGMA user_version = 3", "newer than 2"},
             {"PRAGMA user_version = 0", "format 0"},
             {"DELETE FROM frames WHERE number = 2", "2 frames instead of 3"},
             {"UPDATE frames SET number = 9 WHERE number = 3", "damaged"},
             {"DELETE FROM agents WHERE number = 0", "agent 0 is missing"},
             {"UPDATE agents SET last_frame = 7", "last frame of an agent is 7"},
             {"UPDATE meta SET value = 0 WHERE name = 'frame_rate'", "frame_rate is 0"},
             {"DELETE FROM meta WHERE name = 'last_frame'", "no last_frame"},
             {"UPDATE surfaces SET shape = '{}'", "shape of surface 'Hall'"},
             {"DROP TABLE surfaces", "surfaces"},
             {"UPDATE episodes SET agent = 2", "agent of an episode is 2"},
             {"UPDATE episodes SET kind = 2", "kind of an episode is 2"},
             {"UPDATE episodes SET last_frame = 4", "last frame of an episode is 4"},
             {"UPDATE joins SET floor = 2", "joined surface is 2"},
         }) {
        write_run();
        sqlite::Connection(path, sqlite::Connection::Mode::CREATE).execute(change);
        EXPECT_THAT(refusal_of_opening(), HasSubstr(message)) << change;
    }
    for (char const* states : {"x'00'", "zeroblob(88)", "(SELECT states || states FROM frames WHERE number = 3)"}) {
        write_run();
        sqlite::Connection(path, sqlite::Connection::Mode::CREATE)
            .execute("UPDATE frames SET states = CAST(" + std::string(states) + " AS BLOB) WHERE number = 3");
        EXPECT_THAT(refusal_of([&] { Database::Open(path)->GetFrameData(3); }), HasSubstr("damaged")) << states;
    }
}

TEST_F(Results, CutAndScratchedFilesNeverCrash) {
    write_run();
    auto const whole = contents_of(path);
    int refused = 0;
    int const tries = 200;
    for (int i = 0; i < tries; ++i) {
        auto damaged = whole;
        auto const place = whole.size() * static_cast<std::size_t>(i) / tries;
        if (i % 2 == 0) damaged.resize(place);
        if (i % 2 == 1) std::fill_n(damaged.begin() + static_cast<std::ptrdiff_t>(place), 64, '\xa5');
        write(path, damaged);
        refused += refusal_of([&] {
                       auto const database = Database::Open(path);
                       for (int frame = 1; frame <= database->GetLastFrame(); ++frame) database->GetFrameData(frame);
                   }) == NOTHING_REFUSED
                       ? 0
                       : 1;
    }
    EXPECT_GE(refused, tries / 2) << "every file that was cut must be refused";
}

TEST(LevelsOfService, BeginAtThePublishedDensities) {
    struct Case {
        LevelOfServiceStandard standard;
        double square_metres;
        LevelOfServiceValue level;
    };
    using enum LevelOfServiceStandard;
    using Level = LevelOfServiceValue;
    for (auto const& [standard, space, level] : std::vector<Case>{
             {FRUIN_WALKWAY, 3.3, Level::A},
             {FRUIN_WALKWAY, 3.2, Level::B},
             {FRUIN_WALKWAY, 2.3, Level::C},
             {FRUIN_WALKWAY, 1.3, Level::D},
             {FRUIN_WALKWAY, 0.9, Level::E},
             {FRUIN_WALKWAY, 0.46, Level::F},
             {FRUIN_STAIRWAY, 1.9, Level::A},
             {FRUIN_STAIRWAY, 0.7, Level::D},
             {FRUIN_STAIRWAY, 0.36, Level::F},
             {FRUIN_PLATFORM, 1.22, Level::A},
             {FRUIN_PLATFORM, 0.2, Level::E},
             {FRUIN_PLATFORM, 0.18, Level::F},
             {IATA_WAIT_CIRCULATE, 2.75, Level::A},
             {IATA_WAIT_CIRCULATE, 2.65, Level::B},
             {IATA_WAIT_CIRCULATE, 1.05, Level::E},
             {IATA_WAIT_CIRCULATE, 0.99, Level::F},
         }) {
        EXPECT_EQ(level_of_service(1 / space, standard).GetLevel(), level) << space;
    }
    EXPECT_EQ(level_of_service(0, FRUIN_WALKWAY).GetLevel(), Level::A);
    EXPECT_EQ(LevelOfService().GetLevel(), Level::NONE);
}

}  // namespace
}  // namespace pedflux::engine
