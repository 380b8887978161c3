#include "engine/analysis/frames.h"
#include "engine/analysis/graph_data.h"
#include "engine/analysis/query_states.h"
#include "engine/geometry/checks.h"
#include "engine/model/document.h"
#include "engine/model/properties.h"
#include "engine/results/run_files.h"

#include <pedflux/graph_queries.h>

#include <array>

namespace pedflux {

namespace {

using engine::FrameRange;
using engine::GraphData;
using engine::GraphQueryState;
using engine::PopulationCountGraphQueryState;
using engine::RunReader;
using engine::SeriesData;
using engine::state_of;

/// An area as a set of the run's surfaces.
struct Area {
    std::string name;
    std::vector<bool> has;
};

void add_surface(Area& area, RunReader const& reader, GlobalId const& object) {
    if (auto const surface = reader.surface_of(object)) area.has[*surface] = true;
}

std::vector<Area> areas_of(PopulationCountGraphQueryState const& state, RunReader const& reader) {
    auto const surface_count = reader.surfaces().size();
    if (state.areas.empty()) return {{"All", std::vector(surface_count, true)}};
    std::vector<Area> areas;
    for (auto const& id : state.areas) {
        auto const* const object = state.document->find(id);
        if (!object) engine::refuse(title_of(state) + " counts an area that the project does not have");
        auto& area = areas.emplace_back(Area{object->name, std::vector(surface_count, false)});
        add_surface(area, reader, id);
        if (auto const* const zone = dynamic_cast<engine::ZoneState const*>(object)) {
            for (auto const& member : zone->base_members) add_surface(area, reader, member);
        }
    }
    return areas;
}

/// So many colours follow each other before the first comes again.
Color color_of_series(std::size_t number) {
    static std::array const colors{Color::BLUE,   Color::RED,  Color::GREEN, Color::ORANGE,
                                   Color::PURPLE, Color::TEAL, Color::BROWN, Color::DARK_GRAY};
    return colors[number % colors.size()];
}

/// The mean number of persons on each area in each window.
std::vector<std::shared_ptr<SeriesData const>> population_counts(std::vector<Area> const& areas, RunReader& reader,
                                                                 FrameRange range, int window) {
    std::vector<std::shared_ptr<SeriesData>> series;
    for (std::size_t i = 0; i < areas.size(); ++i) {
        series.push_back(std::make_shared<SeriesData>(SeriesData{areas[i].name, color_of_series(i), {}}));
    }
    int const frames_per_window = window * reader.info().frame_rate;
    std::vector<double> sums(areas.size());
    int frames = 0;
    for (int frame = range.first; frame <= range.last; ++frame) {
        for (auto const& person : reader.frame(frame)) {
            for (std::size_t i = 0; i < areas.size(); ++i) sums[i] += areas[i].has[person.surface] ? 1 : 0;
        }
        ++frames;
        if (frame % frames_per_window != 0 && frame != range.last) continue;
        for (std::size_t i = 0; i < areas.size(); ++i) {
            series[i]->entries.push_back({reader.seconds_at(frame), sums[i] / frames});
            sums[i] = 0;
        }
        frames = 0;
    }
    return {series.begin(), series.end()};
}

}  // namespace

std::shared_ptr<Graph> GraphQuery::Evaluate() {
    auto const& state = state_of<PopulationCountGraphQueryState>(*this);
    auto const reader = results_of(document_of(state_of<GraphQueryState>(*this)), state.run);
    auto data = std::make_shared<GraphData>();
    data->title = state.title.empty() ? state.name : state.title;
    data->x_label = state.horizontal_label;
    data->y_label = state.vertical_label.empty() ? "Persons" : state.vertical_label;
    data->start = second_of(*reader, state.time.start);
    data->end = second_of(*reader, state.time.end);
    data->series = population_counts(areas_of(state, *reader), *reader, frames_in(*reader, state.time), state.window);
    return std::make_shared<Graph>(std::move(data));
}

void GraphQuery::SetSimulationRunId(GlobalId const& run) { set(*this, &GraphQueryState::run, run); }
GlobalId GraphQuery::GetSimulationRunId() { return get(*this, &GraphQueryState::run); }
TimeRange GraphQuery::GetTimeRange() { return time_range(get(*this, &GraphQueryState::time)); }
void GraphQuery::SetTimeRange(TimeRange const range) { set(*this, &GraphQueryState::time, engine::time_span(range)); }
std::string GraphQuery::GetTitle() { return get(*this, &GraphQueryState::title); }
void GraphQuery::SetTitle(std::string const& title) { set(*this, &GraphQueryState::title, title); }
std::string GraphQuery::GetHorizontalLabel() { return get(*this, &GraphQueryState::horizontal_label); }
void GraphQuery::SetHorizontalLabel(std::string const& label) { set(*this, &GraphQueryState::horizontal_label, label); }
std::string GraphQuery::GetVerticalLabel() { return get(*this, &GraphQueryState::vertical_label); }
void GraphQuery::SetVerticalLabel(std::string const& label) { set(*this, &GraphQueryState::vertical_label, label); }
int GraphQuery::GetWindowSizeInSeconds() { return get(*this, &GraphQueryState::window); }
void GraphQuery::SetWindowSizeInSeconds(int seconds) { set(*this, &GraphQueryState::window, seconds); }
bool GraphQuery::IsShowLegend() const { return static_cast<GraphQueryState const&>(*state_).show_legend; }
void GraphQuery::SetShowLegend(bool show) { set(*this, &GraphQueryState::show_legend, show); }
bool GraphQuery::IsShowMetadata() const { return static_cast<GraphQueryState const&>(*state_).show_metadata; }
void GraphQuery::SetShowMetadata(bool show) { set(*this, &GraphQueryState::show_metadata, show); }

int PopulationCountGraphQuery::GetGraphQueryTypeId() { return static_cast<int>(GraphQueryType::POPULATION_COUNT); }
void PopulationCountGraphQuery::SetAreaIds(std::vector<GlobalId> const& areas) {
    set(*this, &PopulationCountGraphQueryState::areas, areas);
}

}  // namespace pedflux
