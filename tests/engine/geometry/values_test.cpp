#include "engine/base/log.h"
#include "tests/engine/geometry/expect.h"

#include <pedflux/color.h>
#include <pedflux/sdk.h>
#include <pedflux/value_pairs.h>

#include <filesystem>
#include <limits>

namespace pedflux {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Colors, HaveComponentsFromZeroToOne) {
    Color orange = Color::ORANGE;
    EXPECT_EQ(orange.GetRed(), 1);
    EXPECT_DOUBLE_EQ(orange.GetGreen(), 127.0 / 255);
    EXPECT_EQ(orange.GetBlue(), 0);
    EXPECT_EQ(orange.GetAlpha(), 1);
    EXPECT_EQ(Color(Color::CLEAR).GetAlpha(), 0);
    for (double const wrong : {-0.01, 1.01, nan, infinity}) {
        EXPECT_REFUSED(Color(wrong, 0, 0), "each must be from 0 to 1");
        EXPECT_REFUSED(Color(0, wrong, 0), "each must be from 0 to 1");
        EXPECT_REFUSED(Color(0, 0, wrong), "each must be from 0 to 1");
        EXPECT_REFUSED(Color(0, 0, 0, wrong), "each must be from 0 to 1");
    }
    Color positive(0, 1, 0.5);
    Color negative(-0.0, 1, 0.5);
    EXPECT_TRUE(positive.InternalEquals(negative));
    EXPECT_EQ(positive.InternalHashCode(), negative.InternalHashCode());
    EXPECT_FALSE(positive.InternalEquals({0, 1, 0.5, 0.5}));
    EXPECT_NE(Color(Color::RED).InternalHashCode(), Color(Color::GREEN).InternalHashCode());
}

TEST(ValuePairs, KeepTheirValueWhenTheyRefuseAnother) {
    GlobalId const id = GlobalId::Generate();
    IdValuePair pair(id, 2.5);
    for (double const wrong : {nan, infinity, -infinity}) {
        EXPECT_REFUSED(pair.SetValue(wrong), "value of the pair is ");
        EXPECT_REFUSED(IdValuePair(id, wrong), "it must be a finite number");
        EXPECT_REFUSED(DurationValuePair(wrong, 0), "duration of the pair is ");
        EXPECT_REFUSED(DurationValuePair(0, wrong), "value of the pair is ");
    }
    EXPECT_EQ(pair.GetValue(), 2.5);
    EXPECT_TRUE(pair.GetId().InternalEquals(id));
    DurationValuePair span(900, -1);
    EXPECT_REFUSED(span.SetDurationInSeconds(-1),
                   "duration of the pair is -1; it must be a finite number of 0 or more");
    EXPECT_EQ(span.GetDurationInSeconds(), 900);
    EXPECT_EQ(span.GetValue(), -1);
    EXPECT_FALSE(IdValuePair().GetId().IsValid());
}

TEST(SdkSettings, TakeOnlyDirectoriesThatExist) {
    auto const directory = std::filesystem::temp_directory_path().string();
    EXPECT_TRUE(Sdk::Init());
    EXPECT_TRUE(Sdk::Init());
    EXPECT_TRUE(Sdk::IsEmbedded());
    EXPECT_EQ(Sdk::GetAvatarsPath(), "");
    EXPECT_FALSE(Sdk::SetInstallPath(directory + "/no such directory"));
    EXPECT_FALSE(Sdk::SetInstallPath(""));
    EXPECT_EQ(Sdk::GetInstallPath(), "");
    EXPECT_TRUE(Sdk::SetInstallPath(directory));
    EXPECT_EQ(Sdk::GetInstallPath(), directory);
    EXPECT_EQ(Sdk::GetFontsPath(), std::filesystem::path(directory) / "fonts");
    Sdk::SetAvatarsPath("/elsewhere");
    EXPECT_EQ(Sdk::GetAvatarsPath(), "/elsewhere");
    Sdk::SetAvatarsPath("");
    EXPECT_EQ(Sdk::GetAvatarsPath(), std::filesystem::path(directory) / "avatars");
    Sdk::SetFeatureLoggingEnabled(true);
    EXPECT_TRUE(Sdk::IsFeatureLoggingEnabled());
    Sdk::SetFeatureLoggingEnabled(false);
    Sdk::Fini();
    Sdk::Fini();
    Sdk::Fini();
    EXPECT_TRUE(Sdk::Init());
}

TEST(SdkSettings, TheOutputLevelDecidesWhatIsWritten) {
    auto const written = [](LogOutputLevel output, LogOutputLevel level) {
        Sdk::SetOutputLevel(output);
        testing::internal::CaptureStderr();
        engine::log(level, "a line");
        return testing::internal::GetCapturedStderr();
    };
    EXPECT_EQ(written(LogOutputLevel::WARNINGS, LogOutputLevel::ERRORS), "a line\n");
    EXPECT_EQ(written(LogOutputLevel::WARNINGS, LogOutputLevel::WARNINGS), "a line\n");
    EXPECT_EQ(written(LogOutputLevel::WARNINGS, LogOutputLevel::MESSAGES), "");
    EXPECT_EQ(written(LogOutputLevel::NONE, LogOutputLevel::ERRORS), "");
    Sdk::SetOutputLevel(LogOutputLevel::WARNINGS);
    for (int const wrong : {-1, 5})
        EXPECT_REFUSED(Sdk::SetOutputLevel(static_cast<LogOutputLevel>(wrong)), "from 0 (NONE) to 4");
}

}  // namespace
}  // namespace pedflux
