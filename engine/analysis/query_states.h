#pragma once

#include "engine/analysis/color_scale.h"
#include "engine/behaviour/object_rules.h"
#include "engine/model/check.h"
#include "engine/model/codec.h"
#include "engine/model/enumerations.h"
#include "engine/model/node.h"
#include "engine/model/rules.h"
#include "engine/model/state.h"
#include "engine/scene/simulation_run_state.h"

#include <pedflux/agent_filters.h>
#include <pedflux/aggregation.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// Queries are put together from parts that many of them share. Each kind of query is one line of map_query_list.h,
/// graph_query_list.h or table_query_list.h:
///
///     QUERY(TimeOccupiedMapQuery, TimeOccupiedMapQueries, TIME_OCCUPIED, OF_RUN, occupied_maps, MapQueryState,
///     Filtered,
///           Colored, Timed)
///
/// In this order: the class of the SDK; the class in the plural, as in the name of the project's list; the value of the
/// family's enumeration of types; how a project makes one (kind_table.h); the function that evaluates it, or
/// not_evaluated_yet; the state that it derives from, which is that of its base class in the SDK; and its parts. The
/// state, the operations of its parts, the type's number, factory, lookups and list of the project, saving and the
/// choice of the evaluation follow from the line. A type without a line does not compile.
///
/// A part is a struct with fields here and its operations in query_handles.h, as PEDFLUX_OPERATIONS_<part>.
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

inline constexpr RefersTo A_RUN = refers_to<SimulationRunState>("a simulation run");
inline constexpr RefersTo WALKABLES = refers_to<WalkableState>("a floor, link, stair, ramp or other walkable object");
inline constexpr RefersTo WALKABLE_AREAS{"a walkable object or a zone", [](ObjectState const& object) {
                                             return dynamic_cast<WalkableState const*>(&object) ||
                                                    dynamic_cast<ZoneState const*>(&object);
                                         }};

template <>
struct Codec<unsigned int> {
    static Json write(unsigned int value) { return value; }
    static void read(unsigned int& value, Json const& json, Reading& reading) {
        if (!json.is_number_unsigned() || json.get<std::uint64_t>() > std::numeric_limits<unsigned int>::max()) {
            reading.refuse("a whole number from 0 to 4294967295", json);
        }
        value = json.get<unsigned int>();
    }
};
inline void require(Subject const& subject, unsigned int value, Range const& range) {
    require(subject, static_cast<double>(value), range);
}

/// Seconds after midnight; both belong to it.
struct TimeSpan {
    int start = 0;
    int end = std::numeric_limits<int>::max();

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("start", self.start, NOT_NEGATIVE);
        field("end", self.end, NOT_NEGATIVE);
    }
};

/// What every query has.
struct QueryState : ObjectState {
    std::optional<GlobalId> run;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("simulationRun", self.run, A_RUN);
    }
};

/// A part of one field: its name, type, member with its default, and what else the list of fields says of it.
#define PEDFLUX_QUERY_PART(Part, Type, member, initial, ...) \
    struct Part {                                            \
        Type member initial;                                 \
                                                             \
        template <class Self, class Field>                   \
        static void fields(Self& self, Field&& field) {      \
            field(__VA_ARGS__);                              \
        }                                                    \
    };

/// Never changed, replaced; empty: everybody.
PEDFLUX_QUERY_PART(Filtered, std::shared_ptr<AgentFilter>, filter, {}, "agentFilter", self.filter)
/// The same where the SDK has no operation that reads it.
struct WriteOnlyFilter : Filtered {};
PEDFLUX_QUERY_PART(Timed, TimeSpan, time, {}, "timeRange", self.time)
PEDFLUX_QUERY_PART(Aggregated, AggregationType, aggregation, = AggregationType::MEAN, "aggregationType",
                   self.aggregation)
/// Seconds.
PEDFLUX_QUERY_PART(Sampled, int, sampling_period, = 1, "samplingPeriodInSeconds", self.sampling_period, AT_LEAST_ONE)
/// The first of them is the query's run.
PEDFLUX_QUERY_PART(SeveralRuns, std::vector<GlobalId>, runs, {}, "simulationRuns", self.runs, A_RUN)

/// The value, or what stands for none.
template <class T>
T or_none(std::optional<T> const& value) {
    return value.value_or(T{});
}

/// A state of the fields of its parts, in their order.
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

/// In the place of an evaluation: queries of the kind are set, saved and opened.
inline constexpr std::nullptr_t not_evaluated_yet = nullptr;

/// Throws Exception: a query of a kind that is not evaluated yet.
[[noreturn]] void refuse_unevaluated(QueryState const& query);

}  // namespace pedflux::engine
