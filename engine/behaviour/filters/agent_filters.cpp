#include "engine/behaviour/filters/agent_filter_states.h"
#include "engine/model/node_handles.h"

#include <pedflux/agent_filters.h>

#include <algorithm>

namespace pedflux {

using engine::change;
using engine::get;

namespace {

/// Whether what a filter selects can vary in time.
enum class Variation { CONSTANT, VARYING, AS_CHILDREN };

Variation variation_of(AgentFilter const& filter) {
    switch (static_cast<AgentFilterType>(engine::type_of(filter))) {
#define AGENT_FILTER(Class, type, variation, ...) \
    case AgentFilterType::type:                   \
        return Variation::variation;
#include "engine/behaviour/filters/agent_filter_table.def"
    }
    return Variation::AS_CHILDREN;
}

/// In depth no more than what `require_shallow` allows.
bool is_time_varying(AgentFilter const& filter) {
    auto const variation = variation_of(filter);
    if (variation != Variation::AS_CHILDREN) return variation == Variation::VARYING;
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

using Bounds = engine::FilterRangeState;

/// Is and Set, where the SDK's Is is const.
#define PEDFLUX_ACCESS_CONST_FLAG(Class, Type, Name, member)                                   \
    Type Class::Is##Name() const { return engine::get(*this, &engine::Class##State::member); } \
    PEDFLUX_ACCESS_SETTER(Class, Type, Name, member)
/// A list of filters that make one up.
#define PEDFLUX_ACCESS_CHILDREN(Class, Type, Name, member)                                            \
    void Class::AddChildFilter(std::shared_ptr<AgentFilter> const& filter) {                          \
        change<engine::Class##State>(*this, [&](auto& state) { state.member.push_back(filter); });    \
    }                                                                                                 \
    void Class::ClearChildFilters() { SetChildFilters({}); }                                          \
    void Class::SetChildFilter(int index, std::shared_ptr<AgentFilter> const& filter) {               \
        change<engine::Class##State>(*this, [&](auto& state) {                                        \
            state.member[engine::checked_index(state, "child", index, state.member.size())] = filter; \
        });                                                                                           \
    }                                                                                                 \
    void Class::SetChildFilters(Type const& filters) {                                                \
        change<engine::Class##State>(*this, [&](auto& state) { state.member = filters; });            \
    }

#define AGENT_FILTER(Class, type, variation, ...)        \
    PEDFLUX_CONSTRUCTOR(AgentFilter, Class, __VA_ARGS__) \
    PEDFLUX_ACCESSORS(Class, __VA_ARGS__)
#define RANGE_FILTER(Class, type, variation, SetRange, Clear)                                   \
    Class::Class() : AgentFilter(engine::make_node<AgentFilter, engine::Class##State>()) {}     \
    Class::Class(double min, double max)                                                        \
        : AgentFilter(engine::make_node<AgentFilter, engine::Class##State>([&](auto& state) {   \
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
#include "engine/behaviour/filters/agent_filter_table.def"

#define OF_TWO(Class)                                                                                   \
    Class::Class(std::shared_ptr<AgentFilter> const& first, std::shared_ptr<AgentFilter> const& second) \
        : Class(std::vector{first, second}) {}
OF_TWO(AllOfFilter)
OF_TWO(AnyOfFilter)
OF_TWO(NoneOfFilter)

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
#define AGENT_FILTER(Class, ...) &node_kind<AgentFilter, Class##State>(),
#include "engine/behaviour/filters/agent_filter_table.def"
    };
    return kinds;
}

}  // namespace engine
}  // namespace pedflux
