#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/node.h>
#include <pedflux/objects.h>

#include <memory>
#include <vector>

/// Filters select agents: agents in an area, agents that an event created, agents that walk slowly. Events, tallies and
/// queries use a filter to restrict the agents that they apply to.
///
/// Filters nest, and outside of a project a part can be changed by everything that holds it. An object to which a
/// filter is given keeps a copy. A filter refers to objects by identifiers; that they name objects of the right kind is
/// checked when an object of a project takes the filter.
namespace pedflux {

class Transition;
class Trip;

/// The kinds of agent filter, see `AgentFilter::GetAgentFilterTypeId`.
enum class AgentFilterType : int {
    ALL_AGENTS = 0,      ///< `AllAgentsFilter`
    ACTIVITY = 1,        ///< `ActivityFilter`
    AT_SERVER = 2,       ///< `AtServerFilter`
    AT_TRANSITION = 3,   ///< `AtTransitionFilter`
    CREATED_BY = 4,      ///< `CreatedByFilter`
    END_STATE = 5,       ///< `EndStateFilter`
    ENTERED_AT = 6,      ///< `EnteredAtFilter`
    EXITED_AT = 7,       ///< `ExitedAtFilter`
    IN_AREA = 8,         ///< `InAreaFilter`
    IN_TRIP = 9,         ///< `InTripFilter`
    LOCAL_DENSITY = 10,  ///< `LocalDensityFilter`
    NAMED = 11,          ///< `NamedFilter`
    PROFILE = 12,        ///< `ProfileFilter`
    PROXIMITY = 13,      ///< `ProximityFilter`
    SPEED = 14,          ///< `SpeedFilter`
    TOKEN = 15,          ///< `TokenFilter`
    NOT = 16,            ///< `NotFilter`
    IS_EVER = 17,        ///< `IsEverFilter`
    COMPOUND = 18,       ///< `CompoundFilter`
    ALL_OF = 19,         ///< `AllOfFilter`
    ANY_OF = 20,         ///< `AnyOfFilter`
    NONE_OF = 21,        ///< `NoneOfFilter`
};

/// What an agent is doing.
enum class AgentActivity : int {
    STANDING = 0,    ///< has nothing to do and stays where it is
    WALKING = 1,     ///< is on its way to a goal
    WAITING = 2,     ///< waits as it was told to
    QUEUING = 3,     ///< stands in the queue of a server
    SERVED = 4,      ///< is being served by a server
    EVACUATING = 5,  ///< leaves the building because an evacuation told it to
    RIDING = 6,      ///< is carried by an elevator or a vehicle
};

/// The state of an agent at the end of the simulation.
enum class AgentStateAtSimulationEnd : int {
    EXITED = 0,  ///< it left as it was meant to
    INSIDE = 1,  ///< it is still there
    FAILED = 2,  ///< it was taken out because of an error
};

/// How two answers are combined.
enum class BooleanOperator : int {
    AND = 0,  ///< both hold
    OR = 1,   ///< at least one holds
};

/// Which agents are meant.
class PEDFLUX_API AgentFilter {
  public:
    /// Used by the library.
    explicit AgentFilter(engine::NodePointer node);
    AgentFilter(AgentFilter const& other);
    AgentFilter& operator=(AgentFilter const&) = delete;

    /// Whether an agent can be selected at one time and not at another. Filters by what is settled for an agent once
    /// and for all are not time varying: all agents, its event, profile, entrance, exit and end state, and whether
    /// something is ever so. Filters by where it is and what it does, holds or experiences are. A filter made of others
    /// is if one of them is. A `NamedFilter` always counts as time varying, because the filter behind the name can be
    /// replaced.
    virtual bool IsTimeVarying();
    /// The kind, an `AgentFilterType`.
    virtual int GetAgentFilterTypeId();
    /// A copy that shares nothing.
    virtual std::shared_ptr<AgentFilter> Clone();
    /// The direct children of this filter.
    virtual int GetChildFilterCount();
    /// @param index from 0 on
    /// @throws Exception for an index that no child has
    virtual std::shared_ptr<AgentFilter> GetChildFilter(int index);
    virtual std::vector<std::shared_ptr<AgentFilter>> GetChildFilters();
    virtual ~AgentFilter();

    /// Agents that all of the filters select; without filters every agent.
    static std::shared_ptr<AgentFilter> AllOf(std::vector<std::shared_ptr<AgentFilter>> const& filters);
    /// Agents that at least one of the filters selects; without filters no agent.
    static std::shared_ptr<AgentFilter> AnyOf(std::vector<std::shared_ptr<AgentFilter>> const& filters);
    /// Agents that none of the filters selects; without filters every agent.
    static std::shared_ptr<AgentFilter> NoneOf(std::vector<std::shared_ptr<AgentFilter>> const& filters);
    /// Agents that the filter does not select.
    static std::shared_ptr<AgentFilter> Negated(std::shared_ptr<AgentFilter> const& filter);
    /// Agents that the filter selects at any time, see `IsEverFilter`.
    static std::shared_ptr<AgentFilter> IsEver(std::shared_ptr<AgentFilter> const& filter);
    static std::shared_ptr<AgentFilter> InArea(GlobalId const& area);
    static std::shared_ptr<AgentFilter> EnteredAt(GlobalId const& object);
    static std::shared_ptr<AgentFilter> ExitedAt(GlobalId const& object);
    static std::shared_ptr<AgentFilter> HoldingToken(GlobalId const& token);
    static std::shared_ptr<AgentFilter> InTrip(std::shared_ptr<Trip> const& trip);

    /// A `CompoundFilter` of copies of this filter, first, and of the other one: agents that both select.
    std::shared_ptr<AgentFilter> And(std::shared_ptr<AgentFilter> const& other);
    /// A `CompoundFilter` of copies of this filter, first, and of the other one: agents that at least one selects.
    std::shared_ptr<AgentFilter> Or(std::shared_ptr<AgentFilter> const& other);

    /// The children, their children and so on, each before its own.
    std::vector<std::shared_ptr<AgentFilter>> GetAllNestedChildFilters();

  protected:
    engine::NodePointer const node_;

  private:
    friend engine::NodeAccess;
};

/// Agents that are doing something.
class PEDFLUX_API ActivityFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit ActivityFilter(AgentActivity activity);

    AgentActivity GetAgentActivity();
    void SetAgentActivity(AgentActivity activity);
};

/// Every agent.
class PEDFLUX_API AllAgentsFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    AllAgentsFilter();
};

/// Agents that queue at a server or are served by it.
class PEDFLUX_API AtServerFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit AtServerFilter(GlobalId const& server);

    GlobalId GetServer();
    void SetServer(GlobalId const& server);
};

/// Agents at the moment in which they make a transition.
class PEDFLUX_API AtTransitionFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit AtTransitionFilter(std::shared_ptr<Transition> const& transition);

    std::shared_ptr<Transition> GetTransition();
    void SetTransition(std::shared_ptr<Transition> const& transition);
};

/// Agents that an event created.
class PEDFLUX_API CreatedByFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit CreatedByFilter(GlobalId const& event);

    GlobalId GetEvent();
    void SetEvent(GlobalId const& event);
};

/// Agents by their state at the end of the simulation.
class PEDFLUX_API EndStateFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit EndStateFilter(AgentStateAtSimulationEnd state);

    AgentStateAtSimulationEnd GetAgentStateAtSimulationEnd();
    void SetAgentStateAtSimulationEnd(AgentStateAtSimulationEnd state);
};

/// Agents that entered the simulation at a place: a portal, a walkable object or a zone.
class PEDFLUX_API EnteredAtFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit EnteredAtFilter(GlobalId const& object);

    GlobalId GetObject();
    void SetObject(GlobalId const& object);
};

/// Agents that leave the simulation at a place: a portal, a walkable object or a zone.
class PEDFLUX_API ExitedAtFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit ExitedAtFilter(GlobalId const& object);

    GlobalId GetObject();
    void SetObject(GlobalId const& object);
};

/// Agents that are in an area: a portal, a walkable object, a zone or a volume.
class PEDFLUX_API InAreaFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit InAreaFilter(GlobalId const& area);

    GlobalId GetArea();
    void SetArea(GlobalId const& area);
};

/// Agents that are on a trip: it has begun and has not ended.
class PEDFLUX_API InTripFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit InTripFilter(std::shared_ptr<Trip> const& trip);

    std::shared_ptr<Trip> GetTrip();
    void SetTrip(std::shared_ptr<Trip> const& trip);
};

/// Agents whose local density is within a range, both ends included. A new filter has no ends and selects every agent.
class PEDFLUX_API LocalDensityFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    LocalDensityFilter();
    /// @param min 0 or more persons per square metre
    /// @param max at least `min`
    LocalDensityFilter(double min, double max);

    /// Persons per square metre.
    /// @throws Exception when the end is not set
    double GetRangeMin() const;
    double GetRangeMax() const;
    bool HasRangeMin() const;
    bool HasRangeMax() const;
    /// @param min 0 or more persons per square metre, at most the upper end
    void SetRangeMin(double min);
    /// @param max 0 or more persons per square metre, at least the lower end
    void SetRangeMax(double max);
    void SetDensityRange(double min, double max);
    /// Takes both ends away.
    void ClearDensities();
};

/// Agents that walk at a speed within a range, both ends included. A new filter has no ends and selects every agent.
class PEDFLUX_API SpeedFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    SpeedFilter();
    /// @param min 0 or more metres per second
    /// @param max at least `min`
    SpeedFilter(double min, double max);

    /// Metres per second.
    /// @throws Exception when the end is not set
    double GetRangeMin() const;
    double GetRangeMax() const;
    bool HasRangeMin() const;
    bool HasRangeMax() const;
    /// @param min 0 or more metres per second, at most the upper end
    void SetRangeMin(double min);
    /// @param max 0 or more metres per second, at least the lower end
    void SetRangeMax(double max);
    void SetSpeedRange(double min, double max);
    /// Takes both ends away.
    void ClearSpeeds();
};

/// Agents that the filter of an `AgentFilterObject` selects.
class PEDFLUX_API NamedFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit NamedFilter(GlobalId const& filterObject);

    GlobalId GetAgentFilterObject();
    void SetAgentFilterObject(GlobalId const& filterObject);
};

/// Agents with a profile.
class PEDFLUX_API ProfileFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit ProfileFilter(GlobalId const& profile);

    GlobalId GetProfile();
    void SetProfile(GlobalId const& profile);
};

/// Agents that have another agent near them.
class PEDFLUX_API ProximityFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    /// @param distance from one agent's middle to the other's in metres, greater than 0
    /// @param ignoreBarriers whether agents behind walls and barriers count too
    ProximityFilter(double distance, bool ignoreBarriers);

    /// Metres.
    double GetDistance();
    /// @param distance greater than 0 metres
    void SetDistance(double distance);
    bool IsIgnoreBarriers() const;
    void SetIgnoreBarriers(bool ignoreBarriers);
};

/// Agents that hold a token.
class PEDFLUX_API TokenFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit TokenFilter(GlobalId const& token);

    GlobalId GetToken();
    void SetToken(GlobalId const& token);
};

/// Agents that another filter does not select.
class PEDFLUX_API NotFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit NotFilter(std::shared_ptr<AgentFilter> const& filter);

    std::shared_ptr<AgentFilter> GetNegatedFilter();
    void SetNegatedFilter(std::shared_ptr<AgentFilter> const& filter);
};

/// Agents that another filter selects at any time: once it selects an agent, that agent stays selected. In a stored run
/// these agents are selected from the start.
class PEDFLUX_API IsEverFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    explicit IsEverFilter(std::shared_ptr<AgentFilter> const& filter);

    std::shared_ptr<AgentFilter> GetIsEverFilter();
    void SetIsEverFilter(std::shared_ptr<AgentFilter> const& filter);
};

/// Agents by two filters and how their answers are combined.
class PEDFLUX_API CompoundFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    CompoundFilter(std::shared_ptr<AgentFilter> const& first, std::shared_ptr<AgentFilter> const& second,
                   BooleanOperator combination);

    std::shared_ptr<AgentFilter> GetFirstChildFilter();
    void SetFirstChildFilter(std::shared_ptr<AgentFilter> const& filter);
    std::shared_ptr<AgentFilter> GetSecondChildFilter();
    void SetSecondChildFilter(std::shared_ptr<AgentFilter> const& filter);
    BooleanOperator GetBooleanOperator();
    void SetBooleanOperator(BooleanOperator combination);
};

/// Agents that all of a list of filters select; without filters every agent.
class PEDFLUX_API AllOfFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    AllOfFilter(std::shared_ptr<AgentFilter> const& first, std::shared_ptr<AgentFilter> const& second);
    explicit AllOfFilter(std::vector<std::shared_ptr<AgentFilter>> const& filters);

    void AddChildFilter(std::shared_ptr<AgentFilter> const& filter);
    void ClearChildFilters();
    /// @throws Exception for an index that no child has
    void SetChildFilter(int index, std::shared_ptr<AgentFilter> const& filter);
    void SetChildFilters(std::vector<std::shared_ptr<AgentFilter>> const& filters);
};

/// Agents that at least one of a list of filters selects; without filters no agent.
class PEDFLUX_API AnyOfFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    AnyOfFilter(std::shared_ptr<AgentFilter> const& first, std::shared_ptr<AgentFilter> const& second);
    explicit AnyOfFilter(std::vector<std::shared_ptr<AgentFilter>> const& filters);

    void AddChildFilter(std::shared_ptr<AgentFilter> const& filter);
    void ClearChildFilters();
    /// @throws Exception for an index that no child has
    void SetChildFilter(int index, std::shared_ptr<AgentFilter> const& filter);
    void SetChildFilters(std::vector<std::shared_ptr<AgentFilter>> const& filters);
};

/// Agents that none of a list of filters selects; without filters every agent.
class PEDFLUX_API NoneOfFilter : public AgentFilter {
  public:
    using AgentFilter::AgentFilter;
    NoneOfFilter(std::shared_ptr<AgentFilter> const& first, std::shared_ptr<AgentFilter> const& second);
    explicit NoneOfFilter(std::vector<std::shared_ptr<AgentFilter>> const& filters);

    void AddChildFilter(std::shared_ptr<AgentFilter> const& filter);
    void ClearChildFilters();
    /// @throws Exception for an index that no child has
    void SetChildFilter(int index, std::shared_ptr<AgentFilter> const& filter);
    void SetChildFilters(std::vector<std::shared_ptr<AgentFilter>> const& filters);
};

/// A filter with a name, to which `NamedFilter`s refer.
class PEDFLUX_API AgentFilterObject : public SimObject {
  public:
    using SimObject::SimObject;

    /// A copy of the filter; `AllAgentsFilter` unless set.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    /// @param filter the object keeps a copy; one that leads back to this object by names cannot be evaluated
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
};

}  // namespace pedflux
