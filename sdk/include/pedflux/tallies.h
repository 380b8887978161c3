#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/node.h>
#include <pedflux/objects.h>

#include <memory>
#include <vector>

namespace pedflux {

class Distribution;
class Transition;
class TriggerRange;

/// The kinds of tally.
enum class TallyType : int {
    AREA_POPULATION = 0,            ///< `AreaPopulationTally`
    NAMED = 1,                      ///< `NamedTally`
    SERVER_AVAILABLE_CAPACITY = 2,  ///< `ServerAvailableCapacityTally`
    SERVER_QUEUE_AND_APPROACH = 3,  ///< `ServerQueueAndApproachTally`
    SERVER_QUEUE = 4,               ///< `ServerQueueTally`
    SURFACE_AREA = 5,               ///< `SurfaceAreaTally`
    TRANSITION = 6,                 ///< `TransitionTally`
    VARIABLE = 7,                   ///< `VariableTally`
    SCALE = 8,                      ///< `ScaleTally`
    SUBTRACT = 9,                   ///< `SubtractTally`
    MULTIPLY = 10,                  ///< `MultiplyTally`
    DIVIDE = 11,                    ///< `DivideTally`
    ADD = 12,                       ///< `AddTally`
    MAX = 13,                       ///< `MaxTally`
    MIN = 14                        ///< `MinTally`
};

/// What a `DivideTally` takes 0 divided by 0 for.
enum class ZeroOverZeroValue : int {
    ZERO = 0,     ///< 0
    ONE = 1,      ///< 1
    INFINITE = 2  ///< the greatest number, as 1 divided by 0
};

/// How the value of a `TallyObject` is made.
enum class TallyValueType : int {
    COUNT = 0,                     ///< what an expression is now
    VARIABLE = 1,                  ///< a number that only changes by what is added to it and by resets
    CLOCK = 2,                     ///< seconds that count up or down
    AGGREGATE_SUM_OVER_TIME = 3,   ///< the sum of an expression's values in all frames
    AGGREGATE_MIN_OVER_TIME = 4,   ///< the least of an expression's values
    AGGREGATE_MAX_OVER_TIME = 5,   ///< the greatest of an expression's values
    AGGREGATE_ROLLING_SUM = 6,     ///< the sum of an expression's values in the frames of the last seconds
    AGGREGATE_ROLLING_AVERAGE = 7  ///< the average of an expression's values in the frames of the last seconds
};

/// A number that a simulation knows in every frame: a count of people, an area, or a sum, quotient or the like of other
/// tallies. Triggers and tests compare tallies, and a `TallyObject` makes a running value out of one.
///
/// Results that leave the range of a double are the number of that sign with the greatest magnitude, so that a tally is
/// a finite number in every frame.
///
/// A tally shares the tallies that it is made of with everything else that holds them. An object to which a tally is
/// given keeps a copy.
class PEDFLUX_API Tally {
  public:
    /// Used by the library.
    explicit Tally(engine::NodePointer node);
    Tally(Tally const& other);
    Tally& operator=(Tally const&) = delete;

    /// The kind, a `TallyType`.
    virtual int GetTallyTypeId();
    /// A copy that shares nothing.
    virtual std::shared_ptr<Tally> Clone();
    /// How many tallies this one is made of.
    virtual int GetChildTallyCount();
    /// One of the tallies that this one is made of.
    /// @param index from 0 to the count less 1
    /// @throws Exception for another index
    virtual std::shared_ptr<Tally> GetChildTally(int index);
    /// The tallies that this one is made of, in order.
    virtual std::vector<std::shared_ptr<Tally>> GetChildTallies();
    virtual ~Tally();

    /// All nested tallies: those that this one is made of, those that they are made of and so on, each before its own.
    std::vector<std::shared_ptr<Tally>> GetAllNestedChildTallies();

  protected:
    engine::NodePointer const node_;

  private:
    friend engine::NodeAccess;
};

/// How many people are in some areas: floors, connections, zones and other places. An agent in several of them counts
/// once.
class PEDFLUX_API AreaPopulationTally : public Tally {
  public:
    using Tally::Tally;
    explicit AreaPopulationTally(GlobalId const& area);
    AreaPopulationTally(AreaPopulationTally const& other) = default;
    /// @param areas each of them once
    explicit AreaPopulationTally(std::vector<GlobalId> const& areas);

    std::vector<GlobalId> GetAreas();
    void SetAreas(std::vector<GlobalId> const& areas);
};

/// The value of a `TallyObject` in this frame.
class PEDFLUX_API NamedTally : public Tally {
  public:
    using Tally::Tally;
    explicit NamedTally(GlobalId const& tallyObject);

    GlobalId GetTallyObject();
    void SetTallyObject(GlobalId const& tallyObject);
};

/// How many more people some servers can take, summed over the servers.
class PEDFLUX_API ServerAvailableCapacityTally : public Tally {
  public:
    using Tally::Tally;
    explicit ServerAvailableCapacityTally(GlobalId const& server);
    /// @param servers each of them once
    explicit ServerAvailableCapacityTally(std::vector<GlobalId> const& servers);

    std::vector<GlobalId> GetServers();
    void SetServers(std::vector<GlobalId> const& servers);
};

/// How many people wait at some servers or are on the way to them.
class PEDFLUX_API ServerQueueAndApproachTally : public Tally {
  public:
    using Tally::Tally;
    explicit ServerQueueAndApproachTally(GlobalId const& server);
    /// @param servers each of them once
    explicit ServerQueueAndApproachTally(std::vector<GlobalId> const& servers);

    std::vector<GlobalId> GetServers();
    void SetServers(std::vector<GlobalId> const& servers);
};

/// How many people wait at some servers.
class PEDFLUX_API ServerQueueTally : public Tally {
  public:
    using Tally::Tally;
    explicit ServerQueueTally(GlobalId const& server);
    /// @param servers each of them once
    explicit ServerQueueTally(std::vector<GlobalId> const& servers);

    std::vector<GlobalId> GetServers();
    void SetServers(std::vector<GlobalId> const& servers);
};

/// The surface of some walkable objects, in square metres.
class PEDFLUX_API SurfaceAreaTally : public Tally {
  public:
    using Tally::Tally;
    explicit SurfaceAreaTally(GlobalId const& walkableObject);
    /// @param walkableObjects each of them once
    explicit SurfaceAreaTally(std::vector<GlobalId> const& walkableObjects);

    std::vector<GlobalId> GetWalkableObjects();
    void SetWalkableObjects(std::vector<GlobalId> const& walkableObjects);
};

/// How many people make a transition in this frame. Summed over time, it says how many have made it.
class PEDFLUX_API TransitionTally : public Tally {
  public:
    using Tally::Tally;
    explicit TransitionTally(std::shared_ptr<Transition> const& transition);

    std::shared_ptr<Transition> GetTransition();
    void SetTransition(std::shared_ptr<Transition> const& transition);
};

/// A number.
class PEDFLUX_API VariableTally : public Tally {
  public:
    using Tally::Tally;
    explicit VariableTally(double value);

    double GetValue() const;
    void SetValue(double value);
};

/// A tally times a number.
class PEDFLUX_API ScaleTally : public Tally {
  public:
    using Tally::Tally;
    ScaleTally(std::shared_ptr<Tally> const& tally, double scaleValue);

    std::shared_ptr<Tally> GetTally();
    void SetTally(std::shared_ptr<Tally> const& tally);
    double GetScaleValue();
    void SetScaleValue(double scaleValue);
};

/// The first tally less the second one.
class PEDFLUX_API SubtractTally : public Tally {
  public:
    using Tally::Tally;
    SubtractTally(std::shared_ptr<Tally> const& first, std::shared_ptr<Tally> const& second);

    std::shared_ptr<Tally> GetFirstTally();
    void SetFirstTally(std::shared_ptr<Tally> const& first);
    std::shared_ptr<Tally> GetSecondTally();
    void SetSecondTally(std::shared_ptr<Tally> const& second);
};

/// The product of two tallies.
class PEDFLUX_API MultiplyTally : public Tally {
  public:
    using Tally::Tally;
    MultiplyTally(std::shared_ptr<Tally> const& first, std::shared_ptr<Tally> const& second);

    std::shared_ptr<Tally> GetFirstTally();
    void SetFirstTally(std::shared_ptr<Tally> const& first);
    std::shared_ptr<Tally> GetSecondTally();
    void SetSecondTally(std::shared_ptr<Tally> const& second);
};

/// The numerator divided by the denominator. Any other number than 0 divided by 0 is the number of its sign with the
/// greatest magnitude.
class PEDFLUX_API DivideTally : public Tally {
  public:
    using Tally::Tally;
    /// @param zeroOverZero what 0 divided by 0 is
    DivideTally(std::shared_ptr<Tally> const& numerator, std::shared_ptr<Tally> const& denominator,
                ZeroOverZeroValue zeroOverZero);

    std::shared_ptr<Tally> GetNumeratorTally();
    void SetNumeratorTally(std::shared_ptr<Tally> const& numerator);
    std::shared_ptr<Tally> GetDenominatorTally();
    void SetDenominatorTally(std::shared_ptr<Tally> const& denominator);
    ZeroOverZeroValue GetZeroOverZeroValue();
    void SetZeroOverZeroValue(ZeroOverZeroValue zeroOverZero);
};

/// The sum of tallies; 0 of none.
class PEDFLUX_API AddTally : public Tally {
  public:
    using Tally::Tally;
    AddTally(std::shared_ptr<Tally> const& first, std::shared_ptr<Tally> const& second);
    explicit AddTally(std::vector<std::shared_ptr<Tally>> const& tallies);

    void AddChildTally(std::shared_ptr<Tally> const& tally);
    void ClearChildTallies();
    /// Replaces one of the tallies.
    /// @param index from 0 to the count less 1
    /// @throws Exception for another index
    void SetChildTally(int index, std::shared_ptr<Tally> const& tally);
    void SetChildTallies(std::vector<std::shared_ptr<Tally>> const& tallies);
};

/// The greatest of some tallies; 0 of none.
class PEDFLUX_API MaxTally : public Tally {
  public:
    using Tally::Tally;
    MaxTally(std::shared_ptr<Tally> const& first, std::shared_ptr<Tally> const& second);
    explicit MaxTally(std::vector<std::shared_ptr<Tally>> const& tallies);

    void AddChildTally(std::shared_ptr<Tally> const& tally);
    void ClearChildTallies();
    /// Replaces one of the tallies.
    /// @param index from 0 to the count less 1
    /// @throws Exception for another index
    void SetChildTally(int index, std::shared_ptr<Tally> const& tally);
    void SetChildTallies(std::vector<std::shared_ptr<Tally>> const& tallies);
};

/// The least of some tallies; 0 of none.
class PEDFLUX_API MinTally : public Tally {
  public:
    using Tally::Tally;
    MinTally(std::shared_ptr<Tally> const& first, std::shared_ptr<Tally> const& second);
    explicit MinTally(std::vector<std::shared_ptr<Tally>> const& tallies);

    void AddChildTally(std::shared_ptr<Tally> const& tally);
    void ClearChildTallies();
    /// Replaces one of the tallies.
    /// @param index from 0 to the count less 1
    /// @throws Exception for another index
    void SetChildTally(int index, std::shared_ptr<Tally> const& tally);
    void SetChildTallies(std::vector<std::shared_ptr<Tally>> const& tallies);
};

/// A named value that runs along with the simulation. Actions and `TallyChange`s add to it.
///
/// How it is made decides what a frame does to it:
/// - a variable, a clock and a sum over time are running totals: a clock moves on by the length of the frame, a sum by
///   the value of its expression, and what is added becomes part of the total. The bounds hold for the total, so that
///   one that reached its maximum leaves it with the next smaller addition;
/// - all others are measured anew in every frame, and what was added since the last reset is added on top. The bounds
///   hold for the outcome.
///
/// A reset sets the total, or what is put on top, to the default value, of which a new one is drawn each time, and lets
/// aggregates over time start again. A value starts as by a reset, or with a value of its own instead of the default.
///
/// A new object is a variable with the default value 0, without bounds and automatic resets.
class PEDFLUX_API TallyObject : public SimObject {
  public:
    using SimObject::SimObject;

    /// A copy of the expression that the value is made of; empty for variables and clocks.
    std::shared_ptr<Tally> GetTally();
    TallyValueType GetTallyValueType();

    /// The value is what the expression is in each frame.
    void SetTallyValueByCount(std::shared_ptr<Tally> const& tally);
    /// The value is a number that changes by additions and resets.
    /// @param defaultValue the default value on reset
    void SetTallyValueByVariable(double defaultValue);
    /// @param defaultValue the default value on reset
    void SetTallyValueByVariable(std::shared_ptr<Distribution> const& defaultValue);
    /// The value grows by 1 each second.
    /// @param defaultValue the default value on reset, in seconds
    void SetTallyValueByClockCountingUp(double defaultValue);
    void SetTallyValueByClockCountingUp(std::shared_ptr<Distribution> const& defaultValue);
    /// The value falls by 1 each second.
    /// @param defaultValue the default value on reset, in seconds
    void SetTallyValueByClockCountingDown(double defaultValue);
    void SetTallyValueByClockCountingDown(std::shared_ptr<Distribution> const& defaultValue);
    /// The value is the sum of what the expression was in each frame.
    void SetTallyValueByAggregateSumOverTime(std::shared_ptr<Tally> const& tally);
    /// The value is the least that the expression was since the start or the last reset.
    void SetTallyValueByAggregateMinOverTime(std::shared_ptr<Tally> const& tally);
    /// The value is the greatest that the expression was since the start or the last reset.
    void SetTallyValueByAggregateMaxOverTime(std::shared_ptr<Tally> const& tally);
    /// The value is the sum of what the expression was in each frame of the last seconds.
    /// @param windowInSeconds 1 or more
    void SetTallyValueByAggregateRollingSum(std::shared_ptr<Tally> const& tally, int windowInSeconds);
    /// The value is the average of what the expression was in each frame of the last seconds.
    /// @param windowInSeconds 1 or more
    /// @param wholeWindow whether frames before the start or the last reset count as frames of value 0, so that the
    /// average rises slowly until the window has passed; otherwise they are left out
    void SetTallyValueByAggregateRollingAverage(std::shared_ptr<Tally> const& tally, int windowInSeconds,
                                                bool wholeWindow);
    /// Whether the value is a clock that counts down.
    bool IsClockCountingDown() const;

    bool HasMinValue() const;
    /// @throws Exception when there is none
    double GetMinValue() const;
    /// @param value not above the maximum
    void SetMinValue(double value);
    void ClearMinValue();
    bool HasMaxValue() const;
    /// @throws Exception when there is none
    double GetMaxValue() const;
    /// @param value not below the minimum
    void SetMaxValue(double value);
    void ClearMaxValue();

    /// Whether the value starts with the default value.
    bool IsStartAtDefaultValue() const;
    void SetStartAtDefaultValue();
    /// Whether the value starts with a value of its own.
    bool IsStartAtCustomValue() const;
    void SetStartAtCustomValue(double value);
    /// @throws Exception when the value starts with the default value
    double GetStartCustomValue() const;

    bool IsAutoResetDisabled() const;
    void SetAutoResetDisabled();
    /// Whether the value is reset at the start of every frame.
    bool IsAutoResetEveryFrame() const;
    void SetAutoResetEveryFrame();
    /// Whether the value is reset at regular times, counted from the start of the simulation.
    bool IsAutoResetEveryInterval() const;
    /// @param seconds 1 or more
    void SetAutoResetEveryInterval(int seconds);
    /// Whether the value is reset in the frame after the one in which it reached the value of a tally.
    bool IsAutoResetWhenValueReached() const;
    bool IsAutoResetWhenValueGreaterOrEqual() const;
    void SetAutoResetWhenValueGreaterOrEqual(std::shared_ptr<Tally> const& tally);
    bool IsAutoResetWhenValueLessOrEqual() const;
    void SetAutoResetWhenValueLessOrEqual(std::shared_ptr<Tally> const& tally);
    /// @throws Exception when the value is not reset at regular times
    int GetAutoResetIntervalInSeconds() const;
    /// A copy of the tally whose value is to be reached; empty when the value is not reset by that.
    std::shared_ptr<Tally> GetAutoResetTally();

    void SetDefaultValueOnReset(double value);
    /// The default value, as a distribution; a constant of 0 unless set. A copy.
    std::shared_ptr<Distribution> GetDefaultDistributionOnReset();
};

/// A rule that changes tally objects while a trigger range is open.
///
/// The command says what is done when the range opens: the tally objects are reset, a value is added to them, or both
/// in this order. The value is added once, or again and again with a period until the range ends. With cycling, the
/// whole command starts anew with each cycle until the range ends. If the first addition is skipped, the first one
/// after the range opened is left out. Each time the range opens all of this starts again.
///
/// A new change concerns no tally objects, holds for the whole simulation and adds 1 once, without cycling.
class PEDFLUX_API TallyChange : public SimObject {
  public:
    using SimObject::SimObject;

    /// The tally objects that are changed.
    std::vector<GlobalId> GetTallyObjects();
    /// @param tallyObjects each of them once
    void SetTallyObjects(std::vector<GlobalId> const& tallyObjects);
    /// A copy of the range in which the command is carried out.
    std::shared_ptr<TriggerRange> GetTriggerRange();
    void SetTriggerRange(std::shared_ptr<TriggerRange> const& range);

    void SetCommandToAddOnce();
    /// @param periodInSeconds 1 or more
    void SetCommandToAddRepeatedly(int periodInSeconds);
    void SetCommandToReset();
    void SetCommandToResetThenAddOnce();
    /// @param periodInSeconds 1 or more
    void SetCommandToResetThenAddRepeatedly(int periodInSeconds);
    /// Whether the command adds a value, once or repeatedly.
    bool DoesCommandAdd();
    bool DoesCommandAddOnce();
    bool DoesCommandAddRepeatedly();
    /// Whether the command resets, alone or before it adds.
    bool DoesCommandReset();
    /// @throws Exception when the command does not add repeatedly
    int GetAddPeriodInSeconds() const;

    /// Adds a number. It can be read as a distribution.
    void SetValueAsConstant(double value);
    /// Whether the value to add is a number or a distribution.
    bool CanGetValueAsDistribution();
    /// A copy of the distribution of the value to add, of which each addition to each object draws; empty when the
    /// value is that of a tally.
    std::shared_ptr<Distribution> GetValueAsDistribution();
    void SetValueAsDistribution(std::shared_ptr<Distribution> const& distribution);
    /// Whether the value to add is that of a tally.
    bool CanGetValueAsTally();
    /// A copy of the tally whose value is added; empty when the value is a number or a distribution.
    std::shared_ptr<Tally> GetValueAsTally();
    void SetValueAsTally(std::shared_ptr<Tally> const& tally);
    /// Whether what is drawn of the distribution is rounded to the nearest integer. Not unless set.
    void SetValueDistributionUsesIntegers(bool integers);
    bool DoesValueDistributionUseIntegers();

    /// @param periodInSeconds 1 or more
    void SetCyclingEnabled(int periodInSeconds);
    void SetCyclingDisabled();
    bool IsCyclingEnabled();
    /// @throws Exception when there is no cycling
    int GetCyclePeriodInSeconds() const;

    /// Whether the first addition after the range opened is left out. Not unless set.
    bool IsSkipFirstAddition();
    void SetSkipFirstAddition(bool skip);
};

}  // namespace pedflux
