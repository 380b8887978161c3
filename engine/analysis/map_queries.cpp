#include "engine/analysis/map_evaluation.h"
#include "engine/analysis/query_handles.h"
#include "engine/base/checks.h"
#include "engine/model/document.h"

#include <pedflux/map_queries.h>

namespace pedflux {

using engine::DensityMapQueryState;
using engine::get;
using engine::MapQueryState;
using engine::state_of;

namespace {

/// As `set`; maps that were found without the change are forgotten.
template <class State, class Member, class Value>
void change(SimObject& query, Member State::*member, Value&& value) {
    engine::set_part<State>(query, member, std::forward<Value>(value));
}

}  // namespace

std::vector<std::shared_ptr<Map>> MapQuery::Evaluate() {
    auto& state = state_of<MapQueryState>(*this);
    if (state.maps.empty() && !state.display_objects.empty()) {
        state.maps = engine::maps_of(document_of(state), state, static_cast<MapQueryType>(GetMapQueryTypeId()));
    }
    return state.maps;
}

void MapQuery::ClearMaps() { state_of<MapQueryState>(*this).maps.clear(); }
GlobalId MapQuery::GetSimulationRunId() { return engine::or_none(state_of<MapQueryState>(*this).run); }
void MapQuery::SetSimulationRunId(GlobalId const& run) {
    engine::set_part<MapQueryState>(*this, &MapQueryState::run, run);
}
std::vector<GlobalId> MapQuery::GetMapDisplayObjects() { return get(*this, &MapQueryState::display_objects); }
void MapQuery::SetMapDisplayObjects(std::vector<GlobalId> const& objects) {
    change(*this, &MapQueryState::display_objects, objects);
}

bool DensityMapQuery::UsesCustomColorFunction() { return GetCustomColorFunction() != nullptr; }
std::shared_ptr<ColorFunction> DensityMapQuery::GetCustomColorFunction() {
    return get(*this, &DensityMapQueryState::custom_colors);
}
void DensityMapQuery::SetCustomColorFunction(std::shared_ptr<ColorFunction> const& colorFunction) {
    change(*this, &DensityMapQueryState::custom_colors, colorFunction);
}
LevelOfServiceColorFunctionTypeId DensityMapQuery::GetLevelOfServiceColorFunctionTypeId() {
    return get(*this, &DensityMapQueryState::scale);
}
ColorTransition DensityMapQuery::GetLevelOfServiceColorTransition() {
    return get(*this, &DensityMapQueryState::transition);
}
void DensityMapQuery::SetLevelOfServiceColorFunction(LevelOfServiceColorFunctionTypeId type,
                                                     ColorTransition transition) {
    auto const& state = state_of<DensityMapQueryState>(*this);
    engine::check_value(owner_of(state), "levelOfServiceColorTransition", transition, engine::NoRule{});
    change(*this, &DensityMapQueryState::scale, type);
    change(*this, &DensityMapQueryState::transition, transition);
    SetCustomColorFunction(nullptr);
}
std::shared_ptr<ColorFunction> DensityMapQuery::GenerateColorFunctionForWalkableObject(GlobalId const object) {
    auto& state = state_of<DensityMapQueryState>(*this);
    return engine::density_colors(document_of(state), state, object);
}

void StaticMapQuery::SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction) {
    auto& state = state_of<MapQueryState>(*this);
    dynamic_cast<engine::Colored&>(state).colors = colorFunction;
    state.maps.clear();
}

#define TYPE(Query, TYPE_NAME) \
    int Query::GetMapQueryTypeId() { return static_cast<int>(MapQueryType::TYPE_NAME); }
TYPE(AverageDensityMapQuery, AVERAGE_DENSITY)
TYPE(MaxDensityMapQuery, MAX_DENSITY)
TYPE(NonZeroAverageDensityMapQuery, NON_ZERO_AVERAGE_DENSITY)
TYPE(ExperiencedDensityMapQuery, EXPERIENCED_DENSITY)
TYPE(InstantaneousDensityMapQuery, INSTANTANEOUS_DENSITY)
TYPE(AgentCountMapQuery, AGENT_COUNT)
TYPE(AgentTimeToExitMapQuery, AGENT_TIME_TO_EXIT)
TYPE(TimeOccupiedMapQuery, TIME_OCCUPIED)
TYPE(TimeUntilClearMapQuery, TIME_UNTIL_CLEAR)
TYPE(TimeAboveDensityMapQuery, TIME_ABOVE_DENSITY)
TYPE(AgentPathMapQuery, AGENT_PATH)
TYPE(InstantaneousProximityMapQuery, INSTANTANEOUS_PROXIMITY)
TYPE(TimeInProximityMapQuery, TIME_IN_PROXIMITY)
TYPE(MaximumProximityMapQuery, MAXIMUM_PROXIMITY)
TYPE(DynamicPathMapQuery, DYNAMIC_PATH)
TYPE(VisionCountMapQuery, VISION_COUNT)
TYPE(VisionTimeMapQuery, VISION_TIME)
TYPE(VisionTimeAboveCountMapQuery, VISION_TIME_ABOVE_COUNT)
TYPE(StaticCostMapQuery, STATIC_COST)
TYPE(StaticDistanceMapQuery, STATIC_DISTANCE)
#undef TYPE

#define TIME_RANGE(Query)                                                                                     \
    TimeRange Query::GetTimeRange() const {                                                                   \
        return time_range(static_cast<engine::Query##State const&>(*state_).time);                            \
    }                                                                                                         \
    void Query::SetTimeRange(TimeRange range) {                                                               \
        engine::set_part<engine::Query##State>(*this, &engine::Query##State::time, engine::time_span(range)); \
    }
TIME_RANGE(AverageDensityMapQuery)
TIME_RANGE(MaxDensityMapQuery)
TIME_RANGE(NonZeroAverageDensityMapQuery)
TIME_RANGE(ExperiencedDensityMapQuery)
TIME_RANGE(AgentCountMapQuery)
TIME_RANGE(AgentTimeToExitMapQuery)
TIME_RANGE(TimeOccupiedMapQuery)
TIME_RANGE(TimeUntilClearMapQuery)
TIME_RANGE(TimeAboveDensityMapQuery)
TIME_RANGE(AgentPathMapQuery)
TIME_RANGE(TimeInProximityMapQuery)
TIME_RANGE(MaximumProximityMapQuery)
TIME_RANGE(VisionCountMapQuery)
TIME_RANGE(VisionTimeMapQuery)
TIME_RANGE(VisionTimeAboveCountMapQuery)
#undef TIME_RANGE

PEDFLUX_AGENT_FILTER(AgentCountMapQuery)
PEDFLUX_AGENT_FILTER(AgentTimeToExitMapQuery)
PEDFLUX_AGENT_FILTER(TimeOccupiedMapQuery)
PEDFLUX_AGENT_FILTER(TimeUntilClearMapQuery)
PEDFLUX_AGENT_FILTER(AgentPathMapQuery)
PEDFLUX_AGENT_FILTER(InstantaneousProximityMapQuery)
PEDFLUX_AGENT_FILTER(TimeInProximityMapQuery)
PEDFLUX_AGENT_FILTER(MaximumProximityMapQuery)
PEDFLUX_AGENT_FILTER(DynamicPathMapQuery)
PEDFLUX_AGENT_FILTER(VisionCountMapQuery)
PEDFLUX_AGENT_FILTER(VisionTimeMapQuery)
PEDFLUX_AGENT_FILTER(VisionTimeAboveCountMapQuery)

PEDFLUX_COLOR_FUNCTION(AgentCountMapQuery)
PEDFLUX_COLOR_FUNCTION(AgentTimeToExitMapQuery)
PEDFLUX_COLOR_FUNCTION(TimeOccupiedMapQuery)
PEDFLUX_COLOR_FUNCTION(TimeUntilClearMapQuery)
PEDFLUX_COLOR_FUNCTION(TimeAboveDensityMapQuery)
PEDFLUX_COLOR_FUNCTION(InstantaneousProximityMapQuery)
PEDFLUX_COLOR_FUNCTION(TimeInProximityMapQuery)
PEDFLUX_COLOR_FUNCTION(MaximumProximityMapQuery)
PEDFLUX_COLOR_FUNCTION(VisionCountMapQuery)
PEDFLUX_COLOR_FUNCTION(VisionTimeMapQuery)
PEDFLUX_COLOR_FUNCTION(VisionTimeAboveCountMapQuery)

PEDFLUX_VALUE(InstantaneousProximityMapQuery, double, Distance, distance)
PEDFLUX_FLAG(InstantaneousProximityMapQuery, IgnoreBarriers, ignore_barriers)
PEDFLUX_VALUE(TimeInProximityMapQuery, double, Distance, distance)
PEDFLUX_FLAG(TimeInProximityMapQuery, IgnoreBarriers, ignore_barriers)
PEDFLUX_VALUE(MaximumProximityMapQuery, double, Distance, distance)
PEDFLUX_FLAG(MaximumProximityMapQuery, IgnoreBarriers, ignore_barriers)
PEDFLUX_VALUE(MaximumProximityMapQuery, unsigned int, SamplePeriod, period)
PEDFLUX_VALUE(TimeAboveDensityMapQuery, double, DensityThreshold, threshold)

}  // namespace pedflux
