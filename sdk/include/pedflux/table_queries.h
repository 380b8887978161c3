#pragma once

#include <pedflux/aggregation.h>
#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>
#include <pedflux/time_range.h>

#include <memory>
#include <string>
#include <vector>

/// Questions to a stored run whose answers are tables. Made by a project.
namespace pedflux {

class AgentFilter;
class Floor;
class Table;
class Transition;
class Trip;
class Zone;

/// What `TableQuery::GetTableQueryTypeId` returns.
enum class TableQueryType : int {
    AGENT_AREA_TIME = 1,
    AGENT_ELEVATOR_TRIP_TIME = 2,
    AGENT_ELEVATOR_WAIT_TIME = 3,
    AGENT_LEVEL_OF_SERVICE_TIME = 4,
    AGENT_PROCESS_CHAIN_TIME = 5,
    AGENT_PROXIMITY = 6,
    AGENT_SOCIAL_COST = 7,
    AGENT_SUMMARY = 8,
    AGENT_TIMETABLE_SUMMARY = 9,
    AGENT_TOKEN_TIME = 10,
    AGENT_TRANSITION = 11,
    AGENT_TRIP_TIME = 12,
    AREA_ORIGIN_DESTINATION_COUNT = 13,
    ELEVATOR_TIME_WITHOUT_SERVICE = 14,
    EXPECTED_DEMAND_OD_COUNT = 15,
    SERVER_SUMMARY = 16,
    SIMULATION_ORIGIN_DESTINATION_COUNT = 17,
    SIMULATION_ORIGIN_DESTINATION_SOCIAL_COST = 18,
    SIMULATION_ORIGIN_DESTINATION_TIME = 19,
};

/// Which stays, rides and trips a time range holds. Their start and their end are meant.
enum class AgentCountIfInRangeType : int {
    START_IN_RANGE = 0,          ///< those that begin in it
    END_IN_RANGE = 1,            ///< those that end in it
    START_AND_END_IN_RANGE = 2,  ///< those that begin and end in it
    ANY_PART_IN_RANGE = 3,       ///< those of which any part lies in it
};

/// What a row of a table about elevators stands for.
enum class ElevatorQueryViewType : int {
    EACH = 0,         ///< one ride, wait or gap
    BY_ELEVATOR = 1,  ///< all of one elevator
    BY_STOP = 2,      ///< all of one stop
};

/// What a row of a proximity table stands for.
enum class AgentProximityTableViewType : int {
    INTERACTIONS = 0,          ///< two persons while they are close to each other
    BY_AGENT = 1,              ///< one person and all who come close to it
    ONE_WAY_INTERACTIONS = 2,  ///< one of some persons, and one of others, while they are close to each other
};

/// The form of a table of origins and destinations.
enum class OriginDestinationMatrixTableOutput : int {
    MATRIX = 0,  ///< a row for each origin, a column for each destination
    LIST = 1,    ///< a row for each pair of them
};

/// What a table of social cost shows.
enum class SocialCostDisplayType : int {
    COST_PER_YEAR = 0,  ///< the cost of the run on each of the days of a year
    COST_OF_RUN = 1,
    WEIGHTED_TIME = 2,  ///< hours, each of them times its weight
};

/// A question that one table answers.
///
/// Times are seconds of the simulated clock after midnight, durations are seconds. A row for a person bears the
/// person's number in the run. A filter selects persons: those that it selects at any time in the time range.
class PEDFLUX_API TableQuery : public SimObject {
  public:
    using SimObject::SimObject;

    /// A `TableQueryType`.
    virtual int GetTableQueryTypeId() = 0;
    /// @param run a simulation run of the project
    virtual void SetSimulationRunId(GlobalId const& run);
    /// The invalid identifier when none is set.
    GlobalId GetSimulationRunId();

    /// Throws Exception when the run is not set or has no results, when what it needs is not set, when the agent filter
    /// asks for what a stored run does not tell, and for a kind of query that this version does not evaluate yet.
    std::shared_ptr<Table> Evaluate();

    /// All of the run unless set.
    TimeRange GetTimeRange();
    void SetTimeRange(TimeRange const range);
};

/// The persons who are in the simulation during the time range, a row for each: name of the origin, of the destination
/// and of the profile; when it came, when it was last there and how long that was; whether it arrived; how far it
/// walked, in metres; its mean speed, in metres per second; the mean and the greatest local density at it, in persons
/// per square metre. Way, speed and densities are those within the time range.
class PEDFLUX_API AgentSummaryTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
};

/// The persons who made a trip, a row for each trip: when it began, when it ended and how long it took. Without a trip
/// set, that is the whole stay in the simulation of those who arrived. Trips that begin and end in the time range are
/// shown.
class PEDFLUX_API AgentTripTimeTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Empty unless set. The query keeps a copy.
    std::shared_ptr<Trip> GetTrip();
    /// An empty one takes the trip away.
    void SetTrip(std::shared_ptr<Trip> trip);
};

/// The stays of persons in areas, a row for each: which area, when the stay began, when it ended and how long it was,
/// all within the time range.
class PEDFLUX_API AgentAreaTimeTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    std::vector<GlobalId> GetAreaIds();
    /// Walkable objects and zones, each of them once.
    void SetAreas(std::vector<GlobalId> const& areas);
    /// One area alone.
    void SetArea(GlobalId const area);
};

/// How long persons were at each level of service, a row for each person and a column for each level from A to F, in
/// seconds. The local density at a person is judged by the walkway standard, and on stairs by the stairway standard
/// (Fruin 1971).
class PEDFLUX_API AgentLevelOfServiceTimeTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
};

/// The times at which persons pass, a row for each passage, in the order of time: when, from which object to which
/// object. The object is empty for the outside.
class PEDFLUX_API AgentTransitionTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Empty unless set. The query keeps a copy; Evaluate needs one.
    std::shared_ptr<Transition> GetTransition();
    /// An empty one takes the transition away.
    void SetTransition(std::shared_ptr<Transition> const& transition);
};

/// What the tables of origins and destinations have in common. A table counts persons by where they came from and where
/// they left, and by the names of these places. Persons who were still there in the last frame have left nowhere and do
/// not count, nor do persons who were taken out because of an error.
class PEDFLUX_API OriginDestinationMatrixTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// MATRIX unless set.
    OriginDestinationMatrixTableOutput GetOriginDestinationMatrixTableOutput();
    void SetOriginDestinationMatrixTableOutput(OriginDestinationMatrixTableOutput output);
    /// Which stays in the simulation count; START_IN_RANGE unless set.
    AgentCountIfInRangeType GetCountIfInRangeType();
    void SetCountIfInRangeType(AgentCountIfInRangeType type);
};

/// How many persons went from where to where: a row and a column for each of the portals, or a row for each two of them
/// between which a person went.
class PEDFLUX_API SimulationOriginDestinationCountTableQuery : public OriginDestinationMatrixTableQuery {
  public:
    using OriginDestinationMatrixTableQuery::OriginDestinationMatrixTableQuery;

    int GetTableQueryTypeId() override;
    /// The portals of the table: those that were set, or all of the project.
    std::vector<GlobalId> GetAllPortals();
    /// Of these, the ones that an event of the project, or a collection that it names, sends persons from.
    std::vector<GlobalId> GetStartPortals();
    /// Of these, the ones that an event of the project, or a collection that it names, sends persons to.
    std::vector<GlobalId> GetEndPortals();
    /// Portals in the order in which the table shows them, each of them once.
    void SetPortals(std::vector<GlobalId> const& portals);
    /// The same in the order of their names.
    void SetAndSortPortals(std::vector<GlobalId> const& portals);
    /// All portals that the project has when they are asked for, in the order of their names. So it is unless set.
    void SetAndSortAllPortals();
    bool ArePortalsSorted();
    bool UsesAllPortalsInProject();
};

/// How many seconds persons took from where to where: a row and a column for each of the portals, or a row for each two
/// of them between which a person went. In the matrix, two portals between which nobody went have an empty text.
class PEDFLUX_API SimulationOriginDestinationTimeTableQuery : public OriginDestinationMatrixTableQuery {
  public:
    using OriginDestinationMatrixTableQuery::OriginDestinationMatrixTableQuery;

    int GetTableQueryTypeId() override;
    /// The portals of the table: those that were set, or all of the project.
    std::vector<GlobalId> GetAllPortals();
    /// Of these, the ones that an event of the project, or a collection that it names, sends persons from.
    std::vector<GlobalId> GetStartPortals();
    /// Of these, the ones that an event of the project, or a collection that it names, sends persons to.
    std::vector<GlobalId> GetEndPortals();
    /// Portals in the order in which the table shows them, each of them once.
    void SetPortals(std::vector<GlobalId> const& portals);
    /// The same in the order of their names.
    void SetAndSortPortals(std::vector<GlobalId> const& portals);
    /// All portals that the project has when they are asked for, in the order of their names. So it is unless set.
    void SetAndSortAllPortals();
    bool ArePortalsSorted();
    bool UsesAllPortalsInProject();
    /// How the values of several persons become one; MEAN unless set.
    AggregationType GetAggregationType();
    void SetAggregationType(AggregationType type);
};

/// How many persons went across an area from where to where: a row for each object from which they came into it and a
/// column for each object to which they left it, or a row for each two of them. For persons who entered the simulation
/// in the area, or left it there, the object is the origin or the destination. Here the time range holds ways across
/// the area.
class PEDFLUX_API AreaOriginDestinationCountTableQuery : public OriginDestinationMatrixTableQuery {
  public:
    using OriginDestinationMatrixTableQuery::OriginDestinationMatrixTableQuery;

    int GetTableQueryTypeId() override;
    /// The area is a floor, instead of what it was before.
    void SetFloor(GlobalId const& floor);
    void SetFloor(std::shared_ptr<Floor> const& floor);
    /// The area is a zone, instead of what it was before.
    void SetZone(GlobalId const& zone);
    void SetZone(std::shared_ptr<Zone> const& zone);
};

/// Which persons are close to each other, and how long: two persons on the same object, no further apart than a
/// distance. Being apart for a short while does not end it, being close for a short while does not count. INTERACTIONS
/// has a row for each time that two persons are close: their numbers, start, end and duration; ONE_WAY_INTERACTIONS the
/// same for each subject and each target; BY_AGENT a row for each person: with how many others it was close, how often,
/// and how long altogether.
class PEDFLUX_API AgentProximityTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Metres between the centres of two persons at which they count as close to each other; 2 unless set.
    double GetProximityDistance();
    /// @param distance greater than 0
    void SetProximityDistance(double distance);
    /// Shorter interactions do not count; 0 unless set.
    double GetMinInteractionDurationInSeconds();
    /// @param seconds at least 0
    void SetMinInteractionDurationInSeconds(double seconds);
    /// A gap up to this length does not end an interaction; 0 unless set.
    double GetMaxGapDurationInSeconds();
    /// @param seconds at least 0
    void SetMaxGapDurationInSeconds(double seconds);
    /// Whether two persons count as close through what neither can walk through; they do not unless set.
    bool IsIgnoreObstacles();
    void SetIgnoreObstacles(bool ignore);
    /// INTERACTIONS unless set.
    AgentProximityTableViewType GetViewType();
    void SetViewType(AgentProximityTableViewType type);
    bool IsOneWayInteractionView();
    /// Empty unless set: everybody.
    std::shared_ptr<AgentFilter> GetOneWayInteractionSubjectAgentFilter();
    /// Empty unless set: everybody.
    std::shared_ptr<AgentFilter> GetOneWayInteractionTargetAgentFilter();
    /// Brings the view ONE_WAY_INTERACTIONS of the persons that one filter selects with those that the other selects;
    /// an empty filter selects everybody. The query keeps copies.
    void SetOneWayInteractionViewAgentFilters(std::shared_ptr<AgentFilter> const& subject,
                                              std::shared_ptr<AgentFilter> const& target);
};

// The kinds of query that follow are set, stored and opened like the others; this version does not evaluate them yet.

/// What the time of each person costs society: hours times the weight of how they are spent times the cost of an hour.
/// Not evaluated yet.
class PEDFLUX_API AgentSocialCostTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// What an hour of a person costs, in any currency; 1 unless set. @param cost at least 0
    void SetCostPerHour(double cost);
    /// 365 unless set. @param days from 1 to 366
    void SetDaysPerYear(int days);
    /// The weights of time spent in one way or another are 1 unless set, and at least 0.
    void SetWalkingWeight(double weight);
    void SetWaitingWeight(double weight);
    void SetQueuingWeight(double weight);
    void SetProcessingWeight(double weight);
    void SetStairUpWeight(double weight);
    void SetStairDownWeight(double weight);
    void SetEscalatorWeight(double weight);
    /// The weight of the time at which the filter of the custom weight selects a person, instead of the others, once it
    /// is enabled.
    void SetCustomWeight(double weight);
    /// An empty one takes the filter away: no time has the custom weight. The query keeps a copy.
    void SetCustomWeightAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    void EnableCustomWeight();
};

/// What the time of persons costs society, by where they came from and where they left. Not evaluated yet.
class PEDFLUX_API SimulationOriginDestinationSocialCostTableQuery : public OriginDestinationMatrixTableQuery {
  public:
    using OriginDestinationMatrixTableQuery::OriginDestinationMatrixTableQuery;

    int GetTableQueryTypeId() override;
    /// What an hour of a person costs, in any currency; 1 unless set. @param cost at least 0
    void SetCostPerHour(double cost);
    /// 365 unless set. @param days from 1 to 366
    void SetDaysPerYear(int days);
    /// The weights of time spent in one way or another are 1 unless set, and at least 0.
    void SetWalkingWeight(double weight);
    void SetWaitingWeight(double weight);
    void SetQueuingWeight(double weight);
    void SetProcessingWeight(double weight);
    void SetStairUpWeight(double weight);
    void SetStairDownWeight(double weight);
    void SetEscalatorWeight(double weight);
    /// The weight of the time at which the filter of the custom weight selects a person, instead of the others, once it
    /// is enabled.
    void SetCustomWeight(double weight);
    /// An empty one takes the filter away: no time has the custom weight. The query keeps a copy.
    void SetCustomWeightAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    void EnableCustomWeight();
    /// How the values of several persons become one; MEAN unless set.
    AggregationType GetAggregationType();
    void SetAggregationType(AggregationType type);
    /// COST_PER_YEAR unless set.
    SocialCostDisplayType GetSocialCostDisplayType();
    void SetSocialCostDisplayType(SocialCostDisplayType type);
};

/// The persons of a timetable and when they passed its reference events. Not evaluated yet.
class PEDFLUX_API AgentTimetableSummaryTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// The invalid identifier when none is set.
    GlobalId GetTimetable();
    void SetTimetable(GlobalId const& timetable);
    /// All of the timetable's unless set.
    std::vector<std::string> GetReferenceEventNames();
    void SetReferenceEventNames(std::vector<std::string> const& names);
    void ClearReferenceEventNames();
    /// Whether only persons who passed one of the reference events are shown; all are unless set.
    bool IsFilterByReferenceEvents();
    void SetFilterByReferenceEvents(bool filter);
};

/// How long persons held tokens. Not evaluated yet.
class PEDFLUX_API AgentTokenTimeTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Each of them once.
    void SetTokens(std::vector<GlobalId> const& tokens);
};

/// How long persons took from one of some servers to one of others. Not evaluated yet.
class PEDFLUX_API AgentProcessChainTimeTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Servers.
    std::vector<GlobalId> GetStartingServers();
    /// Each of them once.
    void SetStartingServers(std::vector<GlobalId> const& ids);
    /// Servers.
    std::vector<GlobalId> GetEndingServers();
    /// Each of them once.
    void SetEndingServers(std::vector<GlobalId> const& ids);
};

/// How many persons servers served, and how long that and the queue took, in one run or over several. Not evaluated
/// yet.
class PEDFLUX_API ServerSummaryTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Also sets the list of runs, to this one alone.
    void SetSimulationRunId(GlobalId const& run) override;
    std::vector<GlobalId> GetSimulationRunIds();
    /// Simulation runs, each of them once. The first one becomes the one that GetSimulationRunId returns.
    void SetSimulationRunIds(std::vector<GlobalId> const& runs);
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    std::vector<GlobalId> GetServerIds();
    /// Each of them once.
    void SetServers(std::vector<GlobalId> const& servers);
    /// One server alone.
    void SetServer(GlobalId const server);
    /// How the values of several runs become one; MEAN unless set.
    AggregationType GetAggregationType();
    void SetAggregationType(AggregationType type);
};

/// How long persons rode in elevators. Not evaluated yet.
class PEDFLUX_API AgentElevatorTripTimeTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Elevators.
    std::vector<GlobalId> GetElevators();
    /// Each of them once.
    void SetElevators(std::vector<GlobalId> const& ids);
    /// The stops from which rides count, as the floors where they are. Empty when all count.
    std::vector<GlobalId> GetRestrictedOriginStops();
    /// @param floors each of them once
    void SetRestrictedOriginStops(std::vector<GlobalId> const& floors);
    /// All stops count unless restricted ones are set.
    bool UsesRestrictedOriginStops();
    void SetUseAllOriginStops();
    /// The stops to which rides count, as the floors where they are. Empty when all count.
    std::vector<GlobalId> GetRestrictedDestinationStops();
    /// @param floors each of them once
    void SetRestrictedDestinationStops(std::vector<GlobalId> const& floors);
    /// All stops count unless restricted ones are set.
    bool UsesRestrictedDestinationStops();
    void SetUseAllDestinationStops();
    /// EACH unless set.
    ElevatorQueryViewType GetTableViewType();
    void SetTableViewType(ElevatorQueryViewType type);
    /// Which rides count; START_IN_RANGE unless set.
    AgentCountIfInRangeType GetCountIfInRangeType();
    void SetCountIfInRangeType(AgentCountIfInRangeType type);
};

/// How long persons waited for elevators. Not evaluated yet.
class PEDFLUX_API AgentElevatorWaitTimeTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Elevators.
    std::vector<GlobalId> GetElevators();
    /// Each of them once.
    void SetElevators(std::vector<GlobalId> const& ids);
    /// The stops at which waits count, as the floors where they are. Empty when all count.
    std::vector<GlobalId> GetRestrictedStops();
    /// @param floors each of them once
    void SetRestrictedStops(std::vector<GlobalId> const& floors);
    /// All stops count unless restricted ones are set.
    bool UsesRestrictedStops();
    void SetUseAllStops();
    /// EACH unless set.
    ElevatorQueryViewType GetTableViewType();
    void SetTableViewType(ElevatorQueryViewType type);
    /// Which waits count; START_IN_RANGE unless set.
    AgentCountIfInRangeType GetCountIfInRangeType();
    void SetCountIfInRangeType(AgentCountIfInRangeType type);
};

/// How long stops were without an elevator. Not evaluated yet.
class PEDFLUX_API ElevatorTimeWithoutServiceTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Elevators.
    std::vector<GlobalId> GetElevators();
    /// Each of them once.
    void SetElevators(std::vector<GlobalId> const& ids);
    /// EACH unless set.
    ElevatorQueryViewType GetTableViewType();
    void SetTableViewType(ElevatorQueryViewType type);
    /// Which times without service count; START_IN_RANGE unless set.
    AgentCountIfInRangeType GetCountIfInRangeType();
    void SetCountIfInRangeType(AgentCountIfInRangeType type);
};

/// How many persons the events of the project send from where to where in the time range. It needs no run. Not
/// evaluated yet.
class PEDFLUX_API ExpectedDemandODCountTableQuery : public TableQuery {
  public:
    using TableQuery::TableQuery;

    int GetTableQueryTypeId() override;
    /// Journeys, evacuations and other events that send persons.
    std::vector<GlobalId> GetEvents();
    /// Each of them once.
    void SetEvents(std::vector<GlobalId> const& ids);
    /// MATRIX unless set.
    OriginDestinationMatrixTableOutput GetViewType();
    void SetViewType(OriginDestinationMatrixTableOutput type);
    /// Whether the members of collections are shown instead of the collections; they are not unless set.
    bool IsExpandCollections();
    void SetExpandCollections(bool expand);
    /// They are shown unless set.
    bool IsHideEmptyRowsAndColumns();
    void SetHideEmptyRowsAndColumns(bool hide);
};

}  // namespace pedflux
