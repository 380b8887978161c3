#include "engine/base/identifiers.h"

#include "tests/engine/geometry/expect.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace pedflux {
namespace {

constexpr char const* sample = "8f14e45f-ceea-467f-a0e5-95c0d4a5c7d2";

TEST(Identifiers, AreReadAndWrittenInOneForm) {
    EXPECT_EQ(GlobalId(sample).GetString(), sample);
    std::string upper = sample;
    std::transform(upper.begin(), upper.end(), upper.begin(), [](unsigned char c) { return std::toupper(c); });
    EXPECT_EQ(GlobalId(upper).GetString(), sample);
    EXPECT_TRUE(GlobalId(upper).InternalEquals(GlobalId(sample)));
    for (int i = 0; i < 1000; ++i) {
        GlobalId id = GlobalId::Generate();
        EXPECT_TRUE(GlobalId(id.GetString()).InternalEquals(id));
    }
}

TEST(Identifiers, RefuseEveryMutationOfTheForm) {
    std::vector<std::string> wrong{"",
                                   "0",
                                   "null",
                                   "00000000-0000-0000-0000-000000000000",
                                   "{" + std::string(sample) + "}",
                                   "8f14e45fceea467fa0e595c0d4a5c7d2",
                                   std::string(36, '-'),
                                   std::string(sample) + std::string(1, '\0')};
    std::string const text = sample;
    for (std::size_t position = 0; position <= text.size(); ++position) {
        for (char const inserted : {' ', '0', '-', 'g', '\n', '\0', '\xc3'}) {
            wrong.push_back(text);
            wrong.back().insert(position, 1, inserted);
            if (position == text.size()) continue;
            bool const stays_right = text[position] == '-' ? inserted == '-' : inserted == '0';
            if (stays_right) continue;
            wrong.push_back(text);
            wrong.back()[position] = inserted;
        }
        if (position == text.size()) continue;
        wrong.push_back(text);
        wrong.back().erase(position, 1);
    }
    for (auto const& mutation : wrong) EXPECT_REFUSED(GlobalId(mutation), "\"" + mutation + "\" is no identifier");
}

TEST(Identifiers, NameNothingByDefault) {
    GlobalId nothing;
    EXPECT_FALSE(nothing.IsValid());
    EXPECT_EQ(nothing.GetString(), "");
    EXPECT_TRUE(nothing.InternalEquals(GlobalId::INVALID));
    EXPECT_EQ(nothing.InternalHashCode(), GlobalId::INVALID.InternalHashCode());
    EXPECT_FALSE(nothing.InternalEquals(GlobalId(sample)));
    EXPECT_LT(nothing.InternalCompare(GlobalId(sample)), 0);
    EXPECT_GT(GlobalId(sample).InternalCompare(nothing), 0);
    static_assert(sizeof(GlobalId) == 2 * sizeof(void*));
}

TEST(Identifiers, AreRandomAndMarkedSo) {
    std::unordered_set<std::string> texts;
    std::array<int, 128> ones{};
    constexpr int count = 4000;
    for (int i = 0; i < count; ++i) {
        std::string const text = GlobalId::Generate().GetString();
        texts.insert(text);
        EXPECT_EQ(text[14], '4');
        EXPECT_NE(std::string("89ab").find(text[19]), std::string::npos);
        std::size_t bit = 0;
        for (char const digit : text)
            if (digit != '-')
                for (int const mask : {8, 4, 2, 1})
                    ones[bit++] += (std::stoi(std::string(1, digit), nullptr, 16) & mask) != 0;
    }
    EXPECT_EQ(texts.size(), count);
    // Six standard deviations: chance takes a fair bit out of this band once in five hundred million runs.
    int const varying = static_cast<int>(std::count_if(
        ones.begin(), ones.end(), [](int n) { return std::abs(n - count / 2) < 6 * std::sqrt(count) / 2; }));
    EXPECT_EQ(varying, 122);
}

TEST(Identifiers, DifferAfterAFork) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    GlobalId::Generate();
    pid_t const child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        std::string const text = GlobalId::Generate().GetString();
        _exit(write(ends[1], text.data(), text.size()) == 36 ? 0 : 1);
    }
    std::string of_child(36, ' ');
    EXPECT_EQ(read(ends[0], of_child.data(), of_child.size()), 36);
    EXPECT_EQ(waitpid(child, nullptr, 0), child);
    close(ends[0]);
    close(ends[1]);
    EXPECT_TRUE(GlobalId(of_child).IsValid());
    EXPECT_NE(GlobalId::Generate().GetString(), of_child);
}

TEST(Identifiers, HaveTheOrderOfTheirTexts) {
    std::vector<GlobalId> ids{GlobalId(), GlobalId("00000000-0000-0000-0000-000000000001"),
                              GlobalId("00000000-0000-0001-0000-000000000000"),
                              GlobalId("ffffffff-ffff-ffff-ffff-ffffffffffff")};
    for (int i = 0; i < 60; ++i) ids.push_back(GlobalId::Generate());
    auto const sign = [](int value) { return (value > 0) - (value < 0); };
    std::set<GlobalId, engine::GlobalIdLess> ordered;
    for (GlobalId const& a : ids) {
        ordered.insert(a);
        for (GlobalId const& b : ids) {
            EXPECT_EQ(sign(a.InternalCompare(b)), sign(engine::text_of(a).compare(engine::text_of(b))));
            EXPECT_EQ(a.InternalEquals(b), a.InternalCompare(b) == 0);
            if (a.InternalEquals(b)) {
                EXPECT_EQ(a.InternalHashCode(), b.InternalHashCode());
            }
        }
    }
    EXPECT_EQ(ordered.size(), ids.size());
}

}  // namespace
}  // namespace pedflux
