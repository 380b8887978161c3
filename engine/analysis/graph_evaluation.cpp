#include "engine/analysis/graph_evaluation.h"

#include "engine/analysis/frames.h"
#include "engine/analysis/selection.h"
#include "engine/analysis/transitions.h"
#include "engine/base/checks.h"
#include "engine/behaviour/triggers/transition_states.h"
#include "engine/model/document.h"
#include "engine/model/properties.h"
#include "engine/results/run_files.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

namespace pedflux::engine {

namespace {

/// The colours of series repeat after the last one.
Color color_of_series(std::size_t number) {
    static std::array const colors{Color::BLUE,   Color::RED,  Color::GREEN, Color::ORANGE,
                                   Color::PURPLE, Color::TEAL, Color::BROWN, Color::DARK_GRAY};
    return colors[number % colors.size()];
}

std::vector<SeriesData> series_named(std::vector<std::string> const& names) {
    std::vector<SeriesData> series;
    for (std::size_t i = 0; i < names.size(); ++i) series.push_back({names[i], color_of_series(i), {}});
    return series;
}

/// The run of a query and the times that it asks for.
struct QueryContext {
    Document const& document;
    GraphQueryState const& query;
    RunReader& reader;
    FrameRange range;

    /// Whether a frame is the last of a time window.
    bool ends_window(int frame) const {
        return frame % (std::int64_t{query.window} * reader.info().frame_rate) == 0 || frame == range.last;
    }
};

/// The mean number of persons on each area in each window.
std::vector<SeriesData> population_counts(QueryContext const& context) {
    auto const& query = dynamic_cast<PopulationCountGraphQueryState const&>(context.query);
    RunPlaces const places(context.document, context.reader);
    std::vector<RunPlace> areas;
    for (auto const& area : query.areas) areas.push_back(places[area]);
    if (areas.empty()) areas.push_back(places.everywhere());
    std::vector<std::string> names;
    for (auto const& area : areas) names.push_back(area.name);
    auto series = series_named(names);

    Selection const selection(query.filter, context.document, context.reader);
    std::vector<double> sums(areas.size());
    int frames = 0;
    for (int frame = context.range.first; frame <= context.range.last; ++frame) {
        for (auto const& person : selection.frame(frame)) {
            for (std::size_t i = 0; i < areas.size(); ++i) sums[i] += areas[i].area.has(person.surface) ? 1 : 0;
        }
        ++frames;
        if (!context.ends_window(frame)) continue;
        for (std::size_t i = 0; i < areas.size(); ++i) {
            series[i].entries.push_back({context.reader.seconds_at(frame), sums[i] / frames});
            sums[i] = 0;
        }
        frames = 0;
    }
    return series;
}

/// The legend of a transition: its kind and the objects that it refers to.
std::string name_of(Transition const& transition, Document const& document) {
    NodeState const& node = node_of(transition);
    std::vector<Reference> objects;
    collect_references(nullptr, fields_in(node), objects);
    std::string name(node.kind->name);
    for (auto const& reference : objects) {
        auto const* const object = document.find(reference.to);
        if (object) name += " " + object->name;
    }
    return name;
}

/// The frames of the crossings of selected persons, by series.
std::vector<std::vector<int>> frames_of(QueryContext const& context,
                                        std::vector<std::vector<RecordedCrossing>> const& crossings,
                                        std::shared_ptr<AgentFilter> const& filter) {
    Selection const selection(filter, context.document, context.reader);
    std::vector<std::vector<int>> frames(crossings.size());
    std::vector<std::size_t> next(crossings.size());
    // A person who leaves the simulation counts by the last frame that shows them.
    std::vector<bool> selected(context.reader.agents().size());
    for (int frame = first_frame; frame <= context.range.last + 1; ++frame) {
        if (frame <= context.reader.last_frame()) {
            auto const persons = context.reader.frame(frame);
            auto const among = selection.among(frame, persons);
            for (std::size_t i = 0; i < persons.size(); ++i) selected[persons[i].agent] = among[i];
        }
        for (std::size_t i = 0; i < crossings.size(); ++i) {
            for (; next[i] < crossings[i].size() && crossings[i][next[i]].frame == frame; ++next[i]) {
                bool const counts = selected[crossings[i][next[i]].agent] || !filter;
                if (counts && frame >= context.range.first && frame <= context.range.last) frames[i].push_back(frame);
            }
        }
    }
    return frames;
}

enum class Counted { IN_WINDOW, SINCE_START };

/// The number of transitions in each window, or up to its end.
std::vector<SeriesData> flow_counts(QueryContext const& context, Counted counted) {
    auto const& transitions = dynamic_cast<OfTransitions const&>(context.query).transitions;
    RunPlaces const places(context.document, context.reader);
    auto const visits = visits_of(context.reader);
    std::vector<std::vector<RecordedCrossing>> crossings;
    std::vector<std::string> names;
    for (auto const& transition : transitions) {
        crossings.push_back(crossings_at(*transition, places, visits));
        names.push_back(name_of(*transition, context.document));
    }
    if (transitions.empty()) {
        names.emplace_back("Exits");
        crossings.push_back(exits_of(places, visits));
    }
    auto series = series_named(names);
    auto const frames = frames_of(context, crossings, dynamic_cast<Filtered const&>(context.query).filter);
    for (std::size_t i = 0; i < series.size(); ++i) {
        std::size_t next = 0;
        double count = 0;
        for (int frame = context.range.first; frame <= context.range.last; ++frame) {
            for (; next < frames[i].size() && frames[i][next] == frame; ++next) ++count;
            if (!context.ends_window(frame)) continue;
            series[i].entries.push_back({context.reader.seconds_at(frame), count});
            if (counted == Counted::IN_WINDOW) count = 0;
        }
    }
    return series;
}

/// The mean and the maximum of a recorded value over the selected persons, sampled and averaged over windows.
std::vector<SeriesData> mean_and_maximum(QueryContext const& context, float AgentFrame::*value) {
    auto const sampling_period = dynamic_cast<Sampled const&>(context.query).sampling_period;
    Selection const selection(dynamic_cast<Filtered const&>(context.query).filter, context.document, context.reader);
    auto series = series_named({"Mean", "Maximum"});
    std::array<double, 2> sums{};
    int samples = 0;
    std::int64_t next_sample = context.range.first;
    for (int frame = context.range.first; frame <= context.range.last; ++frame) {
        if (frame == next_sample) {
            next_sample += std::int64_t{sampling_period} * context.reader.info().frame_rate;
            double sum = 0;
            double greatest = 0;
            auto const persons = selection.frame(frame);
            for (auto const& person : persons) {
                sum += static_cast<double>(person.*value);
                greatest = std::max(greatest, static_cast<double>(person.*value));
            }
            if (!persons.empty()) {
                sums[0] += sum / static_cast<double>(persons.size());
                sums[1] += greatest;
                ++samples;
            }
        }
        if (!context.ends_window(frame)) continue;
        for (std::size_t i = 0; i < series.size(); ++i) {
            if (samples > 0) series[i].entries.push_back({context.reader.seconds_at(frame), sums[i] / samples});
            sums[i] = 0;
        }
        samples = 0;
    }
    return series;
}

/// The series of a graph, and the label of its vertical axis.
struct Evaluated {
    std::string_view label;
    std::vector<SeriesData> series;
};
using Evaluate = Evaluated (*)(QueryContext const& context);

Evaluated population_graph(QueryContext const& context) { return {"Persons", population_counts(context)}; }
Evaluated flow_graph(QueryContext const& context) { return {"Persons", flow_counts(context, Counted::IN_WINDOW)}; }
Evaluated cumulative_flow_graph(QueryContext const& context) {
    return {"Persons", flow_counts(context, Counted::SINCE_START)};
}
Evaluated density_graph(QueryContext const& context) {
    return {"Persons per square metre", mean_and_maximum(context, &AgentFrame::density)};
}

Evaluate evaluation_of(GraphQueryType type) {
#define CASE(Query, Queries, TYPE, made, evaluation, ...) \
    case GraphQueryType::TYPE:                            \
        return evaluation;
    switch (type) { PEDFLUX_GRAPH_QUERIES(CASE) }
#undef CASE
    return nullptr;
}

}  // namespace

std::shared_ptr<GraphData const> graph_of(Document const& document, GraphQueryState const& query, GraphQueryType type) {
    auto const evaluate = evaluation_of(type);
    if (!evaluate) refuse_unevaluated(query);
    auto const reader = results_of(document, or_none(query.run));
    auto evaluated = evaluate({document, query, *reader, frames_in(*reader, query.time)});
    auto data = std::make_shared<GraphData>();
    data->title = query.title.empty() ? query.name : query.title;
    data->x_label = query.horizontal_label;
    data->y_label = query.vertical_label.empty() ? std::string(evaluated.label) : query.vertical_label;
    data->start = second_of(*reader, query.time.start);
    data->end = second_of(*reader, query.time.end);
    for (auto& series : evaluated.series) {
        data->series.push_back(std::make_shared<SeriesData const>(std::move(series)));
    }
    return data;
}

}  // namespace pedflux::engine
