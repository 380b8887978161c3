#include "engine/model/codec.h"
#include "tests/engine/behaviour/agent_rules.h"
#include "tests/engine/refusal.h"

#include <limits>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Filter = NodePointerOf<AgentFilter>;
using Filters = NodeList<AgentFilter>;

Filter everyone() { return std::make_shared<AllAgentsFilter>(); }

struct AgentFilters : AgentRules {
    std::shared_ptr<AgentFilterObject> named = create<AgentFilterObjectState>("Named");

    Filters one_of_each() const {
        auto const walking = std::make_shared<ActivityFilter>(AgentActivity::WALKING);
        return {everyone(),
                walking,
                std::make_shared<AtServerFilter>(server),
                std::make_shared<AtTransitionFilter>(Transition::SimEnter(portal)),
                std::make_shared<CreatedByFilter>(journey),
                std::make_shared<EndStateFilter>(AgentStateAtSimulationEnd::FAILED),
                std::make_shared<EnteredAtFilter>(portal),
                std::make_shared<ExitedAtFilter>(portal),
                std::make_shared<InAreaFilter>(volume),
                std::make_shared<InTripFilter>(
                    std::make_shared<Trip>(portal, exit, TripBoundaryMethod::EXIT, TripBoundaryMethod::ENTER)),
                std::make_shared<LocalDensityFilter>(0.5, 4),
                std::make_shared<NamedFilter>(named->GetId()),
                std::make_shared<ProfileFilter>(profile),
                std::make_shared<ProximityFilter>(2.5, true),
                std::make_shared<SpeedFilter>(0, 0.25),
                std::make_shared<TokenFilter>(token),
                std::make_shared<NotFilter>(walking),
                std::make_shared<IsEverFilter>(walking),
                std::make_shared<CompoundFilter>(walking, everyone(), BooleanOperator::OR),
                std::make_shared<AllOfFilter>(Filters{walking, everyone(), walking}),
                std::make_shared<AnyOfFilter>(walking, everyone()),
                std::make_shared<NoneOfFilter>(Filters{walking})};
    }
};

TEST_F(AgentFilters, ComeInAllKindsAndAreCopiedWhole) {
    auto const filters = one_of_each();
    expect_distinct_numbers<AgentFilter>();
    expect_one_of_each_kind(filters);
    expect_clones(filters);
}

TEST_F(AgentFilters, CopiesAreIndependent) {
    auto const speed = std::make_shared<SpeedFilter>(1, 2);
    CompoundFilter const original(speed, everyone(), BooleanOperator::OR);
    CompoundFilter copy(original);
    speed->SetRangeMax(3);
    auto const copied = std::dynamic_pointer_cast<SpeedFilter>(copy.GetFirstChildFilter());
    ASSERT_TRUE(copied);
    EXPECT_EQ(copied->GetRangeMax(), 2);
    EXPECT_EQ(copy.GetBooleanOperator(), BooleanOperator::OR);
}

TEST_F(AgentFilters, AreSavedAndOpenedEqual) {
    for (auto const& filter : one_of_each()) {
        auto const object = create<AgentFilterObjectState>(document.next_unique_name("Filter"));
        object->SetAgentFilter(filter);
        EXPECT_EQ(written(object->GetAgentFilter()), written(filter));
    }
    auto const opened = from_text(to_text(document), known_kinds());
    EXPECT_THAT(differences(document, *opened), IsEmpty());
    EXPECT_THAT(opened->open_warnings, IsEmpty());
    auto const* const last = opened->objects<AgentFilterObjectState>().back();
    EXPECT_NE(std::dynamic_pointer_cast<NoneOfFilter>(last->filter), nullptr);
}

TEST_F(AgentFilters, VaryWithTimeUnlessTheyConcernWhatIsSettled) {
    std::map<AgentFilterType, bool> const settled{
        {AgentFilterType::ALL_AGENTS, true}, {AgentFilterType::CREATED_BY, true}, {AgentFilterType::END_STATE, true},
        {AgentFilterType::ENTERED_AT, true}, {AgentFilterType::EXITED_AT, true},  {AgentFilterType::PROFILE, true},
        {AgentFilterType::IS_EVER, true}};
    for (auto const& filter : one_of_each()) {
        auto const type = static_cast<AgentFilterType>(filter->GetAgentFilterTypeId());
        EXPECT_EQ(filter->IsTimeVarying(), !settled.contains(type)) << written(filter);
    }

    Filter const created = std::make_shared<CreatedByFilter>(journey);
    Filter const in_area = AgentFilter::InArea(volume);
    struct {
        Filter filter;
        bool varies;
    } const cases[] = {
        {AgentFilter::Negated(created), false},
        {AgentFilter::Negated(in_area), true},
        {created->And(everyone()), false},
        {created->Or(in_area), true},
        {AgentFilter::AllOf({}), false},
        {AgentFilter::AnyOf({created, created, in_area}), true},
        {AgentFilter::NoneOf({created, AgentFilter::IsEver(in_area)}), false},
        {AgentFilter::NoneOf({created, AgentFilter::Negated(AgentFilter::AnyOf({in_area}))}), true},
    };
    for (auto const& [filter, varies] : cases) EXPECT_EQ(filter->IsTimeVarying(), varies) << written(filter);
}

TEST_F(AgentFilters, KnowTheirChildren) {
    std::map<AgentFilterType, int> const with_children{{AgentFilterType::NOT, 1},      {AgentFilterType::IS_EVER, 1},
                                                       {AgentFilterType::COMPOUND, 2}, {AgentFilterType::ALL_OF, 3},
                                                       {AgentFilterType::ANY_OF, 2},   {AgentFilterType::NONE_OF, 1}};
    for (auto const& filter : one_of_each()) {
        auto const entry = with_children.find(static_cast<AgentFilterType>(filter->GetAgentFilterTypeId()));
        int const count = entry == with_children.end() ? 0 : entry->second;
        EXPECT_EQ(filter->GetChildFilterCount(), count) << written(filter);
        auto const children = filter->GetChildFilters();
        ASSERT_EQ(static_cast<int>(children.size()), count);
        for (int i = 0; i < count; ++i) EXPECT_EQ(filter->GetChildFilter(i), children[static_cast<std::size_t>(i)]);
        for (int const wrong : {-1, count}) {
            EXPECT_THAT(refusal_of([&] { filter->GetChildFilter(wrong); }),
                        HasSubstr("there is no child " + std::to_string(wrong) + ", it has " + std::to_string(count)));
        }
    }

    auto const inner = AgentFilter::Negated(everyone());
    auto const outer = AgentFilter::AllOf({AgentFilter::IsEver(inner), everyone()});
    auto const nested = outer->GetAllNestedChildFilters();
    EXPECT_THAT(nested,
                ElementsAre(outer->GetChildFilter(0), inner, inner->GetChildFilter(0), outer->GetChildFilter(1)));
}

TEST_F(AgentFilters, CombineCopies) {
    auto const speed = std::make_shared<SpeedFilter>(1, 2);
    auto const both = std::dynamic_pointer_cast<CompoundFilter>(speed->And(everyone()));
    auto const either = std::dynamic_pointer_cast<CompoundFilter>(speed->Or(speed));
    ASSERT_TRUE(both);
    ASSERT_TRUE(either);
    EXPECT_EQ(both->GetBooleanOperator(), BooleanOperator::AND);
    EXPECT_EQ(either->GetBooleanOperator(), BooleanOperator::OR);
    speed->SetRangeMin(0);
    for (auto const& copied :
         {both->GetFirstChildFilter(), either->GetFirstChildFilter(), either->GetSecondChildFilter()}) {
        auto const range = std::dynamic_pointer_cast<SpeedFilter>(copied);
        ASSERT_TRUE(range);
        EXPECT_EQ(range->GetRangeMin(), 1);
    }
    EXPECT_THAT(refusal_of([&] { speed->And(nullptr); }),
                HasSubstr("CompoundFilter: secondChildFilter must be given, not empty"));
}

TEST_F(AgentFilters, RangesStayInOrder) {
    LocalDensityFilter density;
    EXPECT_FALSE(density.HasRangeMin() || density.HasRangeMax());
    EXPECT_THAT(refusal_of([&] { density.GetRangeMax(); }), HasSubstr("LocalDensityFilter has no rangeMax"));
    density.SetRangeMax(2);
    EXPECT_FALSE(density.HasRangeMin());
    EXPECT_THAT(refusal_of([&] { density.SetRangeMin(3); }),
                HasSubstr("LocalDensityFilter: rangeMin must be at most rangeMax, 2, not 3"));
    EXPECT_THAT(refusal_of([&] { density.SetDensityRange(1, std::numeric_limits<double>::quiet_NaN()); }),
                HasSubstr("rangeMax must be at least 0"));
    EXPECT_FALSE(density.HasRangeMin());
    EXPECT_EQ(density.GetRangeMax(), 2);
    density.SetDensityRange(2, 2);
    EXPECT_EQ(density.GetRangeMin(), 2);
    density.ClearDensities();
    EXPECT_FALSE(density.HasRangeMin() || density.HasRangeMax());
    // A range within another filter is named by the way to it.
    auto const speed = std::make_shared<SpeedFilter>();
    Json file = written(AgentFilter::Negated(speed));
    file["negatedFilter"]["rangeMin"] = 3;
    file["negatedFilter"]["rangeMax"] = 1;
    named->SetAgentFilter(AgentFilter::Negated(speed));
    Json project = Json::parse(to_text(document));
    project["objects"].back()["agentFilter"] = file;
    EXPECT_THAT(refusal_of([&] { from_text(project.dump(), known_kinds()); }),
                HasSubstr("agentFilter.negatedFilter.rangeMin must be at most rangeMax, 1, not 3"));
}

TEST_F(AgentFilters, ListsAreEditedAllOrNothing) {
    auto const list = std::make_shared<AnyOfFilter>(Filters{});
    auto const first = everyone();
    auto const second = everyone();
    list->AddChildFilter(first);
    list->AddChildFilter(second);
    list->SetChildFilter(0, second);
    EXPECT_THAT(list->GetChildFilters(), ElementsAre(second, second));

    auto const holder = std::make_shared<NotFilter>(list);
    struct {
        std::function<void()> action;
        char const* message;
    } const cases[] = {
        {[&] { list->SetChildFilter(2, first); }, "AnyOfFilter: there is no child 2, it has 2"},
        {[&] { list->AddChildFilter(nullptr); }, "AnyOfFilter: childFilters.2 must be given, not empty"},
        {[&] {
             list->SetChildFilters({first, nullptr});
         },
         "childFilters.1 must be given, not empty"},
        {[&] { list->AddChildFilter(list); }, "must not be or hold the AnyOfFilter itself"},
        {[&] {
             list->SetChildFilters({first, holder});
         },
         "must not be or hold the AnyOfFilter itself"},
        {[&] { holder->SetNegatedFilter(holder); }, "must not be or hold the NotFilter itself"},
    };
    for (auto const& [action, message] : cases) {
        EXPECT_THAT(refusal_of(action), HasSubstr(message));
        EXPECT_THAT(list->GetChildFilters(), ElementsAre(second, second));
        EXPECT_EQ(holder->GetNegatedFilter(), list);
    }
    list->ClearChildFilters();
    EXPECT_EQ(list->GetChildFilterCount(), 0);
}

TEST_F(AgentFilters, RefuseWhatMakesNoSense) {
    double const infinite = std::numeric_limits<double>::infinity();
    struct {
        std::function<void()> action;
        char const* message;
    } const cases[] = {
        {[] { ActivityFilter(static_cast<AgentActivity>(7)); },
         "ActivityFilter: agentActivity must be one of STANDING"},
        {[] { EndStateFilter(static_cast<AgentStateAtSimulationEnd>(-1)); }, "must be one of EXITED (0)"},
        {[] { CompoundFilter(everyone(), everyone(), static_cast<BooleanOperator>(2)); }, "AND (0), OR (1), not 2"},
        {[] { ProximityFilter(0, true); }, "ProximityFilter: distance must be greater than 0 m, not 0"},
        {[&] { ProximityFilter(infinite, true); }, "distance must be greater than 0 m, not inf"},
        {[] { SpeedFilter(-0.5, 1); }, "SpeedFilter: rangeMin must be at least 0, not -0.5"},
        {[] { SpeedFilter(2, 1); }, "SpeedFilter: rangeMin must be at most rangeMax, 1, not 2"},
        {[] { AtTransitionFilter(std::shared_ptr<Transition>()); }, "transition must be given, not empty"},
        {[] { InTripFilter(std::shared_ptr<Trip>()); }, "trip must be given, not empty"},
        {[] { IsEverFilter(std::shared_ptr<AgentFilter>()); }, "isEverFilter must be given, not empty"},
        {[] { TokenFilter{GlobalId::INVALID}; }, "the identifier of a token, not the invalid identifier"},
    };
    for (auto const& [action, message] : cases) EXPECT_THAT(refusal_of(action), HasSubstr(message));
}

TEST_F(AgentFilters, ReferToObjectsOfTheRightKind) {
    struct {
        Filter filter;
        char const* message;
    } const cases[] = {
        {std::make_shared<AtServerFilter>(portal),
         "agentFilter.server must be the identifier of a server, not that of"},
        {std::make_shared<CreatedByFilter>(broadcast), "must be the identifier of an event that brings people"},
        {std::make_shared<EnteredAtFilter>(volume), "must be the identifier of a portal, floor, connection or zone"},
        {std::make_shared<ExitedAtFilter>(server), "must be the identifier of a portal, floor, connection or zone"},
        {std::make_shared<InAreaFilter>(token), "the identifier of a portal, floor, connection, zone or volume"},
        {std::make_shared<NamedFilter>(token), "must be the identifier of an agent filter object"},
        {std::make_shared<ProfileFilter>(token), "must be the identifier of a profile"},
        {std::make_shared<TokenFilter>(profile), "must be the identifier of a token"},
        {AgentFilter::IsEver(AgentFilter::HoldingToken(GlobalId::Generate())), "which no object of the project has"},
        {AgentFilter::InTrip(
             std::make_shared<Trip>(portal, token, TripBoundaryMethod::EXIT, TripBoundaryMethod::ENTER)),
         "must be the identifier of a floor, connection, portal or zone"},
        {nullptr, "AgentFilterObject 'Named': agentFilter must be given, not empty"},
    };
    auto const before = written(named->GetAgentFilter());
    for (auto const& [filter, message] : cases) {
        EXPECT_THAT(refusal_of([&, &given = filter] { named->SetAgentFilter(given); }), HasSubstr(message));
        EXPECT_EQ(written(named->GetAgentFilter()), before);
    }

    named->SetAgentFilter(AgentFilter::AnyOf({AgentFilter::Negated(AgentFilter::HoldingToken(token)), everyone()}));
    EXPECT_THAT(refusal_of([&] { document.remove(*document.find(token)); }), HasSubstr("Named"));
    named->SetAgentFilter(everyone());
    document.remove(*document.find(token));
    EXPECT_EQ(document.find(token), nullptr);
}

TEST_F(AgentFilters, AnObjectKeepsACopy) {
    EXPECT_EQ(named->GetTypeId(), static_cast<int>(ObjectType::AGENT_FILTER_OBJECT));
    EXPECT_EQ(named->GetAgentFilter()->GetAgentFilterTypeId(), static_cast<int>(AgentFilterType::ALL_AGENTS));
    auto const speed = std::make_shared<SpeedFilter>(1, 2);
    named->SetAgentFilter(speed);
    speed->ClearSpeeds();
    auto const kept = std::dynamic_pointer_cast<SpeedFilter>(named->GetAgentFilter());
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->GetRangeMin(), 1);
    kept->SetRangeMin(0);
    EXPECT_EQ(std::dynamic_pointer_cast<SpeedFilter>(named->GetAgentFilter())->GetRangeMin(), 1);
}

}  // namespace
}  // namespace pedflux::engine
