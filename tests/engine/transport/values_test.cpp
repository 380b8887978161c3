#include "engine/transport/csv_reader.h"
#include "engine/transport/lift_kinematics.h"
#include "tests/engine/geometry/expect.h"

#include <pedflux/elevators.h>

#include <cmath>
#include <string>
#include <vector>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// Of values that are listed from the first to the last, each differs from all others.
template <class Value>
void expect_in_order(std::vector<Value> const& values) {
    for (std::size_t a = 0; a < values.size(); ++a) {
        for (std::size_t b = 0; b < values.size(); ++b) {
            Value const copy = values[b];
            int const compared = values[a].InternalCompare(copy);
            EXPECT_EQ((compared > 0) - (compared < 0), (a > b) - (a < b)) << a << " and " << b;
            EXPECT_EQ(values[a].InternalEquals(copy), a == b) << a << " and " << b;
            if (a == b) {
                EXPECT_EQ(values[a].InternalHashCode(), copy.InternalHashCode());
            }
            if (a != b) {
                EXPECT_NE(values[a].InternalHashCode(), copy.InternalHashCode()) << a << " and " << b;
            }
        }
    }
}

ElevatorStop const LOBBY("Lobby");
ElevatorStop const ROOF("Roof");

TEST(ElevatorValues, EqualityOrderAndHashAgree) {
    using enum ElevatorDirection;
    expect_in_order<ElevatorStop>(
        {ElevatorStop(), ElevatorStop("L"), LOBBY, ElevatorStop("Lobby 2"), ROOF, ElevatorStop("\xC3\x9C")});
    expect_in_order<ElevatorService>({ElevatorService(),
                                      ElevatorService(ElevatorStop(), UP),
                                      {LOBBY, NONE},
                                      {LOBBY, UP},
                                      {LOBBY, DOWN},
                                      {ROOF, NONE}});
    expect_in_order<ElevatorCall>({ElevatorCall(),
                                   {LOBBY, NONE, {}, {}},
                                   {LOBBY, UP, {}, {}},
                                   {LOBBY, UP, {}, -1},
                                   {LOBBY, UP, {}, 0},
                                   {LOBBY, UP, {}, 7},
                                   {LOBBY, NONE, ElevatorStop(), {}},
                                   {LOBBY, NONE, ROOF, {}},
                                   {LOBBY, UP, ROOF, 0},
                                   {ROOF, NONE, {}, {}}});
}

TEST(ElevatorValues, SayWhatTheyAre) {
    ElevatorStop stop = LOBBY;
    EXPECT_TRUE(stop.IsValid());
    stop.SetInvalid();
    EXPECT_FALSE(stop.IsValid());
    EXPECT_TRUE(stop.InternalEquals(ElevatorStop()));
    EXPECT_FALSE(ElevatorService().IsValid());
    EXPECT_EQ(ElevatorService(LOBBY, ElevatorDirection::UP).GetString(), "Lobby UP");
    EXPECT_REFUSED(ElevatorService(LOBBY, ElevatorDirection{9}), "direction must be one of NONE (0), UP (1), DOWN (2)");

    ElevatorCall unknown(LOBBY, ElevatorDirection::UP, {}, {});
    EXPECT_EQ(unknown.GetString(), "Lobby UP");
    EXPECT_FALSE(unknown.HasDestinationStop());
    EXPECT_FALSE(unknown.GetDestinationStop().IsValid());
    EXPECT_REFUSED(unknown.GetCallerId(), "the caller is not known");
    EXPECT_EQ(ElevatorCall(LOBBY, ElevatorDirection::UP, ROOF, 12).GetString(), "Lobby to Roof by 12");
}

/// The distance that a lift has gone when it comes to rest, by small steps: it takes the jerk at its greatest value up,
/// down, or not at all, in the seven phases of a journey with the given peaks.
double distance_by_steps(LiftLimits const& limits, double peak_acceleration, double peak_speed, double cruise) {
    double const build = peak_acceleration / limits.jerk;
    double const hold = peak_speed / peak_acceleration - build;
    double const durations[] = {build, hold, build, cruise, build, hold, build};
    double const jerks[] = {1, 0, -1, 0, -1, 0, 1};
    constexpr int STEPS = 2000;
    double acceleration = 0;
    double speed = 0;
    double distance = 0;
    for (int phase = 0; phase < 7; ++phase) {
        double const step = durations[phase] / STEPS;
        for (int i = 0; i < STEPS; ++i) {
            double const jerk = jerks[phase] * limits.jerk;
            distance += speed * step + acceleration * step * step / 2 + jerk * step * step * step / 6;
            speed += acceleration * step + jerk * step * step / 2;
            acceleration += jerk * step;
        }
    }
    EXPECT_NEAR(speed, 0, 1e-9);
    EXPECT_NEAR(acceleration, 0, 1e-9);
    return distance;
}

TEST(LiftKinematics, TheTimeIsThatOfAJourneyWithinTheLimits) {
    struct {
        LiftLimits limits;
        double acceleration, speed, cruise;  // the peaks of the journey, and how long it stays at full speed
    } const cases[] = {
        {{1.6, 0.8, 1}, 0.8, 1.6, 5},   // everything is reached
        {{1.6, 0.8, 1}, 0.8, 1.2, 0},   // not the speed
        {{1.6, 0.8, 1}, 0.5, 0.25, 0},  // nor the acceleration
        {{1, 4, 1}, 1, 1, 3},           // the speed, but never the acceleration
        {{1.6, 0.8, 1}, 0.8, 1.6, 0},   // just the speed
        {{1.6, 0.8, 1}, 0.8, 0.64, 0},  // just the acceleration
    };
    for (auto const& [limits, acceleration, speed, cruise] : cases) {
        double const seconds = 2 * (speed / acceleration + acceleration / limits.jerk) + cruise;
        double const metres = distance_by_steps(limits, acceleration, speed, cruise);
        EXPECT_NEAR(travel_time(limits, metres), seconds, 1e-6) << metres << " m";
    }
    EXPECT_EQ(travel_time({1.6, 0.8, 1}, 0), 0);
}

std::vector<std::vector<std::string>> texts(std::vector<CsvLine> const& lines) {
    std::vector<std::vector<std::string>> found;
    for (auto const& line : lines) {
        auto& fields = found.emplace_back();
        for (auto const& field : line) fields.push_back(field.text);
    }
    return found;
}

TEST(CsvReader, ReadsWhatTheFormatAllows) {
    using Lines = std::vector<std::vector<std::string>>;
    struct {
        std::string text;
        char delimiter;
        Lines lines;
    } const cases[] = {
        {"", ',', {}},
        {"a,b\r\n1,2\r\n", ',', {{"a", "b"}, {"1", "2"}}},
        {"a;b,c\n1;2", ';', {{"a", "b,c"}, {"1", "2"}}},
        {"a\tb\n1\t\n", '\t', {{"a", "b"}, {"1", ""}}},
        {"\"a,b\",\"say \"\"hi\"\"\"\n", ',', {{"a,b", "say \"hi\""}}},
        {"\"two\nlines\",x\n", ',', {{"two\nlines", "x"}}},
        {"\n a , b \n\n\n1,2\n\n", ',', {{"a", "b"}, {"1", "2"}}},
        {",\n", ',', {{"", ""}}},
        {"\xEF\xBB\xBFname\n\xC3\x84rzte\n", ',', {{"name"}, {"\xC3\x84rzte"}}},
    };
    for (auto const& [text, delimiter, lines] : cases) {
        EXPECT_EQ(texts(read_csv(text, delimiter, "a.csv")), lines) << text;
    }
}

TEST(CsvReader, KnowsWhereEachFieldStands) {
    auto const lines = read_csv("a,\"b\n\n2\",c\n\n  \xC3\xBC\xC3\xBC, d\n", ',', "a.csv");
    std::vector<std::string> places;
    for (auto const& line : lines) {
        for (auto const& field : line) {
            places.push_back(std::to_string(field.at.line) + ":" + std::to_string(field.at.column));
        }
    }
    EXPECT_THAT(places, ElementsAre("1:1", "1:3", "3:4", "5:3", "5:7"));
}

TEST(CsvReader, FaultsAreToldWithTheirPlace) {
    struct {
        std::string text, place;
    } const cases[] = {
        {"a,b\n1,x\"y\n", "line 2, column 4: a quotation mark"},
        {"a,b\n1,\"x\"y\n", "line 2, column 6: a quotation mark"},
        {"a,b\n\"1,2\n3,4\n", "line 2, column 1: a quotation mark"},
        {"a,b\n\xC3\xBC,\xFF\n", "line 2, column 3: the bytes must be text in UTF-8"},
        {"a,\xC3", "line 1, column 3: the bytes must be text in UTF-8"},
    };
    for (auto const& [text, place] : cases) EXPECT_REFUSED(read_csv(text, ',', "a.csv"), "'a.csv', " + place);
}

}  // namespace
}  // namespace pedflux::engine
