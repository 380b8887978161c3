#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>
#include <pedflux/time_range.h>

#include <memory>
#include <string>
#include <vector>

/// Questions to a stored run whose answers are graphs over time. Made by a project.
namespace pedflux {

class Graph;

/// What `GraphQuery::GetGraphQueryTypeId` returns.
enum class GraphQueryType : int {
    AGENT_DENSITY = 1,
    AGENT_SPEED_RATIO = 2,
    CUMULATIVE_FLOW_COUNT = 3,
    FLOW_COUNT = 4,
    POPULATION_COUNT = 5,
    TALLY = 6,
    VOLUME_DENSITY = 7,
};

/// A question that one graph answers.
class PEDFLUX_API GraphQuery : public SimObject {
  public:
    using SimObject::SimObject;

    /// A `GraphQueryType`.
    virtual int GetGraphQueryTypeId() = 0;
    /// @param run a simulation run of the project
    virtual void SetSimulationRunId(GlobalId const& run);
    GlobalId GetSimulationRunId();

    /// Throws Exception when the run is not set or has no results.
    std::shared_ptr<Graph> Evaluate();

    /// All of the run unless set.
    TimeRange GetTimeRange();
    void SetTimeRange(TimeRange const range);
    /// Empty unless set: the graph gets the query's name.
    std::string GetTitle();
    void SetTitle(std::string const& title);
    /// "Time [s]" unless set.
    std::string GetHorizontalLabel();
    void SetHorizontalLabel(std::string const& label);
    /// Empty unless set: the graph gets what the kind of query counts.
    std::string GetVerticalLabel();
    void SetVerticalLabel(std::string const& label);
    /// Each value is the mean over the seconds of one window. 1 unless set.
    int GetWindowSizeInSeconds();
    /// @param seconds at least 1
    void SetWindowSizeInSeconds(int seconds);
    /// Whether pictures of the graph show its legend; they do unless set.
    bool IsShowLegend() const;
    void SetShowLegend(bool show);
    /// Whether pictures of the graph tell project and run; they do not unless set.
    bool IsShowMetadata() const;
    void SetShowMetadata(bool show);
};

/// How many persons are on areas over time: one series for each area, and one of the whole run when there are none.
class PEDFLUX_API PopulationCountGraphQuery : public GraphQuery {
  public:
    using GraphQuery::GraphQuery;

    int GetGraphQueryTypeId() override;
    /// Walkable objects and zones, each of them once.
    void SetAreaIds(std::vector<GlobalId> const& areas);
};

}  // namespace pedflux
