#pragma once

#include <pedflux/aggregation.h>
#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>
#include <pedflux/time_range.h>

#include <memory>
#include <string>
#include <vector>

/// Questions to a stored run whose answers are graphs over time. Made by a project.
namespace pedflux {

class AgentFilter;
class ColorFunction;
class Graph;
class Transition;

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

    /// Throws Exception when the run is not set or has no results, when the agent filter or a transition asks for what
    /// a stored run does not tell, and for a kind of query that this version does not evaluate yet.
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
    /// Everybody unless set. The query keeps a copy; an empty one takes the filter away.
    void SetAgentFilter(std::shared_ptr<AgentFilter>& filter);
    void ClearFilter();
    /// Walkable objects and zones, each of them once.
    void SetAreaIds(std::vector<GlobalId> const& areas);
};

/// How many persons pass in each window: one series for each transition. A transition happens in the first frame that
/// shows it. What the run does not record, such as passages of servers, throws Exception.
class PEDFLUX_API FlowCountGraphQuery : public GraphQuery {
  public:
    using GraphQuery::GraphQuery;

    int GetGraphQueryTypeId() override;
    /// Everybody unless set. The query keeps a copy; an empty one takes the filter away.
    void SetAgentFilter(std::shared_ptr<AgentFilter>& filter);
    void ClearFilter();
    /// One series for each transition, copies of which the query keeps. Without transitions, one series counts the
    /// persons that leave the simulation.
    void SetTransitions(std::vector<std::shared_ptr<Transition>> const& transitions);
};

/// How many persons have passed since the start of the time range: as `FlowCountGraphQuery`, added up.
class PEDFLUX_API CumulativeFlowCountGraphQuery : public GraphQuery {
  public:
    using GraphQuery::GraphQuery;

    int GetGraphQueryTypeId() override;
    /// Everybody unless set. The query keeps a copy; an empty one takes the filter away.
    void SetAgentFilter(std::shared_ptr<AgentFilter>& filter);
    void ClearFilter();
    /// One series for each transition, copies of which the query keeps. Without transitions, one series counts the
    /// persons that leave the simulation.
    void SetTransitions(std::vector<std::shared_ptr<Transition>> const& transitions);
};

/// The local density at the persons, in persons per square metre: its mean and its greatest value over the persons, as
/// two series. A time without persons has no values. Each value is the mean over the samples of one window.
class PEDFLUX_API AgentDensityGraphQuery : public GraphQuery {
  public:
    using GraphQuery::GraphQuery;

    int GetGraphQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Seconds from one sample to the next; 1 unless set.
    int GetSamplingPeriodInSeconds();
    /// @param seconds at least 1
    void SetSamplingPeriodInSeconds(int seconds);
};

// The kinds of query that follow are set, stored and opened like the others; this version does not evaluate them yet.

/// The ratio of the persons' walking speed to their desired speed. Not evaluated yet.
class PEDFLUX_API AgentSpeedRatioGraphQuery : public GraphQuery {
  public:
    using GraphQuery::GraphQuery;

    int GetGraphQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// The bands of the graph and their colours. An empty one brings the usual ones back. The query keeps it.
    void SetSpeedRatioColorFunction(std::shared_ptr<ColorFunction> colorFunction);
};

/// The values of tally objects over time, in one run or over several. Not evaluated yet.
class PEDFLUX_API TallyGraphQuery : public GraphQuery {
  public:
    using GraphQuery::GraphQuery;

    int GetGraphQueryTypeId() override;
    /// Also sets the list of runs, to this one alone.
    void SetSimulationRunId(GlobalId const& run) override;
    std::vector<GlobalId> GetSimulationRunIds();
    /// Simulation runs, each of them once. The first one becomes the one that GetSimulationRunId returns.
    void SetSimulationRunIds(std::vector<GlobalId> const& runs);
    /// Tally objects.
    std::vector<GlobalId> GetTallyObjects();
    /// Each of them once.
    void SetTallyObjects(std::vector<GlobalId> const& ids);
    /// Seconds from one sample to the next; 1 unless set.
    int GetSamplingPeriodInSeconds();
    /// @param seconds at least 1
    void SetSamplingPeriodInSeconds(int seconds);
    /// How the values of several runs become one; MEAN unless set.
    AggregationType GetAggregationType();
    void SetAggregationType(AggregationType type);
};

/// The density in volumes over time, in one run or over several. Not evaluated yet.
class PEDFLUX_API VolumeDensityGraphQuery : public GraphQuery {
  public:
    using GraphQuery::GraphQuery;

    int GetGraphQueryTypeId() override;
    /// Also sets the list of runs, to this one alone.
    void SetSimulationRunId(GlobalId const& run) override;
    std::vector<GlobalId> GetSimulationRunIds();
    /// Simulation runs, each of them once. The first one becomes the one that GetSimulationRunId returns.
    void SetSimulationRunIds(std::vector<GlobalId> const& runs);
    /// Volumes.
    std::vector<GlobalId> GetVolumes();
    /// Each of them once.
    void SetVolumes(std::vector<GlobalId> const& ids);
};

}  // namespace pedflux
