#pragma once

#include <pedflux/api.h>
#include <pedflux/conditions.h>
#include <pedflux/identifiers.h>
#include <pedflux/node.h>
#include <pedflux/objects.h>

#include <memory>
#include <vector>

namespace pedflux {

class Tally;
class TimeReference;
class Transition;

/// What `Trigger::GetTriggerTypeId` returns.
enum class TriggerType : int {
    ABSOLUTE_TIME = 0,      ///< `AbsoluteTimeTrigger`
    ALL_OF = 1,             ///< `AllOfTrigger`
    ANY_OF = 2,             ///< `AnyOfTrigger`
    BEGINNING_OF = 3,       ///< `BeginningOfTrigger`
    BLOCKING = 4,           ///< `BlockingTrigger`
    CLOCK_IN_RANGE = 5,     ///< `ClockInRangeTrigger`
    DELAYED = 6,            ///< `DelayedTrigger`
    DURATION = 7,           ///< `DurationTrigger`
    END_OF = 8,             ///< `EndOfTrigger`
    EVENT_ACTIVE = 9,       ///< `EventActiveTrigger`
    EVENT_START_TIME = 10,  ///< `EventStartTimeTrigger`
    GATE_STATE = 11,        ///< `GateStateTrigger`
    NAMED = 12,             ///< `NamedTrigger`
    NEVER = 13,             ///< `NeverTrigger`
    NONE_OF = 14,           ///< `NoneOfTrigger`
    NOT = 15,               ///< `NotTrigger`
    PERIODIC = 16,          ///< `PeriodicTrigger`
    SERVER_STATE = 17,      ///< `ServerStateTrigger`
    SIMULATION_END = 18,    ///< `SimulationEndTrigger`
    SIMULATION_START = 19,  ///< `SimulationStartTrigger`
    TALLY = 20,             ///< `TallyTrigger`
    TRANSITION_COUNT = 21,  ///< `TransitionCountTrigger`
    WHENEVER = 22,          ///< `WheneverTrigger`
};

/// What `TriggerRange::GetTriggerRangeTypeId` returns.
enum class TriggerRangeType : int {
    ALL_SIMULATION = 0,  ///< `AllSimulationTriggerRange`
    BOUNDED = 1,         ///< `BoundedTriggerRange`
    OVER_DURATION = 2,   ///< `OverDurationTriggerRange`
    SCHEDULED = 3,       ///< `ScheduledTriggerRange`
    WHENEVER = 4,        ///< `WheneverTriggerRange`
};

/// A condition in time. An instant fires at moments: when the clock shows a time, when an event starts. An interval
/// holds for spans of time: while an event is active, while a gate is open. Where an instant is needed and an interval
/// is given, the interval fires each time it begins to hold, as it does when it holds as the simulation starts.
///
/// An object to which a trigger is given keeps a copy; triggers and ranges that are not part of a project share it.
class PEDFLUX_API Trigger {
  public:
    /// Used by the library.
    explicit Trigger(engine::NodePointer node);
    Trigger(Trigger const& other);
    Trigger& operator=(Trigger const&) = delete;

    /// The kind, a `TriggerType`.
    virtual int GetTriggerTypeId();
    /// A copy that shares nothing.
    virtual std::shared_ptr<Trigger> Clone();
    virtual int GetChildTriggerCount();
    /// @param index from 0; Exception is thrown for a child that there is not
    virtual std::shared_ptr<Trigger> GetChildTriggerAt(int index);
    virtual std::vector<std::shared_ptr<Trigger>> GetChildTriggers();
    /// Whether a trigger can be a child of this one. An empty one cannot, nor can one that is or holds this trigger,
    /// nor an instant where only intervals make sense: in a `BeginningOfTrigger`, `EndOfTrigger`, `WheneverTrigger`,
    /// `NotTrigger` and `NoneOfTrigger`. A trigger without children takes none.
    virtual bool IsValidChild(std::shared_ptr<Trigger> const& child);
    virtual ~Trigger();

    /// Whether the trigger can fire at moments. An `AllOfTrigger` or `AnyOfTrigger` can when a child can, a
    /// `DelayedTrigger` when its child can. A `NeverTrigger` and a `NamedTrigger`, which can be either, answer yes to
    /// this and to IsInterval.
    bool IsInstant() const;
    /// Whether the trigger can hold for spans of time. An `AllOfTrigger` or `AnyOfTrigger` can when all children can, a
    /// `DelayedTrigger` when its child can.
    bool IsInterval() const;
    /// The children, their children and so on, each before its own.
    std::vector<std::shared_ptr<Trigger>> GetAllNestedChildTriggers();

  protected:
    engine::NodePointer const node_;

  private:
    friend engine::NodeAccess;
};

/// Fires when the clock shows a time.
class PEDFLUX_API AbsoluteTimeTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// @param seconds after midnight, at least 0
    explicit AbsoluteTimeTrigger(int seconds);

    int GetAbsoluteTimeInSeconds() const;
    void SetAbsoluteTimeInSeconds(int seconds);
    std::shared_ptr<TimeReference> GetTimeReference();
};

/// Fires a number of seconds after the simulation starts.
class PEDFLUX_API SimulationStartTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// @param offset seconds, at least 0
    explicit SimulationStartTrigger(int offset);

    int GetOffsetInSeconds() const;
    void SetOffsetInSeconds(int offset);
    std::shared_ptr<TimeReference> GetTimeReference();
};

/// Fires a number of seconds before the simulation ends.
class PEDFLUX_API SimulationEndTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// @param offset seconds, at least 0
    explicit SimulationEndTrigger(int offset);

    int GetOffsetInSeconds() const;
    void SetOffsetInSeconds(int offset);
    std::shared_ptr<TimeReference> GetTimeReference();
};

/// Fires a number of seconds after each start of an event.
class PEDFLUX_API EventStartTimeTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// @param offset seconds, at least 0
    EventStartTimeTrigger(GlobalId const& event, int offset);

    GlobalId GetEvent();
    void SetEvent(GlobalId const& event);
    int GetOffsetInSeconds() const;
    void SetOffsetInSeconds(int offset);
};

/// Holds while the clock, in whole seconds, compares to a time as given: with LESS_THAN before the time, with EQUAL for
/// the one second that the clock shows it. Until a time after an event's start or before the simulation's end is known,
/// it does not hold.
class PEDFLUX_API ClockInRangeTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// @param seconds after midnight, at least 0
    ClockInRangeTrigger(int seconds, ComparisonType comparison);
    /// @param time stands on the right of the comparison, the clock on the left
    ClockInRangeTrigger(std::shared_ptr<TimeReference> const& time, ComparisonType comparison);

    ComparisonType GetComparisonType();
    void SetComparisonType(ComparisonType comparison);
    std::shared_ptr<TimeReference> GetTimeReference();
    void SetTimeReference(std::shared_ptr<TimeReference> const& time);
};

/// Holds while an event is active, or while it is not.
class PEDFLUX_API EventActiveTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// Holds while the event is active.
    explicit EventActiveTrigger(GlobalId const& event);
    EventActiveTrigger(GlobalId const& event, EventStateActivity activity);

    GlobalId GetEvent();
    void SetEvent(GlobalId const& event);
    EventStateActivity GetEventStateActivity();
    void SetEventStateActivity(EventStateActivity activity);
};

/// Holds while a gate is open, or while it is closed.
class PEDFLUX_API GateStateTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// Holds while the gate is open both ways.
    explicit GateStateTrigger(GlobalId const& gated_object);
    /// @param gated_object a connection that is a gate
    GateStateTrigger(GlobalId const& gated_object, GateStateDirection direction, AgentAccess access);

    GlobalId GetGatedObject();
    void SetGatedObject(GlobalId const& gated_object);
    GateStateDirection GetGateStateDirection();
    void SetGateStateDirection(GateStateDirection direction);
    AgentAccess GetAgentAccess();
    void SetAgentAccess(AgentAccess access);
};

/// Holds while a server is open, or while it is closed.
class PEDFLUX_API ServerStateTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// Holds while the server is open at both its entrance and its exit.
    explicit ServerStateTrigger(GlobalId const& server);
    ServerStateTrigger(GlobalId const& server, ServerAccessPoint point, AgentAccess access);

    GlobalId GetServer();
    void SetServer(GlobalId const& server);
    ServerAccessPoint GetServerAccessPoint();
    void SetServerAccessPoint(ServerAccessPoint point);
    AgentAccess GetAgentAccess();
    void SetAgentAccess(AgentAccess access);
};

/// Holds while a tally compares to a number or to another tally as given. The tallies are shared with everything else
/// that holds them.
class PEDFLUX_API TallyTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// The number becomes a `VariableTally` that stays as it is.
    TallyTrigger(std::shared_ptr<Tally> const& first, ComparisonType comparison, double value);
    /// @param first stands on the left of the comparison
    TallyTrigger(std::shared_ptr<Tally> const& first, ComparisonType comparison, std::shared_ptr<Tally> const& second);

    ComparisonType GetComparisonType();
    void SetComparisonType(ComparisonType comparison);
    std::shared_ptr<Tally> GetFirstTally();
    void SetFirstTally(std::shared_ptr<Tally> const& tally);
    std::shared_ptr<Tally> GetSecondTally();
    void SetSecondTally(std::shared_ptr<Tally> const& tally);
};

/// The trigger of a `TriggerObject`. No trigger object refers back to itself by names.
class PEDFLUX_API NamedTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    explicit NamedTrigger(GlobalId const& trigger_object);

    GlobalId GetTriggerObject();
    void SetTriggerObject(GlobalId const& trigger_object);
};

/// Never fires and never holds.
class PEDFLUX_API NeverTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    NeverTrigger();
};

/// Fires when an interval begins to hold; also when it holds as the simulation starts.
class PEDFLUX_API BeginningOfTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    explicit BeginningOfTrigger(std::shared_ptr<Trigger> const& interval);

    std::shared_ptr<Trigger> GetChildTrigger();
    void SetChildTrigger(std::shared_ptr<Trigger> const& child);
};

/// Fires when an interval ceases to hold.
class PEDFLUX_API EndOfTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    explicit EndOfTrigger(std::shared_ptr<Trigger> const& interval);

    std::shared_ptr<Trigger> GetChildTrigger();
    void SetChildTrigger(std::shared_ptr<Trigger> const& child);
};

/// Fires in every step of the simulation in which an interval holds.
class PEDFLUX_API WheneverTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    explicit WheneverTrigger(std::shared_ptr<Trigger> const& interval);

    std::shared_ptr<Trigger> GetChildTrigger();
    void SetChildTrigger(std::shared_ptr<Trigger> const& child);
};

/// Holds while an interval does not.
class PEDFLUX_API NotTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    explicit NotTrigger(std::shared_ptr<Trigger> const& interval);

    std::shared_ptr<Trigger> GetChildTrigger();
    void SetChildTrigger(std::shared_ptr<Trigger> const& child);
};

/// Holds from each firing of a child on for a number of seconds. A child that fires meanwhile makes it hold that long
/// from then on.
class PEDFLUX_API DurationTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// @param duration seconds, at least 0; with 0 it never holds
    DurationTrigger(std::shared_ptr<Trigger> const& child, int duration);

    std::shared_ptr<Trigger> GetChildTrigger();
    void SetChildTrigger(std::shared_ptr<Trigger> const& child);
    int GetDurationInSeconds() const;
    void SetDurationInSeconds(int duration);
};

/// Fires or holds as its child did a number of seconds ago.
class PEDFLUX_API DelayedTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// @param delay seconds, at least 0
    DelayedTrigger(std::shared_ptr<Trigger> const& child, int delay);

    std::shared_ptr<Trigger> GetChildTrigger();
    void SetChildTrigger(std::shared_ptr<Trigger> const& child);
    int GetDelayInSeconds() const;
    void SetDelayInSeconds(int delay);
};

/// Fires with its child, but not again before a number of seconds have passed since it last fired.
class PEDFLUX_API BlockingTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// @param interval seconds, at least 0; with 0 nothing is blocked
    BlockingTrigger(std::shared_ptr<Trigger> const& child, int interval);

    std::shared_ptr<Trigger> GetChildTrigger();
    void SetChildTrigger(std::shared_ptr<Trigger> const& child);
    int GetIntervalInSeconds() const;
    void SetIntervalInSeconds(int interval);
};

/// Fires with its child and then again and again after each period: endlessly or, counted with the first, a fixed
/// number of times. A child that fires meanwhile makes it begin anew. Of an interval, it fires no more once that has
/// ended.
class PEDFLUX_API PeriodicTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// Repeats endlessly.
    /// @param period seconds, at least 1
    PeriodicTrigger(std::shared_ptr<Trigger> const& child, int period);
    /// @param count at least 1
    PeriodicTrigger(std::shared_ptr<Trigger> const& child, int period, int count);

    std::shared_ptr<Trigger> GetChildTrigger();
    void SetChildTrigger(std::shared_ptr<Trigger> const& child);
    int GetPeriodInSeconds() const;
    void SetPeriodInSeconds(int period);
    bool HasFixedCount() const;
    /// @throws Exception when it repeats endlessly
    int GetFixedCount() const;
    void SetFixedCount(int count);
    void SetRepeatEndlessly();
};

/// Counts how often agents make a transition, from each firing of its child on, and fires when the count reaches a
/// target. It stops counting then, or with a loop counts anew from 0. A child that fires meanwhile makes it count anew.
/// Of an interval, it does not count once that has ended.
class PEDFLUX_API TransitionCountTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    /// @param target at least 1
    TransitionCountTrigger(std::shared_ptr<Trigger> const& child, std::shared_ptr<Transition> const& transition,
                           int target, bool loop);

    std::shared_ptr<Trigger> GetChildTrigger();
    void SetChildTrigger(std::shared_ptr<Trigger> const& child);
    /// Shared with everything else that holds it.
    std::shared_ptr<Transition> GetTransition();
    void SetTransition(std::shared_ptr<Transition> const& transition);
    int GetTargetValue() const;
    void SetTargetValue(int target);
    bool IsLooped() const;
    void SetLoop(bool loop);
};

/// Of intervals: holds while all of them hold. With instants among them: fires when all instants fire together while
/// all intervals hold. One without children always holds.
class PEDFLUX_API AllOfTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    explicit AllOfTrigger(std::vector<std::shared_ptr<Trigger>> const& children);

    void AddChildTrigger(std::shared_ptr<Trigger> const& child);
    void ClearChildTriggers();
    /// Replaces a child. @param index from 0
    void SetChildTriggerAt(int index, std::shared_ptr<Trigger> const& child);
    void SetChildTriggers(std::vector<std::shared_ptr<Trigger>> const& children);
};

/// Of intervals: holds while at least one of them holds. With instants among them: fires when an instant fires or an
/// interval begins. One without children never holds.
class PEDFLUX_API AnyOfTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    explicit AnyOfTrigger(std::vector<std::shared_ptr<Trigger>> const& children);

    void AddChildTrigger(std::shared_ptr<Trigger> const& child);
    void ClearChildTriggers();
    /// Replaces a child. @param index from 0
    void SetChildTriggerAt(int index, std::shared_ptr<Trigger> const& child);
    void SetChildTriggers(std::vector<std::shared_ptr<Trigger>> const& children);
};

/// Holds while none of its children holds, which are intervals. One without children always holds.
class PEDFLUX_API NoneOfTrigger : public Trigger {
  public:
    using Trigger::Trigger;
    explicit NoneOfTrigger(std::vector<std::shared_ptr<Trigger>> const& children);

    void AddChildTrigger(std::shared_ptr<Trigger> const& child);
    void ClearChildTriggers();
    /// Replaces a child. @param index from 0
    void SetChildTriggerAt(int index, std::shared_ptr<Trigger> const& child);
    void SetChildTriggers(std::vector<std::shared_ptr<Trigger>> const& children);
};

/// Spans of time that a trigger starts. A span of seconds begins with the moment of its start, and the moment at which
/// the seconds have passed is the first that does not belong to it.
///
/// An object to which a range is given keeps a copy. A range shares its triggers with everything else that holds them.
class PEDFLUX_API TriggerRange {
  public:
    /// Used by the library.
    explicit TriggerRange(engine::NodePointer node);
    TriggerRange(TriggerRange const& other);
    TriggerRange& operator=(TriggerRange const&) = delete;
    virtual ~TriggerRange();

    /// The kind, a `TriggerRangeType`.
    virtual int GetTriggerRangeTypeId();
    /// The trigger that starts a span; empty when none is set yet. A new `SimulationStartTrigger` for an
    /// `AllSimulationTriggerRange`.
    virtual std::shared_ptr<Trigger> GetStartTrigger();
    /// A copy that shares nothing.
    virtual std::shared_ptr<TriggerRange> Clone();

  protected:
    engine::NodePointer const node_;

  private:
    friend engine::NodeAccess;
};

/// The whole of the simulation.
class PEDFLUX_API AllSimulationTriggerRange : public TriggerRange {
  public:
    using TriggerRange::TriggerRange;
    AllSimulationTriggerRange();
};

/// From each firing of one trigger to the next of another one. Where both fire at the same moment, one span ends and
/// another one begins.
class PEDFLUX_API BoundedTriggerRange : public TriggerRange {
  public:
    using TriggerRange::TriggerRange;
    /// Without triggers, which have to be set before an object of a project takes it.
    BoundedTriggerRange();
    BoundedTriggerRange(std::shared_ptr<Trigger> const& start, std::shared_ptr<Trigger> const& end);

    void SetStartTrigger(std::shared_ptr<Trigger> const& start);
    /// Empty when none is set yet.
    std::shared_ptr<Trigger> GetEndTrigger();
    void SetEndTrigger(std::shared_ptr<Trigger> const& end);
};

/// A number of seconds from each firing of a trigger. A firing meanwhile lets the span last that long from then on.
class PEDFLUX_API OverDurationTriggerRange : public TriggerRange {
  public:
    using TriggerRange::TriggerRange;
    /// 0 seconds, and without a trigger, which has to be set before an object of a project takes it.
    OverDurationTriggerRange();
    /// @param duration seconds, at least 0; with 0 there is no span
    OverDurationTriggerRange(std::shared_ptr<Trigger> const& start, int duration);

    void SetStartTrigger(std::shared_ptr<Trigger> const& start);
    int GetDurationInSeconds() const;
    void SetDurationInSeconds(int duration);
};

/// Several spans after each firing of a trigger, each given by its offset from the firing and its duration. They may
/// overlap. A firing meanwhile begins them all anew.
class PEDFLUX_API ScheduledTriggerRange : public TriggerRange {
  public:
    using TriggerRange::TriggerRange;
    /// No spans, and without a trigger, which has to be set before an object of a project takes it.
    ScheduledTriggerRange();
    /// @param offsets seconds, at least 0
    /// @param durations seconds, at least 0, one for each offset
    /// @throws Exception for lists of unequal length
    ScheduledTriggerRange(std::shared_ptr<Trigger> const& start, std::vector<int> const& offsets,
                          std::vector<int> const& durations);

    void SetStartTrigger(std::shared_ptr<Trigger> const& start);
    /// @param offset, duration seconds, at least 0
    void AddInterval(int offset, int duration);
    void ClearIntervals();
    int GetIntervalCount() const;
    /// @param index from 0, in the order in which the intervals were added
    int GetIntervalOffsetInSeconds(int index) const;
    std::vector<int> GetIntervalOffsetsInSeconds();
    /// @param index from 0, in the order in which the intervals were added
    int GetIntervalDurationInSeconds(int index) const;
    std::vector<int> GetIntervalDurationsInSeconds();
};

/// Whenever a trigger holds. Of an instant, only the steps of the simulation in which it fires.
class PEDFLUX_API WheneverTriggerRange : public TriggerRange {
  public:
    using TriggerRange::TriggerRange;
    /// Without a trigger, which has to be set before an object of a project takes it.
    WheneverTriggerRange();
    explicit WheneverTriggerRange(std::shared_ptr<Trigger> const& start);

    void SetStartTrigger(std::shared_ptr<Trigger> const& start);
};

/// A named trigger that others refer to with a `NamedTrigger`. It never fires unless set.
class PEDFLUX_API TriggerObject : public SimObject {
  public:
    using SimObject::SimObject;

    /// A copy.
    std::shared_ptr<Trigger> GetTrigger();
    /// Keeps a copy. A trigger that leads back to this object by a `NamedTrigger` is refused.
    void SetTrigger(std::shared_ptr<Trigger> const& trigger);
};

}  // namespace pedflux
