#pragma once

#include "engine/analysis/color_scale.h"
#include "engine/behaviour/object_rules.h"
#include "engine/model/enumerations.h"
#include "engine/model/field_type.h"
#include "engine/model/node.h"
#include "engine/model/rules.h"
#include "engine/model/state.h"
#include "engine/scene/simulation_run_state.h"

#include <pedflux/agent_filters.h>
#include <pedflux/aggregation.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// Queries are put together from parts that many of them share. Each kind of query is one line of map_query_list.h,
/// graph_query_list.h or table_query_list.h:
///
///     QUERY(AgentPathMapQuery, AgentPathMapQueries, AGENT_PATH, OF_RUN, path_maps, MapQueryState, Filtered, Timed)
///
/// The columns are the SDK's class; its plural, as in `Project::GetAgentPathMapQueries`; its value in the enumeration
/// of types; the form of its factory (kind_table.h); the function that evaluates it, or not_evaluated_yet; the state of
/// its base class; and its parts. The state, saving, the operations of the parts, the number of the type, the project's
/// factory, lookups and list, and the dispatch of the evaluation follow from the line. A type without a line does not
/// compile.
///
/// A part is a struct of fields, and the macro PEDFLUX_OPERATIONS_<part> that defines its operations (query_handles.h).
namespace pedflux::engine {

PEDFLUX_NAMES(ColorTransition, {{ColorTransition::STEPS, "STEPS"}, {ColorTransition::GRADUAL, "GRADUAL"}});
PEDFLUX_NAMES(AggregationType, {{AggregationType::MEAN, "MEAN"},
                                {AggregationType::MINIMUM, "MINIMUM"},
                                {AggregationType::MAXIMUM, "MAXIMUM"},
                                {AggregationType::SUM, "SUM"},
                                {AggregationType::MEDIAN, "MEDIAN"}});

template <>
struct SharedValue<ColorFunction> {
    using Value = ColorScale;
    static ColorScale const& value(ColorFunction const& function) { return ColorFunctionAccess::scale(function); }
    static std::shared_ptr<ColorFunction> make(ColorScale const& scale);
};

inline constexpr RefersTo a_run = refers_to<SimulationRunState>("a simulation run");
inline constexpr RefersTo walkables = refers_to<WalkableState>("a floor, link, stair, ramp or other walkable object");
inline constexpr RefersTo walkable_areas{"a walkable object or a zone", [](ObjectState const& object) {
                                             return dynamic_cast<WalkableState const*>(&object) ||
                                                    dynamic_cast<ZoneState const*>(&object);
                                         }};

/// Seconds after midnight, both inclusive.
struct TimeSpan {
    int start = 0;
    int end = std::numeric_limits<int>::max();

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("start", self.start, not_negative);
        field("end", self.end, not_negative);
    }
};

/// The fields of every query.
struct QueryState : ObjectState {
    std::optional<GlobalId> run;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("simulationRun", self.run, a_run);
    }
};

/// A part of one field: its name, type, member, default value, and the entry in the list of fields.
#define PEDFLUX_QUERY_PART(Part, Type, member, initial, ...) \
    struct Part {                                            \
        Type member initial;                                 \
                                                             \
        template <class Self, class Field>                   \
        static void fields(Self& self, Field&& field) {      \
            field(__VA_ARGS__);                              \
        }                                                    \
    };

/// Immutable; setters replace it. Empty: everybody.
PEDFLUX_QUERY_PART(Filtered, std::shared_ptr<AgentFilter>, filter, {}, "agentFilter", self.filter)
/// The same for queries whose filter the SDK can set but not get.
struct WriteOnlyFilter : Filtered {};
PEDFLUX_QUERY_PART(Timed, TimeSpan, time, {}, "timeRange", self.time)
PEDFLUX_QUERY_PART(Aggregated, AggregationType, aggregation, = AggregationType::MEAN, "aggregationType",
                   self.aggregation)
/// Seconds.
PEDFLUX_QUERY_PART(Sampled, int, sampling_period, = 1, "samplingPeriodInSeconds", self.sampling_period, at_least_one)
/// The first of them is the query's run.
PEDFLUX_QUERY_PART(SeveralRuns, std::vector<GlobalId>, runs, {}, "simulationRuns", self.runs, a_run)

/// The value, or a default-constructed one.
template <class T>
T or_none(std::optional<T> const& value) {
    return value.value_or(T{});
}

/// A state with the fields of its parts, in their order.
template <class... Parts>
struct MadeOf : Parts... {
    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        (Parts::fields(self, field), ...);
    }
};

#define PEDFLUX_QUERY_STATE(Query, Queries, TYPE, made, evaluation, ...) \
    struct Query##State : MadeOf<__VA_ARGS__> {                          \
        static constexpr std::string_view NAME = #Query;                 \
        using Handle = Query;                                            \
    };

/// The evaluation of a kind that can be set, saved and opened only.
inline constexpr std::nullptr_t not_evaluated_yet = nullptr;

/// Throws Exception: the query is of a kind that cannot be evaluated yet.
[[noreturn]] void refuse_unevaluated(QueryState const& query);

}  // namespace pedflux::engine
