#include "engine/behaviour/filters/agent_filter_states.h"
#include "engine/model/accessors.h"
#include "engine/model/node_kind.h"

#include <pedflux/agent_filters.h>

#include <algorithm>

namespace pedflux {

using engine::change;
using engine::get;
using engine::make_node;
using engine::set;

namespace {

/// In depth no more than what `require_shallow` allows.
bool is_time_varying(AgentFilter const& filter) {
    switch (static_cast<AgentFilterType>(engine::type_of(filter))) {
        case AgentFilterType::ALL_AGENTS:
        case AgentFilterType::CREATED_BY:
        case AgentFilterType::END_STATE:
        case AgentFilterType::ENTERED_AT:
        case AgentFilterType::EXITED_AT:
        case AgentFilterType::PROFILE:
        case AgentFilterType::IS_EVER:
            return false;
        case AgentFilterType::ACTIVITY:
        case AgentFilterType::AT_SERVER:
        case AgentFilterType::AT_TRANSITION:
        case AgentFilterType::IN_AREA:
        case AgentFilterType::IN_TRIP:
        case AgentFilterType::LOCAL_DENSITY:
        case AgentFilterType::NAMED:
        case AgentFilterType::PROXIMITY:
        case AgentFilterType::SPEED:
        case AgentFilterType::TOKEN:
            return true;
        case AgentFilterType::NOT:
        case AgentFilterType::COMPOUND:
        case AgentFilterType::ALL_OF:
        case AgentFilterType::ANY_OF:
        case AgentFilterType::NONE_OF:
            break;
    }
    return std::ranges::any_of(engine::children_of(filter), [](auto const& child) { return is_time_varying(*child); });
}

std::shared_ptr<AgentFilter> combined(AgentFilter const& first, std::shared_ptr<AgentFilter> const& second,
                                      BooleanOperator combination) {
    return std::make_shared<CompoundFilter>(engine::clone_of(first), engine::copy_of(second), combination);
}

}  // namespace

AgentFilter::AgentFilter(engine::NodePointer node) : node_(std::move(node)) {}
AgentFilter::AgentFilter(AgentFilter const& other) : node_(engine::copy_of(engine::node_of(other))) {}
AgentFilter::~AgentFilter() = default;

bool AgentFilter::IsTimeVarying() {
    engine::require_shallow(*node_);
    return is_time_varying(*this);
}
int AgentFilter::GetAgentFilterTypeId() { return engine::type_of(*this); }
std::shared_ptr<AgentFilter> AgentFilter::Clone() { return engine::clone_of(*this); }
int AgentFilter::GetChildFilterCount() { return static_cast<int>(engine::children_of(*this).size()); }
std::shared_ptr<AgentFilter> AgentFilter::GetChildFilter(int index) { return engine::child_of(*this, index); }
std::vector<std::shared_ptr<AgentFilter>> AgentFilter::GetChildFilters() { return engine::children_of(*this); }
std::vector<std::shared_ptr<AgentFilter>> AgentFilter::GetAllNestedChildFilters() {
    return engine::nested_children_of(*this);
}

std::shared_ptr<AgentFilter> AgentFilter::AllOf(std::vector<std::shared_ptr<AgentFilter>> const& filters) {
    return std::make_shared<AllOfFilter>(filters);
}
std::shared_ptr<AgentFilter> AgentFilter::AnyOf(std::vector<std::shared_ptr<AgentFilter>> const& filters) {
    return std::make_shared<AnyOfFilter>(filters);
}
std::shared_ptr<AgentFilter> AgentFilter::NoneOf(std::vector<std::shared_ptr<AgentFilter>> const& filters) {
    return std::make_shared<NoneOfFilter>(filters);
}
std::shared_ptr<AgentFilter> AgentFilter::Negated(std::shared_ptr<AgentFilter> const& filter) {
    return std::make_shared<NotFilter>(filter);
}
std::shared_ptr<AgentFilter> AgentFilter::IsEver(std::shared_ptr<AgentFilter> const& filter) {
    return std::make_shared<IsEverFilter>(filter);
}
std::shared_ptr<AgentFilter> AgentFilter::InArea(GlobalId const& area) { return std::make_shared<InAreaFilter>(area); }
std::shared_ptr<AgentFilter> AgentFilter::EnteredAt(GlobalId const& object) {
    return std::make_shared<EnteredAtFilter>(object);
}
std::shared_ptr<AgentFilter> AgentFilter::ExitedAt(GlobalId const& object) {
    return std::make_shared<ExitedAtFilter>(object);
}
std::shared_ptr<AgentFilter> AgentFilter::HoldingToken(GlobalId const& token) {
    return std::make_shared<TokenFilter>(token);
}
std::shared_ptr<AgentFilter> AgentFilter::InTrip(std::shared_ptr<Trip> const& trip) {
    return std::make_shared<InTripFilter>(trip);
}

std::shared_ptr<AgentFilter> AgentFilter::And(std::shared_ptr<AgentFilter> const& other) {
    return combined(*this, other, BooleanOperator::AND);
}
std::shared_ptr<AgentFilter> AgentFilter::Or(std::shared_ptr<AgentFilter> const& other) {
    return combined(*this, other, BooleanOperator::OR);
}

/// A filter by one value: its constructor and the value's accessors.
#define FILTER_BY(Class, Value, Parameter, Name)                                                                  \
    Class::Class(Parameter value)                                                                                 \
        : AgentFilter(make_node<AgentFilter, engine::Class##State>([&](auto& state) { state.value = value; })) {} \
    PROPERTY_WITH(Class, Class##State, Value, Parameter, Name, value)

FILTER_BY(ActivityFilter, AgentActivity, AgentActivity, AgentActivity)
FILTER_BY(AtServerFilter, GlobalId, GlobalId const&, Server)
FILTER_BY(AtTransitionFilter, std::shared_ptr<Transition>, std::shared_ptr<Transition> const&, Transition)
FILTER_BY(CreatedByFilter, GlobalId, GlobalId const&, Event)
FILTER_BY(EndStateFilter, AgentStateAtSimulationEnd, AgentStateAtSimulationEnd, AgentStateAtSimulationEnd)
FILTER_BY(EnteredAtFilter, GlobalId, GlobalId const&, Object)
FILTER_BY(ExitedAtFilter, GlobalId, GlobalId const&, Object)
FILTER_BY(InAreaFilter, GlobalId, GlobalId const&, Area)
FILTER_BY(InTripFilter, std::shared_ptr<Trip>, std::shared_ptr<Trip> const&, Trip)
FILTER_BY(NamedFilter, GlobalId, GlobalId const&, AgentFilterObject)
FILTER_BY(ProfileFilter, GlobalId, GlobalId const&, Profile)
FILTER_BY(TokenFilter, GlobalId, GlobalId const&, Token)
FILTER_BY(NotFilter, std::shared_ptr<AgentFilter>, std::shared_ptr<AgentFilter> const&, NegatedFilter)
FILTER_BY(IsEverFilter, std::shared_ptr<AgentFilter>, std::shared_ptr<AgentFilter> const&, IsEverFilter)

AllAgentsFilter::AllAgentsFilter() : AgentFilter(make_node<AgentFilter, engine::AllAgentsFilterState>()) {}

using Bounds = engine::FilterRangeState;

#define RANGE_FILTER(Class, SetRange, Clear)                                                    \
    Class::Class() : AgentFilter(make_node<AgentFilter, engine::Class##State>()) {}             \
    Class::Class(double min, double max)                                                        \
        : AgentFilter(make_node<AgentFilter, engine::Class##State>([&](auto& state) {           \
              state.min = min;                                                                  \
              state.max = max;                                                                  \
          })) {}                                                                                \
    double Class::GetRangeMin() const { return get(*this, &Bounds::min); }                      \
    double Class::GetRangeMax() const { return get(*this, &Bounds::max); }                      \
    bool Class::HasRangeMin() const { return engine::state_of<Bounds>(*this).min.has_value(); } \
    bool Class::HasRangeMax() const { return engine::state_of<Bounds>(*this).max.has_value(); } \
    void Class::SetRangeMin(double min) {                                                       \
        change<Bounds>(*this, [&](Bounds& bounds) { bounds.min = min; });                       \
    }                                                                                           \
    void Class::SetRangeMax(double max) {                                                       \
        change<Bounds>(*this, [&](Bounds& bounds) { bounds.max = max; });                       \
    }                                                                                           \
    void Class::SetRange(double min, double max) {                                              \
        change<Bounds>(*this, [&](Bounds& bounds) {                                             \
            bounds.min = min;                                                                   \
            bounds.max = max;                                                                   \
        });                                                                                     \
    }                                                                                           \
    void Class::Clear() {                                                                       \
        change<Bounds>(*this, [](Bounds& bounds) {                                              \
            bounds.min.reset();                                                                 \
            bounds.max.reset();                                                                 \
        });                                                                                     \
    }

RANGE_FILTER(LocalDensityFilter, SetDensityRange, ClearDensities)
RANGE_FILTER(SpeedFilter, SetSpeedRange, ClearSpeeds)

ProximityFilter::ProximityFilter(double distance, bool ignoreBarriers)
    : AgentFilter(make_node<AgentFilter, engine::ProximityFilterState>([&](auto& state) {
          state.distance = distance;
          state.ignore_barriers = ignoreBarriers;
      })) {}
VALUE_PROPERTY(ProximityFilter, double, Distance, distance)
bool ProximityFilter::IsIgnoreBarriers() const { return get(*this, &engine::ProximityFilterState::ignore_barriers); }
void ProximityFilter::SetIgnoreBarriers(bool ignoreBarriers) {
    set(*this, &engine::ProximityFilterState::ignore_barriers, ignoreBarriers);
}

CompoundFilter::CompoundFilter(std::shared_ptr<AgentFilter> const& first, std::shared_ptr<AgentFilter> const& second,
                               BooleanOperator combination)
    : AgentFilter(make_node<AgentFilter, engine::CompoundFilterState>([&](auto& state) {
          state.first = first;
          state.second = second;
          state.combination = combination;
      })) {}
PROPERTY(CompoundFilter, std::shared_ptr<AgentFilter>, FirstChildFilter, first)
PROPERTY(CompoundFilter, std::shared_ptr<AgentFilter>, SecondChildFilter, second)
VALUE_PROPERTY(CompoundFilter, BooleanOperator, BooleanOperator, combination)

using List = engine::FilterListState;

#define LIST_FILTER(Class)                                                                                             \
    Class::Class(std::shared_ptr<AgentFilter> const& first, std::shared_ptr<AgentFilter> const& second)                \
        : Class(std::vector<std::shared_ptr<AgentFilter>>{first, second}) {}                                           \
    Class::Class(std::vector<std::shared_ptr<AgentFilter>> const& filters)                                             \
        : AgentFilter(make_node<AgentFilter, engine::Class##State>([&](auto& state) { state.children = filters; })) {} \
    void Class::AddChildFilter(std::shared_ptr<AgentFilter> const& filter) {                                           \
        change<List>(*this, [&](List& list) { list.children.push_back(filter); });                                     \
    }                                                                                                                  \
    void Class::ClearChildFilters() { SetChildFilters({}); }                                                           \
    void Class::SetChildFilter(int index, std::shared_ptr<AgentFilter> const& filter) {                                \
        change<List>(*this, [&](List& list) {                                                                          \
            list.children[engine::checked_index(list, "child", index, list.children.size())] = filter;                 \
        });                                                                                                            \
    }                                                                                                                  \
    void Class::SetChildFilters(std::vector<std::shared_ptr<AgentFilter>> const& filters) {                            \
        change<List>(*this, [&](List& list) { list.children = filters; });                                             \
    }

LIST_FILTER(AllOfFilter)
LIST_FILTER(AnyOfFilter)
LIST_FILTER(NoneOfFilter)

std::shared_ptr<AgentFilter> AgentFilterObject::GetAgentFilter() {
    return engine::get_copy(*this, &engine::AgentFilterObjectState::filter);
}
void AgentFilterObject::SetAgentFilter(std::shared_ptr<AgentFilter> const& filter) {
    engine::set_copy(*this, &engine::AgentFilterObjectState::filter, filter);
}

namespace engine {

template <>
std::span<KindOfNode<AgentFilter> const* const> kinds_of<AgentFilter>() {
    static KindOfNode<AgentFilter> const* const kinds[] = {
        &node_kind<AgentFilter, AllAgentsFilterState>(),    &node_kind<AgentFilter, ActivityFilterState>(),
        &node_kind<AgentFilter, AtServerFilterState>(),     &node_kind<AgentFilter, AtTransitionFilterState>(),
        &node_kind<AgentFilter, CreatedByFilterState>(),    &node_kind<AgentFilter, EndStateFilterState>(),
        &node_kind<AgentFilter, EnteredAtFilterState>(),    &node_kind<AgentFilter, ExitedAtFilterState>(),
        &node_kind<AgentFilter, InAreaFilterState>(),       &node_kind<AgentFilter, InTripFilterState>(),
        &node_kind<AgentFilter, LocalDensityFilterState>(), &node_kind<AgentFilter, NamedFilterState>(),
        &node_kind<AgentFilter, ProfileFilterState>(),      &node_kind<AgentFilter, ProximityFilterState>(),
        &node_kind<AgentFilter, SpeedFilterState>(),        &node_kind<AgentFilter, TokenFilterState>(),
        &node_kind<AgentFilter, NotFilterState>(),          &node_kind<AgentFilter, IsEverFilterState>(),
        &node_kind<AgentFilter, CompoundFilterState>(),     &node_kind<AgentFilter, AllOfFilterState>(),
        &node_kind<AgentFilter, AnyOfFilterState>(),        &node_kind<AgentFilter, NoneOfFilterState>()};
    return kinds;
}

}  // namespace engine
}  // namespace pedflux
