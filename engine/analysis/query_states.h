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

#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// The states of queries are put together from parts that many of them share. The parts are listed once for each query:
///
///     PEDFLUX_QUERY(TimeOccupiedMapQuery, MapQueryState, Filtered, Colored, Timed)
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

#define PEDFLUX_QUERY(Query, ...)                        \
    struct Query##State : MadeOf<__VA_ARGS__> {          \
        static constexpr std::string_view NAME = #Query; \
        using Handle = Query;                            \
    };

}  // namespace pedflux::engine
