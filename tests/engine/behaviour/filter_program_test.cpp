#include "engine/behaviour/filters/filter_program.h"

#include "tests/engine/behaviour/agent_rules.h"
#include "tests/engine/refusal.h"

#include <set>

namespace pedflux::engine {
namespace {

using ::testing::HasSubstr;

using Filter = NodePointerOf<AgentFilter>;

/// An agent of the journey and profile, in the link and without a token; it came in and goes out at the portal.
struct FilterMoment final : FilterSituation {
    explicit FilterMoment(FilterProgram const& asked) : program(asked) {}

    FilterProgram const& program;
    std::set<std::string> events, places, profiles, areas, tokens;
    std::set<SymbolIndex> ever;

    bool is_among(std::set<std::string> const& ids, SymbolIndex object) const {
        return ids.contains(GlobalId(program.symbols.objects[object]).GetString());
    }
    bool was_created_by(SymbolIndex event) const override { return is_among(events, event); }
    bool entered_at(SymbolIndex place) const override { return is_among(places, place); }
    bool has_profile(SymbolIndex profile) const override { return is_among(profiles, profile); }
    bool is_in(SymbolIndex area) const override { return is_among(areas, area); }
    bool holds(SymbolIndex token) const override { return is_among(tokens, token); }
    bool exited_at(SymbolIndex place) const override { return is_among(places, place); }
    bool is_at_server(SymbolIndex) const override { return false; }
    bool is_on_trip(SymbolIndex trip) const override { return trip == 1; }
    bool makes_transition(SymbolIndex transition) const override { return transition == 0; }
    bool is_close_to_others(SymbolIndex proximity) const override {
        return program.proximities[proximity].distance > 2;
    }
    bool ever_passes(SymbolIndex filter) const override { return ever.contains(filter); }
    AgentActivity activity() const override { return AgentActivity::WALKING; }
    AgentStateAtSimulationEnd end_state() const override { return AgentStateAtSimulationEnd::EXITED; }
    double density() const override { return 0.5; }
    double speed() const override { return 1; }
};

struct FilterPrograms : AgentRules {
    bool selects(Filter const& filter) const {
        auto const program = compile(*filter, document);
        FilterMoment moment(program);
        moment.events = {GlobalId(journey).GetString()};
        moment.places = {GlobalId(portal).GetString()};
        moment.profiles = {GlobalId(profile).GetString()};
        moment.areas = {GlobalId(link).GetString()};
        return passes(program, moment);
    }
    std::shared_ptr<AgentFilterObject> name(std::string const& title, Filter const& filter) {
        auto object = create<AgentFilterObjectState>(title);
        object->SetAgentFilter(filter);
        return object;
    }
    static Filter by_name(AgentFilterObject& object) { return std::make_shared<NamedFilter>(object.GetId()); }
};

TEST_F(FilterPrograms, SelectWhatTheirKindSays) {
    auto const trip = [&] {
        return std::make_shared<Trip>(portal, exit, TripBoundaryMethod::ENTER, TripBoundaryMethod::ENTER);
    };
    Filter const yes = std::make_shared<ProfileFilter>(profile);
    Filter const no = std::make_shared<TokenFilter>(token);
    auto const named_yes = name("Yes", yes);
    struct Case {
        Filter filter;
        bool selects;
    };
    std::vector<Case> const cases{
        {std::make_shared<AllAgentsFilter>(), true},
        {yes, true},
        {no, false},
        {std::make_shared<ProfileFilter>(GlobalId::Generate()), false},
        {std::make_shared<CreatedByFilter>(journey), true},
        {std::make_shared<EnteredAtFilter>(portal), true},
        {std::make_shared<EnteredAtFilter>(exit), false},
        {std::make_shared<ExitedAtFilter>(portal), true},
        {std::make_shared<InAreaFilter>(link), true},
        {std::make_shared<InAreaFilter>(portal), false},
        {std::make_shared<AtServerFilter>(server), false},
        {std::make_shared<InTripFilter>(trip()), false},
        {AgentFilter::AllOf({AgentFilter::Negated(std::make_shared<InTripFilter>(trip())),
                             std::make_shared<AtTransitionFilter>(Transition::SimEnter(portal))}),
         true},
        {std::make_shared<ProximityFilter>(3, true), true},
        {std::make_shared<ProximityFilter>(1, true), false},
        {std::make_shared<ActivityFilter>(AgentActivity::WALKING), true},
        {std::make_shared<ActivityFilter>(AgentActivity::QUEUING), false},
        {std::make_shared<EndStateFilter>(AgentStateAtSimulationEnd::EXITED), true},
        {std::make_shared<EndStateFilter>(AgentStateAtSimulationEnd::FAILED), false},
        {std::make_shared<SpeedFilter>(1, 1), true},
        {std::make_shared<SpeedFilter>(1.1, 2), false},
        {std::make_shared<LocalDensityFilter>(0, 0.4), false},
        {AgentFilter::IsEver(yes), false},
        {AgentFilter::Negated(no), true},
        {yes->And(no), false},
        {yes->And(AgentFilter::Negated(no)), true},
        {no->Or(yes), true},
        {AgentFilter::AllOf({yes, no}), false},
        {AgentFilter::AllOf({}), true},
        {AgentFilter::AnyOf({no, yes}), true},
        {AgentFilter::AnyOf({}), false},
        {AgentFilter::NoneOf({no, AgentFilter::Negated(yes)}), true},
        {AgentFilter::NoneOf({no, yes}), false},
        {AgentFilter::Negated(AgentFilter::AnyOf({no, AgentFilter::NoneOf({yes})})), true},
        {by_name(*named_yes), true},
        {AgentFilter::Negated(by_name(*named_yes)), false},
    };
    for (std::size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(selects(cases[i].filter), cases[i].selects) << "case " << i;
}

TEST_F(FilterPrograms, HoldWhatIsAskedOfTheWholeRunOnItsOwn) {
    auto const inner =
        std::make_shared<TokenFilter>(token)->And(AgentFilter::IsEver(std::make_shared<InAreaFilter>(link)));
    auto const program =
        compile(*AgentFilter::NoneOf({AgentFilter::IsEver(inner), std::make_shared<ProfileFilter>(profile)}), document);
    EXPECT_THAT(program.kinds, ::testing::UnorderedElementsAre(AgentFilterType::PROFILE, AgentFilterType::IS_EVER));
    EXPECT_TRUE(program.areas.empty());
    ASSERT_EQ(program.ever.size(), 1U);
    EXPECT_EQ(program.ever[0].symbols.objects.size(), 1U);
    ASSERT_EQ(program.ever[0].ever.size(), 1U);
    EXPECT_EQ(program.ever[0].ever[0].areas.size(), 1U);
}

TEST_F(FilterPrograms, AreRefusedWhenNamesLeadNowhereOrBack) {
    auto const first = name("First", std::make_shared<AllAgentsFilter>());
    auto const second = name("Second", AgentFilter::Negated(by_name(*first)));
    first->SetAgentFilter(AgentFilter::IsEver(by_name(*second)));
    EXPECT_THAT(refusal_of([&] { selects(by_name(*first)); }),
                HasSubstr("leads back to itself by names: 'First' -> 'Second' -> 'First'"));
    EXPECT_EQ(refusal_of([&] { selects(std::make_shared<NamedFilter>(GlobalId::Generate())); }),
              "A filter names an agent filter object that the project does not have");
}

}  // namespace
}  // namespace pedflux::engine
