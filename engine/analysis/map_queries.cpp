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
    engine::set_part<MapQueryState>(*this, &MapQueryState::display_objects, objects);
}

bool DensityMapQuery::UsesCustomColorFunction() { return GetCustomColorFunction() != nullptr; }
std::shared_ptr<ColorFunction> DensityMapQuery::GetCustomColorFunction() {
    return get(*this, &DensityMapQueryState::custom_colors);
}
void DensityMapQuery::SetCustomColorFunction(std::shared_ptr<ColorFunction> const& colorFunction) {
    engine::set_part<DensityMapQueryState>(*this, &DensityMapQueryState::custom_colors, colorFunction);
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
    engine::set_part<DensityMapQueryState>(*this, &DensityMapQueryState::scale, type);
    engine::set_part<DensityMapQueryState>(*this, &DensityMapQueryState::transition, transition);
    SetCustomColorFunction(nullptr);
}
std::shared_ptr<ColorFunction> DensityMapQuery::GenerateColorFunctionForWalkableObject(GlobalId const object) {
    auto& state = state_of<DensityMapQueryState>(*this);
    return engine::density_colors(document_of(state), state, object);
}

PEDFLUX_SETTER(StaticMapQuery, std::shared_ptr<ColorFunction> const&, ColorFunction, colors)

// The operations of the parts of map queries.
#define PEDFLUX_OPERATIONS_Timed(Query)                                                                       \
    TimeRange Query::GetTimeRange() const {                                                                   \
        return time_range(static_cast<engine::Query##State const&>(*state_).time);                            \
    }                                                                                                         \
    void Query::SetTimeRange(TimeRange range) {                                                               \
        engine::set_part<engine::Query##State>(*this, &engine::Query##State::time, engine::time_span(range)); \
    }
#define PEDFLUX_OPERATIONS_Colored(Query)                                                                         \
    PEDFLUX_PROPERTY(Query, std::shared_ptr<ColorFunction>, std::shared_ptr<ColorFunction> const&, ColorFunction, \
                     colors)
#define PEDFLUX_OPERATIONS_CloseTogether(Query)      \
    PEDFLUX_VALUE(Query, double, Distance, distance) \
    PEDFLUX_FLAG(Query, IgnoreBarriers, ignore_barriers)
#define PEDFLUX_OPERATIONS_SampledSometimes(Query) PEDFLUX_VALUE(Query, unsigned int, SamplePeriod, period)
#define PEDFLUX_OPERATIONS_AboveDensity(Query) PEDFLUX_VALUE(Query, double, DensityThreshold, threshold)

#define HANDLE(Query, Queries, TYPE, made, evaluation, State, ...) \
    PEDFLUX_QUERY_HANDLE(MapQuery, Query, TYPE __VA_OPT__(, ) __VA_ARGS__)
PEDFLUX_MAP_QUERIES(HANDLE)

}  // namespace pedflux
