#include "engine/analysis/csv.h"
#include "engine/analysis/graph_data.h"
#include "engine/base/checks.h"

#include <pedflux/graphs.h>

#include <map>

namespace pedflux {

Series::Series(std::shared_ptr<engine::SeriesData const> data) : data_(std::move(data)) {}
std::string Series::GetName() { return data_->name; }
Color Series::GetColor() { return data_->color; }
std::vector<Vec2d> Series::GetValues() {
    std::vector<Vec2d> values;
    values.reserve(data_->entries.size());
    for (auto const& entry : data_->entries) values.emplace_back(entry.second, entry.value);
    return values;
}

Graph::Graph(std::shared_ptr<engine::GraphData const> data) : data_(std::move(data)) {}
std::string Graph::GetTitle() { return data_->title; }
std::string Graph::GetXLabel() { return data_->x_label; }
std::string Graph::GetYLabel() { return data_->y_label; }
int Graph::GetStartTimeInSeconds() { return data_->start; }
int Graph::GetEndTimeInSeconds() { return data_->end; }
std::vector<std::shared_ptr<Series>> Graph::GetSeries() {
    std::vector<std::shared_ptr<Series>> series;
    for (auto const& data : data_->series) series.push_back(std::make_shared<Series>(data));
    return series;
}

void Graph::ExportCsv(std::string const& path) {
    std::vector<std::string> line{data_->x_label};
    std::map<double, std::vector<std::string>> lines;
    auto const& series = data_->series;
    for (std::size_t i = 0; i < series.size(); ++i) {
        line.push_back(series[i]->name);
        for (auto const& entry : series[i]->entries) {
            auto& fields = lines.try_emplace(entry.second, series.size() + 1).first->second;
            fields.front() = engine::text_of(entry.second);
            fields[i + 1] = engine::text_of(entry.value);
        }
    }
    engine::Csv csv;
    csv.add_line(line);
    for (auto const& [second, fields] : lines) csv.add_line(fields);
    csv.write(path);
}

}  // namespace pedflux
