#include "engine/analysis/density.h"
#include "engine/analysis/frames.h"
#include "engine/analysis/query_states.h"
#include "engine/geometry/checks.h"
#include "engine/model/document.h"
#include "engine/model/properties.h"
#include "engine/results/agent_data.h"
#include "engine/results/run_files.h"

#include <pedflux/map_queries.h>
#include <pedflux/maps.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <unordered_set>

namespace pedflux {

namespace {

using engine::AgentCountMapQueryState;
using engine::DensityField;
using engine::DensityMapQueryState;
using engine::FrameRange;
using engine::MapQueryState;
using engine::Raster;
using engine::RunReader;
using engine::state_of;
using engine::TimedDensityMapQueryState;

/// The measures of density; one over the frames of a range, given what is known of a pixel over them.
double value_of(MapQueryType type, DensityField::OverTime const& over_time, int frames) {
    auto const ratio = [](double part, double whole) { return whole > 0 ? part / whole : 0; };
    switch (type) {
        case MapQueryType::AVERAGE_DENSITY:
            return ratio(over_time.sum, frames);
        case MapQueryType::NON_ZERO_AVERAGE_DENSITY:
            return ratio(over_time.sum, over_time.frames_with_persons);
        case MapQueryType::EXPERIENCED_DENSITY:
            return ratio(over_time.sum_of_squares, over_time.sum);
        case MapQueryType::MAX_DENSITY:
            return over_time.greatest;
        default:
            return over_time.last;
    }
}

constexpr float no_value = std::numeric_limits<float>::quiet_NaN();

std::shared_ptr<Map> density_map(MapQueryType type, std::shared_ptr<Raster const> const& raster,
                                 DensityField const& field, std::shared_ptr<ColorFunction> colors) {
    std::vector<float> values(raster->size(), no_value);
    for (std::size_t pixel = 0; pixel < values.size(); ++pixel) {
        if (raster->has(pixel)) values[pixel] = static_cast<float>(value_of(type, field.at(pixel), field.frames()));
    }
    return std::make_shared<ValueMap2d>(raster, std::move(values), std::move(colors));
}

/// The surfaces of the display objects in the run, by their numbers there.
std::vector<std::uint16_t> surfaces_of(MapQueryState const& state, RunReader const& reader) {
    std::vector<std::uint16_t> surfaces;
    for (auto const& object : state.display_objects) {
        auto const surface = reader.surface_of(object);
        if (!surface) {
            auto const* const found = state.document->find(object);
            engine::refuse((found ? title_of(*found) : "The display object") + " did not take part in the run '" +
                           reader.path() + "'");
        }
        surfaces.push_back(*surface);
    }
    return surfaces;
}

/// Calls visit(display object's number, person's state) for each person on a display object in the frame.
template <class Visit>
void for_each_person(RunReader& reader, int frame, std::vector<std::uint16_t> const& surfaces, Visit const& visit) {
    for (auto const& person : reader.frame(frame)) {
        auto const shown = std::ranges::find(surfaces, person.surface);
        if (shown != surfaces.end()) visit(static_cast<std::size_t>(shown - surfaces.begin()), person);
    }
}

std::vector<std::shared_ptr<Map>> density_maps(DensityMapQuery& query, RunReader& reader) {
    auto& state = state_of<DensityMapQueryState>(query);
    auto const type = static_cast<MapQueryType>(query.GetMapQueryTypeId());
    auto const surfaces = surfaces_of(state, reader);
    std::vector<std::shared_ptr<Raster const>> rasters;
    std::vector<DensityField> fields;
    for (auto const surface : surfaces) {
        rasters.push_back(engine::raster_of(reader.surfaces()[surface]));
        fields.emplace_back(rasters.back());
    }
    auto const* const timed = dynamic_cast<TimedDensityMapQueryState const*>(&state);
    FrameRange const range = timed
                                 ? frames_in(reader, timed->time)
                                 : FrameRange{std::max(engine::first_frame, reader.last_frame()), reader.last_frame()};
    for (int frame = range.first; frame <= range.last; ++frame) {
        for_each_person(reader, frame, surfaces, [&](std::size_t shown, engine::AgentFrame const& person) {
            fields[shown].add_person(static_cast<double>(person.x), static_cast<double>(person.z));
        });
        for (auto& field : fields) field.end_frame();
    }
    std::vector<std::shared_ptr<Map>> maps;
    for (std::size_t i = 0; i < surfaces.size(); ++i) {
        auto colors = query.GenerateColorFunctionForWalkableObject(state.display_objects[i]);
        maps.push_back(density_map(type, rasters[i], fields[i], std::move(colors)));
    }
    return maps;
}

/// Counts each person once for each pixel, however often it is there.
class DistinctPersons {
  public:
    explicit DistinctPersons(Raster const& raster) : counts_(raster.size()) {}
    void add(std::size_t pixel, std::uint32_t person) {
        if (seen_.insert((static_cast<std::uint64_t>(pixel) << 32) | person).second) counts_[pixel] += 1;
    }
    std::vector<float> const& counts() const { return counts_; }

  private:
    std::vector<float> counts_;
    std::unordered_set<std::uint64_t> seen_;
};

std::vector<std::shared_ptr<Map>> count_maps(AgentCountMapQueryState const& state, RunReader& reader) {
    auto const surfaces = surfaces_of(state, reader);
    std::vector<std::shared_ptr<ValueMap2d>> grids;
    std::vector<std::shared_ptr<Raster const>> rasters;
    std::vector<DistinctPersons> persons;
    for (auto const surface : surfaces) {
        rasters.push_back(engine::raster_of(reader.surfaces()[surface]));
        persons.emplace_back(*rasters.back());
        grids.push_back(std::make_shared<ValueMap2d>(rasters.back(), std::vector<float>(), nullptr));
    }
    FrameRange const range = frames_in(reader, state.time);
    for (int frame = range.first; frame <= range.last; ++frame) {
        for_each_person(reader, frame, surfaces, [&](std::size_t shown, engine::AgentFrame const& person) {
            Vec3d const place(static_cast<double>(person.x), 0, static_cast<double>(person.z));
            int const x = grids[shown]->GetPixelXIndexAtPosition(place);
            int const y = grids[shown]->GetPixelYIndexAtPosition(place);
            if (x >= 0 && y >= 0) persons[shown].add(rasters[shown]->index(x, y), person.agent);
        });
    }
    std::vector<std::shared_ptr<Map>> maps;
    for (std::size_t i = 0; i < surfaces.size(); ++i) {
        auto values = persons[i].counts();
        float greatest = 1;
        for (std::size_t pixel = 0; pixel < values.size(); ++pixel) {
            if (!rasters[i]->has(pixel)) values[pixel] = no_value;
            greatest = std::max(greatest, values[pixel] > 0 ? values[pixel] : 0);
        }
        auto colors = state.colors ? state.colors
                                   : ColorFunction::CreateCustom({0, static_cast<double>(greatest)},
                                                                 {Color::BLUE, Color::RED}, ColorTransition::GRADUAL);
        maps.push_back(std::make_shared<ValueMap2d>(rasters[i], std::move(values), std::move(colors)));
    }
    return maps;
}

LevelOfServiceStandard standard_of(LevelOfServiceColorFunctionTypeId scale, bool is_stair) {
    using Scale = LevelOfServiceColorFunctionTypeId;
    switch (scale) {
        case Scale::FRUIN_WALKWAY:
            return LevelOfServiceStandard::FRUIN_WALKWAY;
        case Scale::FRUIN_STAIRWAY:
            return LevelOfServiceStandard::FRUIN_STAIRWAY;
        case Scale::FRUIN_PLATFORM:
            return LevelOfServiceStandard::FRUIN_PLATFORM;
        case Scale::IATA_WAIT_CIRCULATE:
            return LevelOfServiceStandard::IATA_WAIT_CIRCULATE;
        case Scale::FRUIN_BY_OBJECT:
            break;
    }
    return engine::standard_of(is_stair ? engine::SurfaceKind::STAIR : engine::SurfaceKind::LEVEL);
}

/// Stores a property, and forgets the maps that were found without it.
template <class State, class Member, class Value>
void change(SimObject& query, Member State::*member, Value&& value) {
    set(query, member, std::forward<Value>(value));
    state_of<MapQueryState>(query).maps.clear();
}

}  // namespace

std::vector<std::shared_ptr<Map>> MapQuery::Evaluate() {
    auto& state = state_of<MapQueryState>(*this);
    if (state.maps.empty() && !state.display_objects.empty()) {
        auto const reader = results_of(document_of(state), state.run);
        auto* const density = dynamic_cast<DensityMapQuery*>(this);
        state.maps =
            density ? density_maps(*density, *reader) : count_maps(state_of<AgentCountMapQueryState>(*this), *reader);
    }
    return state.maps;
}

void MapQuery::ClearMaps() { state_of<MapQueryState>(*this).maps.clear(); }
GlobalId MapQuery::GetSimulationRunId() { return get(*this, &MapQueryState::run); }
void MapQuery::SetSimulationRunId(GlobalId const& run) { change(*this, &MapQueryState::run, run); }
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
    auto const* const walkable = document_of(state).find<engine::WalkableState>(object);
    if (!walkable) engine::refuse("'" + GlobalId(object).GetString() + "' is no walkable object of the project");
    if (state.custom_colors) return state.custom_colors;
    bool const is_stair = dynamic_cast<engine::StairState const*>(walkable) != nullptr;
    return engine::level_of_service_colors(standard_of(state.scale, is_stair), state.transition);
}

std::shared_ptr<ColorFunction> AgentCountMapQuery::GetColorFunction() {
    return get(*this, &AgentCountMapQueryState::colors);
}
void AgentCountMapQuery::SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction) {
    change(*this, &AgentCountMapQueryState::colors, colorFunction);
}

int AgentCountMapQuery::GetMapQueryTypeId() { return static_cast<int>(MapQueryType::AGENT_COUNT); }
int AverageDensityMapQuery::GetMapQueryTypeId() { return static_cast<int>(MapQueryType::AVERAGE_DENSITY); }
int MaxDensityMapQuery::GetMapQueryTypeId() { return static_cast<int>(MapQueryType::MAX_DENSITY); }
int NonZeroAverageDensityMapQuery::GetMapQueryTypeId() {
    return static_cast<int>(MapQueryType::NON_ZERO_AVERAGE_DENSITY);
}
int ExperiencedDensityMapQuery::GetMapQueryTypeId() { return static_cast<int>(MapQueryType::EXPERIENCED_DENSITY); }
int InstantaneousDensityMapQuery::GetMapQueryTypeId() { return static_cast<int>(MapQueryType::INSTANTANEOUS_DENSITY); }

// Every kind that looks at a span of time reads and sets it in the same way.
#define PEDFLUX_TIME_RANGE(Query, State)                                                                  \
    TimeRange Query::GetTimeRange() const { return time_range(static_cast<State const&>(*state_).time); } \
    void Query::SetTimeRange(TimeRange range) { change(*this, &State::time, engine::time_span(range)); }
PEDFLUX_TIME_RANGE(AgentCountMapQuery, AgentCountMapQueryState)
PEDFLUX_TIME_RANGE(AverageDensityMapQuery, TimedDensityMapQueryState)
PEDFLUX_TIME_RANGE(MaxDensityMapQuery, TimedDensityMapQueryState)
PEDFLUX_TIME_RANGE(NonZeroAverageDensityMapQuery, TimedDensityMapQueryState)
PEDFLUX_TIME_RANGE(ExperiencedDensityMapQuery, TimedDensityMapQueryState)
#undef PEDFLUX_TIME_RANGE

}  // namespace pedflux
