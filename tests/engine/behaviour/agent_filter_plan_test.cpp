#include "engine/behaviour/agent_filter_plan.h"

#include "tests/engine/behaviour/agent_moments.h"
#include "tests/engine/behaviour/agent_rules.h"
#include "tests/engine/refusal.h"

#include <array>

namespace pedflux::engine {
namespace {

using ::testing::HasSubstr;

using Filter = Rule<AgentFilter>;

struct AgentFilterPlans : AgentRules {
    std::shared_ptr<AgentFilterObject> name(std::string const& title, Filter const& filter) {
        auto object = create<AgentFilterObjectState>(title);
        object->SetAgentFilter(filter);
        return object;
    }
    static Filter by_name(AgentFilterObject& object) { return std::make_shared<NamedFilter>(object.GetId()); }
};

/// A filter and what it remembers of one agent.
struct Watch {
    Watch(AgentFilter const& filter, Document const& document)
        : plan(compile(filter, document, mentions)), memory(plan.ever.size()) {}

    /// Whether the agent is selected at a moment, after this and all moments before it.
    bool at(std::function<void(FilterMoment&)> const& arrange) {
        FilterMoment moment(mentions);
        arrange(moment);
        observe(plan, moment, memory);
        return selects(plan, moment, memory);
    }

    Mentions mentions;
    FilterPlan plan;
    std::vector<std::uint8_t> memory;
};

TEST_F(AgentFilterPlans, SelectWhomTheirKindSays) {
    using Arrange = std::function<void(FilterMoment&)>;
    Arrange const nothing = [](FilterMoment&) {};
    auto const speed = [](double value) -> Arrange {
        return [value](FilterMoment& moment) { moment.metres_per_second = value; };
    };
    auto const open_ended = std::make_shared<SpeedFilter>();
    open_ended->SetRangeMin(0.5);
    struct {
        Filter filter;
        Arrange arrange;
        bool selects;
    } const cases[] = {
        {std::make_shared<AllAgentsFilter>(), nothing, true},
        {std::make_shared<ActivityFilter>(AgentActivity::QUEUING),
         [](auto& moment) { moment.doing = AgentActivity::QUEUING; }, true},
        {std::make_shared<ActivityFilter>(AgentActivity::QUEUING), nothing, false},
        {std::make_shared<AtServerFilter>(server), [&](auto& moment) { moment.add("at", server); }, true},
        {std::make_shared<AtTransitionFilter>(Transition::SimEnter(portal)),
         [](auto& moment) { moment.transitions = {0}; }, true},
        {std::make_shared<AtTransitionFilter>(Transition::SimEnter(portal)), nothing, false},
        {std::make_shared<CreatedByFilter>(journey), [&](auto& moment) { moment.add("created by", journey); }, true},
        {std::make_shared<EndStateFilter>(AgentStateAtSimulationEnd::INSIDE), nothing, true},
        {std::make_shared<EndStateFilter>(AgentStateAtSimulationEnd::FAILED), nothing, false},
        {std::make_shared<EnteredAtFilter>(portal), [&](auto& moment) { moment.add("entered at", portal); }, true},
        {std::make_shared<EnteredAtFilter>(portal), [&](auto& moment) { moment.add("exited at", portal); }, false},
        {std::make_shared<ExitedAtFilter>(portal), [&](auto& moment) { moment.add("exited at", portal); }, true},
        {std::make_shared<InAreaFilter>(volume), [&](auto& moment) { moment.add("in", volume); }, true},
        {AgentFilter::InTrip(std::make_shared<Trip>(portal, exit, TripBoundaryMethod::EXIT, TripBoundaryMethod::ENTER)),
         [](auto& moment) { moment.trips = {0}; }, true},
        {std::make_shared<LocalDensityFilter>(1, 2), [](auto& moment) { moment.density = 1.5; }, true},
        {std::make_shared<LocalDensityFilter>(1, 2), speed(1.5), false},
        {std::make_shared<SpeedFilter>(1, 2), speed(1), true},
        {std::make_shared<SpeedFilter>(1, 2), speed(2), true},
        {std::make_shared<SpeedFilter>(1, 2), speed(2.01), false},
        {std::make_shared<SpeedFilter>(1, 2), speed(0.99), false},
        {std::make_shared<SpeedFilter>(), speed(0), true},
        {open_ended, speed(1000), true},
        {open_ended, speed(0.49), false},
        {std::make_shared<ProfileFilter>(profile), [&](auto& moment) { moment.add("has profile", profile); }, true},
        {std::make_shared<ProximityFilter>(12, true), nothing, true},
        {std::make_shared<ProximityFilter>(12, false), nothing, false},
        {std::make_shared<TokenFilter>(token), [&](auto& moment) { moment.add("holds", token); }, true},
        {std::make_shared<TokenFilter>(token), nothing, false},
        {by_name(*name("Holders", AgentFilter::HoldingToken(token))), [&](auto& moment) { moment.add("holds", token); },
         true},
    };
    for (auto const& [filter, arrange, expected] : cases) {
        EXPECT_EQ(Watch(*filter, document).at(arrange), expected) << written(filter);
        EXPECT_EQ(Watch(*AgentFilter::Negated(filter), document).at(arrange), !expected) << written(filter);
        EXPECT_EQ(Watch(*AgentFilter::IsEver(filter), document).at(arrange), expected) << written(filter);
    }
}

TEST_F(AgentFilterPlans, CombineAnswers) {
    auto const holder = AgentFilter::HoldingToken(token);
    auto const queuing = AgentFilter::InArea(volume);
    // The four columns: neither, the first, the second, both.
    struct {
        Filter filter;
        std::array<bool, 4> selects;
    } const cases[] = {
        {holder->And(queuing), {false, false, false, true}},
        {holder->Or(queuing), {false, true, true, true}},
        {AgentFilter::AllOf({holder, queuing}), {false, false, false, true}},
        {AgentFilter::AnyOf({holder, queuing}), {false, true, true, true}},
        {AgentFilter::NoneOf({holder, queuing}), {true, false, false, false}},
        {AgentFilter::AllOf({}), {true, true, true, true}},
        {AgentFilter::AnyOf({}), {false, false, false, false}},
        {AgentFilter::NoneOf({}), {true, true, true, true}},
        {AgentFilter::AllOf({holder, AgentFilter::Negated(queuing)}), {false, true, false, false}},
        {AgentFilter::Negated(holder->And(AgentFilter::NoneOf({queuing}))), {true, false, true, true}},
    };
    for (auto const& [filter, expected] : cases) {
        for (std::size_t column = 0; column < expected.size(); ++column) {
            auto const arrange = [&](FilterMoment& moment) {
                if ((column & 1U) != 0) moment.add("holds", token);
                if ((column & 2U) != 0) moment.add("in", volume);
            };
            EXPECT_EQ(Watch(*filter, document).at(arrange), expected[column]) << written(filter) << column;
        }
    }
}

TEST_F(AgentFilterPlans, RememberWhatWasEverSo) {
    auto const walking_at = [](double value) {
        return [value](FilterMoment& moment) { moment.metres_per_second = value; };
    };
    auto const fast = std::make_shared<SpeedFilter>(2, 3);
    auto const slow = std::make_shared<SpeedFilter>(0, 0.5);
    auto const was_fast = AgentFilter::IsEver(fast);

    Watch ever(*was_fast, document);
    EXPECT_FALSE(ever.at(walking_at(1)));
    EXPECT_TRUE(ever.at(walking_at(2)));
    EXPECT_TRUE(ever.at(walking_at(0)));

    // Noted even in moments in which another part already decides.
    Watch slow_after_fast(*AgentFilter::AllOf({slow, was_fast}), document);
    EXPECT_FALSE(slow_after_fast.at(walking_at(0)));
    EXPECT_FALSE(slow_after_fast.at(walking_at(2.5)));
    EXPECT_TRUE(slow_after_fast.at(walking_at(0)));

    // What is inside is noted first, in the same moment.
    Watch nested(*AgentFilter::IsEver(AgentFilter::AllOf({slow, was_fast})), document);
    EXPECT_FALSE(nested.at(walking_at(0)));
    EXPECT_FALSE(nested.at(walking_at(2)));
    EXPECT_TRUE(nested.at(walking_at(0)));
    EXPECT_TRUE(nested.at(walking_at(2)));

    Watch never(*AgentFilter::Negated(was_fast), document);
    EXPECT_TRUE(never.at(walking_at(0)));
    EXPECT_FALSE(never.at(walking_at(2)));
    EXPECT_FALSE(never.at(walking_at(0)));
}

TEST_F(AgentFilterPlans, RefuseNamesThatLeadBack) {
    auto const a = name("A", std::make_shared<AllAgentsFilter>());
    auto const b = name("B", AgentFilter::IsEver(by_name(*a)));
    a->SetAgentFilter(AgentFilter::AnyOf({by_name(*b)}));
    Mentions mentions;
    EXPECT_THAT(refusal_of([&] { compile(*by_name(*a), document, mentions); }),
                HasSubstr("AgentFilterObject 'A' leads back to itself by names: 'A' -> 'B' -> 'A'"));
    auto last = name("Doubling", std::make_shared<AllAgentsFilter>());
    for (int i = 1; i <= 20; ++i) {
        last = name(document.next_unique_name("Doubling"), AgentFilter::AnyOf({by_name(*last), by_name(*last)}));
    }
    EXPECT_THAT(refusal_of([&] { compile(*by_name(*last), document, mentions); }),
                HasSubstr("AgentFilter: with those that it names, nested deeper than 1000 levels or made of more than "
                          "100000 parts"));
}

}  // namespace
}  // namespace pedflux::engine
