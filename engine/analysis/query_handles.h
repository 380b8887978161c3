#pragma once

#include "engine/analysis/frames.h"
#include "engine/analysis/map_query_states.h"
#include "engine/model/properties.h"

#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

/// The getters and setters of queries. A field may belong to a part of the state.
namespace pedflux::engine {

/// A change of a query invalidates the maps of its last evaluation.
inline void forget_maps(QueryState&) {}
inline void forget_maps(MapQueryState& state) { state.maps.clear(); }

template <class State, class Member, class Part>
Member const& get_part(SimObject& handle, Member Part::*member) {
    return state_of<State>(handle).*member;
}

template <class State, class Member, class Part, class Value>
void set_part(SimObject& handle, Member Part::*member, Value&& value) {
    State& state = state_of<State>(handle);
    set_field(owner_of(state), state, member, std::forward<Value>(value));
    forget_maps(state);
}

/// Sets the list of runs of a query of several runs, and its first one as the run of the query.
template <class State>
void set_runs(SimObject& handle, std::vector<GlobalId> const& runs) {
    set_part<State>(handle, &State::runs, runs);
    set_part<State>(handle, &State::run, runs.empty() ? std::nullopt : std::optional(runs.front()));
}

// The forms of properties.
#define PEDFLUX_PROPERTY(Query, Type, Argument, Name, member)                                                        \
    Type Query::Get##Name() { return engine::get_part<engine::Query##State>(*this, &engine::Query##State::member); } \
    void Query::Set##Name(Argument value) {                                                                          \
        engine::set_part<engine::Query##State>(*this, &engine::Query##State::member, value);                         \
    }
#define PEDFLUX_VALUE(Query, Type, Name, member) PEDFLUX_PROPERTY(Query, Type, Type, Name, member)
#define PEDFLUX_LIST(Query, Name, member) \
    PEDFLUX_PROPERTY(Query, std::vector<GlobalId>, std::vector<GlobalId> const&, Name, member)
#define PEDFLUX_FLAG(Query, Name, member)                                                                           \
    bool Query::Is##Name() { return engine::get_part<engine::Query##State>(*this, &engine::Query##State::member); } \
    void Query::Set##Name(bool value) {                                                                             \
        engine::set_part<engine::Query##State>(*this, &engine::Query##State::member, value);                        \
    }
/// Write-only.
#define PEDFLUX_SETTER(Query, Argument, Name, member)                                        \
    void Query::Set##Name(Argument value) {                                                  \
        engine::set_part<engine::Query##State>(*this, &engine::Query##State::member, value); \
    }
/// A shared object; the query keeps a copy and hands out copies.
#define PEDFLUX_COPIED(Query, Type, Name, member)                                                             \
    std::shared_ptr<Type> Query::Get##Name() {                                                                \
        return engine::copy_of(engine::get_part<engine::Query##State>(*this, &engine::Query##State::member)); \
    }                                                                                                         \
    void Query::Set##Name(std::shared_ptr<Type> const& value) {                                               \
        engine::set_part<engine::Query##State>(*this, &engine::Query##State::member, engine::copy_of(value)); \
    }

// The operations of the parts that queries of several families have.
#define PEDFLUX_OPERATIONS_Filtered(Query) PEDFLUX_COPIED(Query, AgentFilter, AgentFilter, filter)
#define PEDFLUX_OPERATIONS_Aggregated(Query) PEDFLUX_VALUE(Query, AggregationType, AggregationType, aggregation)
#define PEDFLUX_OPERATIONS_Sampled(Query) PEDFLUX_VALUE(Query, int, SamplingPeriodInSeconds, sampling_period)
#define PEDFLUX_OPERATIONS_SeveralRuns(Query)                                              \
    void Query::SetSimulationRunId(GlobalId const& run) { SetSimulationRunIds({run}); }    \
    std::vector<GlobalId> Query::GetSimulationRunIds() {                                   \
        return engine::get_part<engine::Query##State>(*this, &engine::Query##State::runs); \
    }                                                                                      \
    void Query::SetSimulationRunIds(std::vector<GlobalId> const& runs) {                   \
        engine::set_runs<engine::Query##State>(*this, runs);                               \
    }

/// What a line of a list of queries defines of its class: the number of its type and the operations of its parts.
#define PEDFLUX_QUERY_HANDLE(Family, Query, TYPE, ...)                                \
    int Query::Get##Family##TypeId() { return static_cast<int>(Family##Type::TYPE); } \
    __VA_OPT__(PEDFLUX_RESCAN(PEDFLUX_OPERATIONS(Query, __VA_ARGS__)))

// The operations of the parts, one after the other. A macro does not expand within its own expansion, so each part
// takes one more scan of the preprocessor; PEDFLUX_RESCAN has enough for 15 parts.
#define PEDFLUX_OPERATIONS(Query, Part, ...) \
    PEDFLUX_OPERATIONS_##Part(Query) __VA_OPT__(PEDFLUX_OPERATIONS_AGAIN PEDFLUX_PARENTHESES(Query, __VA_ARGS__))
#define PEDFLUX_OPERATIONS_AGAIN() PEDFLUX_OPERATIONS
#define PEDFLUX_PARENTHESES ()
#define PEDFLUX_RESCAN(...) PEDFLUX_RESCAN_4(PEDFLUX_RESCAN_4(PEDFLUX_RESCAN_4(PEDFLUX_RESCAN_4(__VA_ARGS__))))
#define PEDFLUX_RESCAN_4(...) PEDFLUX_RESCAN_1(PEDFLUX_RESCAN_1(PEDFLUX_RESCAN_1(PEDFLUX_RESCAN_1(__VA_ARGS__))))
#define PEDFLUX_RESCAN_1(...) __VA_ARGS__

}  // namespace pedflux::engine
