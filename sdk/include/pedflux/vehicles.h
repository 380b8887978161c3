#pragma once

#include <pedflux/api.h>
#include <pedflux/color.h>
#include <pedflux/events.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>
#include <pedflux/population_sources.h>
#include <pedflux/value_pairs.h>

#include <memory>
#include <vector>

namespace pedflux {

class AgentAction;
class AgentTest;
class Distribution;
class TimeReference;

/// The populations of a vehicle.
enum class VehiclePopulationType : int {
    BOARDING = 0,   ///< people who wait for the vehicle and get in
    ALIGHTING = 1,  ///< people who come with it and get out
    THROUGH = 2,    ///< people who come with it and stay in it
};

/// A vehicle that comes to the model again and again, such as a train: it arrives, stands for a while with open doors
/// and departs. Its people come from it, go to it and stay in it.
///
/// Whatever a vehicle is given (a distribution, time, source, test, action) it keeps as a copy, and hands out copies.
/// An empty one is refused unless said otherwise.
///
/// Times and durations are whole seconds. Lists that belong together are of equal length; times of a schedule do not go
/// back.
class PEDFLUX_API Vehicle : public SimObject {
  public:
    using SimObject::SimObject;

    // Arrivals. A new vehicle arrives every 600 seconds from the start of the simulation on, and dwells for 30.

    bool IsArrivalByHeadway();
    bool IsArrivalBySchedule();
    /// Arrivals after one another, from the start time on.
    /// @param headway from one arrival to the next, 0 or more seconds. Numbers of people by a schedule end with the
    /// schedule: the vehicle carries no such people then.
    void SetArrivalByHeadway(std::shared_ptr<Distribution> const& headway);
    /// The same for a number of arrivals, at least 1.
    void SetArrivalByHeadwayWithFixedCount(int count, std::shared_ptr<Distribution> const& headway);
    /// @throws Exception for arrivals by schedule
    std::shared_ptr<Distribution> GetArrivalByHeadwayDistribution();
    bool HasArrivalByHeadwayFixedCount();
    /// @throws Exception when there is none
    int GetArrivalByHeadwayFixedCount();
    /// Arrivals at given times.
    /// @param offsets of each arrival from the start time, 0 or more. Numbers of people by the schedule before end with
    /// it.
    void SetArrivalBySchedule(std::vector<int> const& offsets);
    /// None for arrivals by headway.
    std::vector<int> GetArrivalByScheduleTimeOffsetsInSeconds();
    /// What arrivals are counted from.
    std::shared_ptr<TimeReference> GetStartTimeReference();
    void SetStartTimeReference(std::shared_ptr<TimeReference> const& start);
    /// How long the vehicle stands, in seconds.
    std::shared_ptr<Distribution> GetDwellDurationDistribution();
    /// @param duration 0 or more seconds
    void SetDwellDurationDistribution(std::shared_ptr<Distribution> const& duration);
    /// How long after its arrival the vehicle lets people in; before it when negative, so that they can go to the
    /// doors. 0 unless set.
    int GetBoardingTimeOffsetInSeconds();
    void SetBoardingTimeOffsetInSeconds(int offset);

    // A schedule with the people that each arrival brings. A population that an operation does not name is no longer by
    // schedule.

    /// @param populations persons who alight, one number for each arrival, 0 or more
    void SetArrivalByScheduleWithAlightingPopulations(std::vector<int> const& offsets,
                                                      std::vector<int> const& populations);
    /// @param arrivals offset and persons; whole numbers
    void SetArrivalByScheduleWithAlightingPopulations(std::vector<DurationValuePair> const& arrivals);
    /// @param populations persons who stay in the vehicle, one number for each arrival, 0 or more
    void SetArrivalByScheduleWithThroughPopulations(std::vector<int> const& offsets,
                                                    std::vector<int> const& populations);
    /// @param arrivals offset and persons; whole numbers
    void SetArrivalByScheduleWithThroughPopulations(std::vector<DurationValuePair> const& arrivals);
    void SetArrivalByScheduleWithAlightingAndThroughPopulations(std::vector<int> const& offsets,
                                                                std::vector<int> const& alightingPopulations,
                                                                std::vector<int> const& throughPopulations);
    /// None when the alighting population is not by schedule.
    std::vector<int> GetArrivalByScheduleAlightingPopulations();
    /// None when the through population is not by schedule.
    std::vector<int> GetArrivalByScheduleThroughPopulations();
    std::vector<DurationValuePair> GetArrivalByScheduleTimeAndAlightingPopulationPairs();
    std::vector<DurationValuePair> GetArrivalByScheduleTimeAndThroughPopulationPairs();

    // A table of intervals, the first from the start time on, with the people that each arrival within them brings;
    // later arrivals bring as many as those of the last interval. A population that an operation does not name is no
    // longer by table.

    /// @param intervals their durations, at least 1 s each
    /// @param populations persons who alight, one number for each interval, 0 or more
    void SetLookupTableAlightingPopulations(std::vector<int> const& intervals, std::vector<int> const& populations);
    /// @param intervals duration and persons; whole numbers
    void SetLookupTableAlightingPopulations(std::vector<DurationValuePair> const& intervals);
    /// @param populations persons who stay in the vehicle, one number for each interval, 0 or more
    void SetLookupTableThroughPopulations(std::vector<int> const& intervals, std::vector<int> const& populations);
    /// @param intervals duration and persons; whole numbers
    void SetLookupTableThroughPopulations(std::vector<DurationValuePair> const& intervals);
    void SetLookupTableAlightingAndThroughPopulations(std::vector<int> const& intervals,
                                                      std::vector<int> const& alightingPopulations,
                                                      std::vector<int> const& throughPopulations);
    /// None when no population is by table.
    std::vector<int> GetLookupTableIntervalDurationsInSeconds();
    /// None when the alighting population is not by table.
    std::vector<int> GetLookupTableAlightingPopulations();
    /// None when the through population is not by table.
    std::vector<int> GetLookupTableThroughPopulations();
    std::vector<DurationValuePair> GetLookupTableDurationAndAlightingPopulationPairs();
    std::vector<DurationValuePair> GetLookupTableDurationAndThroughPopulationPairs();

    // Boarding. None unless set; the doors are open to all people who board.

    bool HasBoardingPopulation();
    void ClearBoardingPopulation();
    /// @throws Exception when there is none
    std::shared_ptr<PopulationSource> GetBoardingPopulationSource();
    /// @param source the people who come for each arrival of the vehicle
    void SetBoardingPopulationSource(std::shared_ptr<PopulationSource> const& source);
    bool IsBoardingAccessOpenToAll();
    bool IsBoardingAccessOpenToBoarders();
    bool IsBoardingAccessOpenIfTestTrue();
    void SetBoardingAccessOpenToAll();
    void SetBoardingAccessOpenToBoarders();
    void SetBoardingAccessOpenIfTestTrue(std::shared_ptr<AgentTest> const& test);
    /// @throws Exception when the access is not by a test
    std::shared_ptr<AgentTest> GetBoardingAccessAgentTest();

    // Alighting. None unless set; the doors are open to all people who alight.

    bool HasAlightingPopulation();
    /// Nobody alights then; origins and destinations stay set.
    void ClearAlightingPopulation();
    bool IsAlightingPopulationBySchedule();
    bool IsAlightingPopulationByLookupTable();
    bool IsAlightingPopulationByRandomDistribution();
    /// @param count persons of each arrival, 0 or more
    void SetAlightingPopulationByRandomDistribution(std::shared_ptr<Distribution> const& count);
    /// @throws Exception when the population is not by a distribution
    std::shared_ptr<Distribution> GetAlightingPopulationRandomDistribution();

    /// Where in the vehicle people come from: places of the model such as its car floors.
    std::vector<GlobalId> GetAlightingOrigins();
    /// Replaces the origins; they have no weights then.
    void SetAlightingOrigins(std::vector<GlobalId> const& origins);
    void SetAlightingOriginsWeighted(std::vector<GlobalId> const& origins, std::vector<double> const& weights);
    void SetAlightingOriginsWeighted(std::vector<IdValuePair> const& originsAndWeights);
    bool HasAlightingOriginWeights();
    std::vector<double> GetAlightingOriginWeights();
    std::vector<IdValuePair> GetAlightingOriginWeightPairs();

    /// Replaces the destinations; each person draws one.
    void SetAlightingDestinationsByChance(std::vector<GlobalId> const& destinations);
    /// Replaces the destinations; each person takes the one that is the easiest to reach.
    void SetAlightingDestinationsByLowestCost(std::vector<GlobalId> const& destinations);
    /// Replaces the destinations; each person draws one in proportion to the weights.
    void SetAlightingDestinationsWeightedByChance(std::vector<GlobalId> const& destinations,
                                                  std::vector<double> const& weights);
    void SetAlightingDestinationsWeightedByChance(std::vector<IdValuePair> const& destinationsAndWeights);
    std::vector<GlobalId> GetAlightingDestinations();
    DestinationAssignment GetAlightingDestinationAssignment();
    bool HasAlightingDestinationWeights();
    std::vector<double> GetAlightingDestinationWeights();
    std::vector<IdValuePair> GetAlightingDestinationWeightPairs();

    bool IsAlightingAccessOpenToAll();
    bool IsAlightingAccessOpenToAlighters();
    bool IsAlightingAccessOpenIfTestTrue();
    void SetAlightingAccessOpenToAll();
    void SetAlightingAccessOpenToAlighters();
    void SetAlightingAccessOpenIfTestTrue(std::shared_ptr<AgentTest> const& test);
    /// @throws Exception when the access is not by a test
    std::shared_ptr<AgentTest> GetAlightingAccessAgentTest();

    // Through. None unless set.

    bool HasThroughPopulation();
    /// Nobody stays in the vehicle then; origins stay set.
    void ClearThroughPopulation();
    bool IsThroughPopulationBySchedule();
    bool IsThroughPopulationByLookupTable();
    bool IsThroughPopulationByRandomDistribution();
    bool IsThroughPopulationByFullCapacity();
    bool IsThroughPopulationByPercentageCapacity();
    /// As many as the car floors' capacity leaves room for.
    void SetThroughPopulationByFullCapacity();
    /// @param count persons of each arrival, 0 or more
    void SetThroughPopulationByRandomDistribution(std::shared_ptr<Distribution> const& count);
    /// @param percentage of the car floors' capacity, 0 to 100
    void SetThroughPopulationByPercentageCapacity(std::shared_ptr<Distribution> const& percentage);
    /// @throws Exception when the population is not by a distribution
    std::shared_ptr<Distribution> GetThroughPopulationRandomDistribution();
    /// @throws Exception when the population is not by a percentage
    std::shared_ptr<Distribution> GetThroughPopulationPercentageCapacityDistribution();
    /// Whether people who stay in the vehicle are simulated rather than only counted; not unless set.
    bool IsThroughPopulationCreatedInScene();
    void SetThroughPopulationCreatedInScene(bool created);

    /// Where in the vehicle they stand.
    std::vector<GlobalId> GetThroughOrigins();
    /// Replaces the origins; they have no weights then.
    void SetThroughOrigins(std::vector<GlobalId> const& origins);
    void SetThroughOriginsWeighted(std::vector<GlobalId> const& origins, std::vector<double> const& weights);
    void SetThroughOriginsWeighted(std::vector<IdValuePair> const& originsAndWeights);
    bool HasThroughOriginWeights();
    std::vector<double> GetThroughOriginWeights();
    std::vector<IdValuePair> GetThroughOriginWeightPairs();

    // Cars.

    /// The doors, which are open while the vehicle stands: links or other connections.
    std::vector<GlobalId> GetCarDoors();
    void SetCarDoors(std::vector<GlobalId> const& doors);
    std::vector<GlobalId> GetCarFloors();
    void SetCarFloors(std::vector<GlobalId> const& floors);
    bool HasCarFloorCapacityLimit();
    /// The most persons on each car floor.
    /// @throws Exception when there is none
    int GetCarFloorCapacityLimit();
    /// @param limit at least 1 person
    void SetCarFloorCapacityLimit(int limit);
    void ClearCarFloorCapacityLimit();

    // Each population has a profile, an initial action and a colour scheme; see `SinglePopulationEvent`.

    /// Invalid when none is set and a profile of default values is used.
    GlobalId GetProfile(VehiclePopulationType population);
    /// An invalid identifier takes the profile away.
    void SetProfile(VehiclePopulationType population, GlobalId const& profile);
    bool HasInitialAction(VehiclePopulationType population);
    /// Empty when there is none.
    std::shared_ptr<AgentAction> GetInitialActionCopy(VehiclePopulationType population);
    /// An empty action takes it away.
    void SetInitialAction(VehiclePopulationType population, std::shared_ptr<AgentAction> const& action);

    /// EVENT_COLOR, the vehicle's own, unless set.
    EventColorSchemeType GetColorSchemeType(VehiclePopulationType population);
    void SetColorSchemeEventColor(VehiclePopulationType population);
    void SetColorSchemeLighter(VehiclePopulationType population);
    void SetColorSchemeDarker(VehiclePopulationType population);
    void SetColorSchemeSpecified(VehiclePopulationType population, Color color);
    /// The colour that the scheme gives to the people; with rules, the colour of people who pass none of the tests.
    Color GetColorSchemeColor(VehiclePopulationType population);
    /// Gives each person the colour of the first test that it passes. The rules last until another scheme is set.
    /// @param colors one for each test
    /// @param fallback of people who pass none of the tests
    void SetColorSchemeRules(VehiclePopulationType population, std::vector<std::shared_ptr<AgentTest>> const& tests,
                             std::vector<Color> const& colors, Color fallback);
    /// 0 for the other schemes.
    int GetColorSchemeRuleCount(VehiclePopulationType population);
    /// The test of a rule with a number from 0 on.
    std::shared_ptr<AgentTest> GetColorSchemeRuleAgentTest(VehiclePopulationType population, int index);
    Color GetColorSchemeRuleColor(VehiclePopulationType population, int index);
};

}  // namespace pedflux
