#pragma once

#include <pedflux/api.h>
#include <pedflux/color.h>
#include <pedflux/vectors.h>

#include <memory>
#include <string>
#include <vector>

namespace pedflux {

namespace engine {
struct GraphData;
struct SeriesData;
}  // namespace engine

/// One line of a graph.
class PEDFLUX_API Series {
  public:
    /// Used by the library.
    explicit Series(std::shared_ptr<engine::SeriesData const> data);

    std::string GetName();
    Color GetColor();
    /// The points in the order of time: x is the second since the start of the simulation, z the value.
    std::vector<Vec2d> GetValues();

  private:
    std::shared_ptr<engine::SeriesData const> data_;
};

/// Values over the time of a simulation.
class PEDFLUX_API Graph {
  public:
    /// Used by the library.
    explicit Graph(std::shared_ptr<engine::GraphData const> data);

    std::string GetTitle();
    std::string GetXLabel();
    std::string GetYLabel();
    int GetStartTimeInSeconds();
    int GetEndTimeInSeconds();
    std::vector<std::shared_ptr<Series>> GetSeries();

    /// Writes comma separated values (RFC 4180): a line with the label of time and the names of the series, then a line
    /// for each time with the values; a series without a value there leaves its field empty. Throws Exception when the
    /// file cannot be written.
    void ExportCsv(std::string const& path);

  private:
    std::shared_ptr<engine::GraphData const> data_;
};

}  // namespace pedflux
