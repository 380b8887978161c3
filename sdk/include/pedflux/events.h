#pragma once

#include <pedflux/api.h>
#include <pedflux/color.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>

#include <memory>
#include <vector>

namespace pedflux {

class AgentAction;
class AgentTest;
class Distribution;
class PopulationSource;
class TimeReference;
class Trigger;
class TriggerRange;
class WaitStyle;

/// How the agents of an event are coloured.
enum class EventColorSchemeType : int {
    EVENT_COLOR = 0,  ///< as the event itself
    SPECIFIED = 1,    ///< in a colour of their own
    LIGHTER = 2,      ///< as the event, half way to white
    DARKER = 3,       ///< as the event, half way to black
    RULES = 4,        ///< by the first rule whose test the agent passes
};

/// How long agents circulate, see `Circulate`.
enum class CirculationCommand : int {
    ENTIRE_SIMULATION = 0,      ///< until the simulation ends
    FOR_COUNT = 1,              ///< a number of portals
    FOR_DURATION = 2,           ///< a time
    FOR_COUNT_OR_DURATION = 3,  ///< a number of portals and a time
    UNTIL_TIME = 4,             ///< until a time of the clock
    UNTIL_TIME_OR_COUNT = 5,    ///< until a time of the clock and a number of portals
};

// An event keeps a copy of what it is given (a source, trigger, test, action, distribution, wait style, time), and
// hands out copies. An empty one is refused unless said otherwise.

/// An event that brings a population into the simulation when it starts.
///
/// A new event starts with the simulation. It has a `CountPopulationSource` without origins and persons, no profile, no
/// initial action, and the colour scheme `EVENT_COLOR`.
class PEDFLUX_API SinglePopulationEvent : public SimObject {
  public:
    using SimObject::SimObject;

    /// A copy of the population source: a change becomes part of the event when the source is set again.
    std::shared_ptr<PopulationSource> GetPopulationSource();
    /// Replaces the population source by a copy of the given one. Its origins and destinations are portals, floors,
    /// connections or zones of the project.
    void SetPopulationSource(std::shared_ptr<PopulationSource> const& source);

    /// What starts the event.
    std::shared_ptr<Trigger> GetStartTrigger();
    void SetStartTrigger(std::shared_ptr<Trigger> const& trigger);

    /// The profile of the people; invalid when none is set and a profile of default values is used.
    GlobalId GetProfile();
    /// Sets the profile; an invalid identifier takes it away.
    void SetProfile(GlobalId const& profile);

    bool HasInitialAction();
    /// What each person does first, before it goes to its destination; empty when there is nothing.
    std::shared_ptr<AgentAction> GetInitialActionCopy();
    /// Sets what each person does first; an empty action takes it away.
    void SetInitialAction(std::shared_ptr<AgentAction> const& action);

    EventColorSchemeType GetColorSchemeType();
    /// The colour that the scheme gives to the agents; with rules, the colour of agents that pass none of the tests.
    Color GetColorSchemeColor();
    void SetColorSchemeEventColor();
    void SetColorSchemeSpecified(Color color);
    void SetColorSchemeLighter();
    void SetColorSchemeDarker();
    /// Gives each agent the colour of the first test that it passes when it enters the simulation. The rules last until
    /// another scheme is set.
    /// @param colors one for each test
    /// @param fallback of agents that pass none of the tests
    void SetColorSchemeRules(std::vector<std::shared_ptr<AgentTest>> const& tests, std::vector<Color> const& colors,
                             Color fallback);
    /// 0 for the other schemes.
    int GetColorSchemeRuleCount();
    /// The test of a rule with a number from 0 on.
    std::shared_ptr<AgentTest> GetColorSchemeRuleAgentTest(int index);
    Color GetColorSchemeRuleColor(int index);
};

/// People who walk from origins to destinations.
class PEDFLUX_API Journey : public SinglePopulationEvent {
  public:
    using SinglePopulationEvent::SinglePopulationEvent;
};

/// People who leave a building. They are where the population source's origins are, and leave by its destinations.
/// People whose origin is an area stand spread over it from their arrival on; people whose origin is a portal enter
/// through it. Each waits where it is for the pre-movement time and then walks to its destination.
class PEDFLUX_API Evacuation : public SinglePopulationEvent {
  public:
    using SinglePopulationEvent::SinglePopulationEvent;

    /// The places that are to be cleared; none unless set: all of the building.
    std::vector<GlobalId> GetZones();
    /// Replaces the places to be cleared: zones, floors, connections or portals, each of them once.
    void SetZones(std::vector<GlobalId> const& zones);
    void ClearZones();

    /// How long each person waits before it walks, in seconds; 0 unless set.
    std::shared_ptr<Distribution> GetPreMovementWaitDistribution();
    /// @param wait a valid distribution of 0 or more seconds
    void SetPreMovementWaitDistribution(std::shared_ptr<Distribution> const& wait);

    /// How people wait before they walk; they stand still unless set.
    std::shared_ptr<WaitStyle> GetPreMovementWaitStyle();
    void SetPreMovementWaitStyle(std::shared_ptr<WaitStyle> const& style);
};

/// People who walk from portal to portal, each time to one that is drawn. When they have circulated for long enough
/// they go to their destination. They circulate for the entire simulation unless told otherwise.
///
/// Counts are numbers of portals that an agent reaches; durations are counted from its arrival in the simulation. Each
/// is drawn once for each agent; counts are rounded to whole numbers.
class PEDFLUX_API Circulate : public SinglePopulationEvent {
  public:
    using SinglePopulationEvent::SinglePopulationEvent;

    std::vector<GlobalId> GetCirculatePortals();
    /// @param portals each of them once
    void SetCirculatePortals(std::vector<GlobalId> const& portals);

    CirculationCommand GetCirculationCommand();
    void CirculateEntireSimulation();
    /// @param count 0 or more portals
    void CirculateForCount(std::shared_ptr<Distribution> const& count);
    /// @param duration 0 or more seconds
    void CirculateForDuration(std::shared_ptr<Distribution> const& duration);
    /// @param count 0 or more portals
    /// @param duration 0 or more seconds
    /// @param untilBoth whether agents go on until both are reached; otherwise the first of them ends it
    void CirculateForCountOrDuration(std::shared_ptr<Distribution> const& count,
                                     std::shared_ptr<Distribution> const& duration, bool untilBoth);
    void CirculateUntilTime(std::shared_ptr<TimeReference> time);
    /// @param count 0 or more portals
    /// @param untilBoth whether agents go on until both are reached; otherwise the first of them ends it
    void CirculateUntilTimeOrCount(std::shared_ptr<TimeReference> time, std::shared_ptr<Distribution> const& count,
                                   bool untilBoth);
};

/// Gives an action, to be done first, to the people who are in the simulation while a trigger range is on: once in each
/// span of the range, as soon as they are there, in the zone if there is one, and pass the test if there is one. A test
/// of chance is drawn once in each span.
///
/// A new broadcast is on all the time, and its action does nothing.
class PEDFLUX_API Broadcast : public SimObject {
  public:
    using SimObject::SimObject;

    std::shared_ptr<TriggerRange> GetTriggerRange();
    void SetTriggerRange(std::shared_ptr<TriggerRange> const& range);

    std::shared_ptr<AgentAction> GetAgentAction();
    void SetAgentAction(std::shared_ptr<AgentAction> const& action);

    /// @throws Exception for a broadcast without test
    std::shared_ptr<AgentTest> GetAgentTest();
    void SetAgentTest(std::shared_ptr<AgentTest> const& test);
    bool HasAgentTest();
    void ClearAgentTest();

    /// @throws Exception for a broadcast without zone
    GlobalId GetZone();
    void SetZone(GlobalId const& zone);
    bool HasZone();
    void ClearZone();
};

/// Sends agents on from its sources: an agent that has been served at a source, has reached it as its goal, or stands
/// there without one, goes to the easiest sink: of several servers to the one with the fewest agents, otherwise to the
/// nearest. Both are servers, portals, floors, connections or zones; a new dispatch has none.
class PEDFLUX_API Dispatch : public SimObject {
  public:
    using SimObject::SimObject;

    void SetSource(GlobalId const& source);
    /// @param sources each of them once
    void SetSources(std::vector<GlobalId> const& sources);
    void SetSink(GlobalId const& sink);
    /// @param sinks each of them once
    void SetSinks(std::vector<GlobalId> const& sinks);

    /// Moves the mark that shows the dispatch; no agent goes there.
    /// @param position metres
    void SetPosition(Vec3d const& position);
    /// Moves the mark to the middle of the sources and sinks; it stays where it is when there are none.
    void Reposition();
};

}  // namespace pedflux
