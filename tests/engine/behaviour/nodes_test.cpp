#include "engine/model/node.h"
#include "tests/engine/refusal.h"

#include <pedflux/tallies.h>

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pedflux::engine {
namespace {

std::shared_ptr<ScaleTally> scaled(std::shared_ptr<Tally> const& tally) {
    return std::make_shared<ScaleTally>(tally, 2);
}

TEST(Nodes, NestToTheLimitAndNoFurther) {
    std::shared_ptr<Tally> tree = std::make_shared<VariableTally>(1);
    for (int level = 1; level < deepest_node; ++level) tree = scaled(tree);
    EXPECT_EQ(tree->Clone()->GetAllNestedChildTallies().size(), std::size_t{deepest_node} - 1);
    EXPECT_THAT(refusal_of([&] { scaled(tree); }), testing::HasSubstr("nested deeper than 64 levels"));
}

TEST(Nodes, AChainThatWasBuiltFromTheTopIsRefusedAndReleasedHoweverLongItIs) {
    auto const top = scaled(std::make_shared<VariableTally>(1));
    auto last = top;
    for (int level = 0; level < 200'000; ++level) {
        auto const next = scaled(std::make_shared<VariableTally>(1));
        last->SetTally(next);
        last = next;
    }
    AddTally holder(std::make_shared<VariableTally>(1), std::make_shared<VariableTally>(2));
    for (auto const& refused : {refusal_of([&] { holder.AddChildTally(top); }), refusal_of([&] { scaled(top); }),
                                refusal_of([&] { top->Clone(); }), refusal_of([&] { scaled(last)->SetTally(top); })})
        EXPECT_THAT(refused, testing::HasSubstr("nested deeper than 64 levels"));
    EXPECT_EQ(holder.GetChildTallyCount(), 2);
}

TEST(Nodes, SharedPartsCountWhereverTheyStand) {
    std::shared_ptr<Tally> tree = std::make_shared<VariableTally>(1);
    std::string refused = NOTHING_REFUSED;
    int level = 0;
    while (refused == NOTHING_REFUSED && ++level < deepest_node)
        refused = refusal_of([&] { tree = std::make_shared<AddTally>(tree, tree); });
    EXPECT_THAT(refused, testing::HasSubstr("more than 100000 parts"));
    EXPECT_EQ(level, 17) << "2 to the power of 16 leaves and as many sums fit just not";
}

TEST(Nodes, NothingHoldsItself) {
    auto const inner = std::make_shared<AddTally>(std::vector<std::shared_ptr<Tally>>{});
    auto const outer = std::make_shared<AddTally>(std::vector<std::shared_ptr<Tally>>{scaled(inner)});
    for (auto const& child : {outer, inner})
        EXPECT_THAT(refusal_of([&] { inner->AddChildTally(child); }), testing::HasSubstr("must not be or hold"));
    EXPECT_EQ(inner->GetChildTallyCount(), 0);
    // Twice side by side is no circle.
    outer->AddChildTally(inner);
    EXPECT_EQ(outer->GetAllNestedChildTallies().size(), 3U);
}

TEST(Nodes, AreSharedUntilTheyAreCopied) {
    auto const variable = std::make_shared<VariableTally>(1);
    auto const sum = std::make_shared<AddTally>(std::vector<std::shared_ptr<Tally>>{variable});
    auto const copy = sum->Clone();
    variable->SetValue(5);
    auto const value = [](std::shared_ptr<Tally> const& tally) {
        return std::dynamic_pointer_cast<VariableTally>(tally->GetChildTally(0))->GetValue();
    };
    EXPECT_EQ(value(sum), 5);
    EXPECT_EQ(value(copy), 1);
    EXPECT_EQ(sum->GetChildTally(0), variable);
}

}  // namespace
}  // namespace pedflux::engine
