#include "bindings/table.h"

#include <pedflux/agent_actions.h>
#include <pedflux/agent_filters.h>
#include <pedflux/agent_tests.h>
#include <pedflux/color.h>
#include <pedflux/distributions.h>
#include <pedflux/geometry.h>
#include <pedflux/identifiers.h>
#include <pedflux/population_sources.h>
#include <pedflux/vectors.h>
#include <pedflux/vehicles.h>

namespace pedflux::jni {

CLASS(Vehicle, SimObject)
FLAG(Vehicle, ArrivalByHeadway)
FLAG(Vehicle, ArrivalBySchedule)
SET(Vehicle, ArrivalByHeadwayWithFixedCount)
GET(Vehicle, ArrivalByHeadwayDistribution)
HAS(Vehicle, ArrivalByHeadwayFixedCount)
GET(Vehicle, ArrivalByHeadwayFixedCount)
GET(Vehicle, ArrivalByScheduleTimeOffsetsInSeconds)
PROPERTY(Vehicle, StartTimeReference)
PROPERTY(Vehicle, DwellDurationDistribution)
PROPERTY(Vehicle, BoardingTimeOffsetInSeconds)
OVERLOAD(Vehicle, setArrivalByScheduleWithAlightingPopulations, 0, SetArrivalByScheduleWithAlightingPopulations,
         std::vector<int> const&, std::vector<int> const&)
OVERLOAD(Vehicle, setArrivalByScheduleWithAlightingPopulations, 1, SetArrivalByScheduleWithAlightingPopulations,
         std::vector<DurationValuePair> const&)
OVERLOAD(Vehicle, setArrivalByScheduleWithThroughPopulations, 0, SetArrivalByScheduleWithThroughPopulations,
         std::vector<int> const&, std::vector<int> const&)
OVERLOAD(Vehicle, setArrivalByScheduleWithThroughPopulations, 1, SetArrivalByScheduleWithThroughPopulations,
         std::vector<DurationValuePair> const&)
SET(Vehicle, ArrivalByScheduleWithAlightingAndThroughPopulations)
GET(Vehicle, ArrivalByScheduleAlightingPopulations)
GET(Vehicle, ArrivalByScheduleThroughPopulations)
GET(Vehicle, ArrivalByScheduleTimeAndAlightingPopulationPairs)
GET(Vehicle, ArrivalByScheduleTimeAndThroughPopulationPairs)
OVERLOAD(Vehicle, setLookupTableAlightingPopulations, 0, SetLookupTableAlightingPopulations, std::vector<int> const&,
         std::vector<int> const&)
OVERLOAD(Vehicle, setLookupTableAlightingPopulations, 1, SetLookupTableAlightingPopulations,
         std::vector<DurationValuePair> const&)
OVERLOAD(Vehicle, setLookupTableThroughPopulations, 0, SetLookupTableThroughPopulations, std::vector<int> const&,
         std::vector<int> const&)
OVERLOAD(Vehicle, setLookupTableThroughPopulations, 1, SetLookupTableThroughPopulations,
         std::vector<DurationValuePair> const&)
SET(Vehicle, LookupTableAlightingAndThroughPopulations)
GET(Vehicle, LookupTableIntervalDurationsInSeconds)
GET(Vehicle, LookupTableAlightingPopulations)
GET(Vehicle, LookupTableThroughPopulations)
GET(Vehicle, LookupTableDurationAndAlightingPopulationPairs)
GET(Vehicle, LookupTableDurationAndThroughPopulationPairs)
HAS(Vehicle, BoardingPopulation)
CLEAR(Vehicle, BoardingPopulation)
PROPERTY(Vehicle, BoardingPopulationSource)
FLAG(Vehicle, BoardingAccessOpenToAll)
FLAG(Vehicle, BoardingAccessOpenToBoarders)
FLAG(Vehicle, BoardingAccessOpenIfTestTrue)
GET(Vehicle, BoardingAccessAgentTest)
HAS(Vehicle, AlightingPopulation)
CLEAR(Vehicle, AlightingPopulation)
IS(Vehicle, AlightingPopulationBySchedule)
IS(Vehicle, AlightingPopulationByLookupTable)
FLAG(Vehicle, AlightingPopulationByRandomDistribution)
GET(Vehicle, AlightingPopulationRandomDistribution)
PROPERTY(Vehicle, AlightingOrigins)
OVERLOAD(Vehicle, setAlightingOriginsWeighted, 0, SetAlightingOriginsWeighted, std::vector<GlobalId> const&,
         std::vector<double> const&)
OVERLOAD(Vehicle, setAlightingOriginsWeighted, 1, SetAlightingOriginsWeighted, std::vector<IdValuePair> const&)
HAS(Vehicle, AlightingOriginWeights)
GET(Vehicle, AlightingOriginWeights)
GET(Vehicle, AlightingOriginWeightPairs)
SET(Vehicle, AlightingDestinationsByChance)
SET(Vehicle, AlightingDestinationsByLowestCost)
OVERLOAD(Vehicle, setAlightingDestinationsWeightedByChance, 0, SetAlightingDestinationsWeightedByChance,
         std::vector<GlobalId> const&, std::vector<double> const&)
OVERLOAD(Vehicle, setAlightingDestinationsWeightedByChance, 1, SetAlightingDestinationsWeightedByChance,
         std::vector<IdValuePair> const&)
GET(Vehicle, AlightingDestinations)
GET(Vehicle, AlightingDestinationAssignment)
HAS(Vehicle, AlightingDestinationWeights)
GET(Vehicle, AlightingDestinationWeights)
GET(Vehicle, AlightingDestinationWeightPairs)
FLAG(Vehicle, AlightingAccessOpenToAll)
FLAG(Vehicle, AlightingAccessOpenToAlighters)
FLAG(Vehicle, AlightingAccessOpenIfTestTrue)
GET(Vehicle, AlightingAccessAgentTest)
HAS(Vehicle, ThroughPopulation)
CLEAR(Vehicle, ThroughPopulation)
IS(Vehicle, ThroughPopulationBySchedule)
IS(Vehicle, ThroughPopulationByLookupTable)
FLAG(Vehicle, ThroughPopulationByRandomDistribution)
FLAG(Vehicle, ThroughPopulationByFullCapacity)
FLAG(Vehicle, ThroughPopulationByPercentageCapacity)
GET(Vehicle, ThroughPopulationRandomDistribution)
GET(Vehicle, ThroughPopulationPercentageCapacityDistribution)
FLAG(Vehicle, ThroughPopulationCreatedInScene)
PROPERTY(Vehicle, ThroughOrigins)
OVERLOAD(Vehicle, setThroughOriginsWeighted, 0, SetThroughOriginsWeighted, std::vector<GlobalId> const&,
         std::vector<double> const&)
OVERLOAD(Vehicle, setThroughOriginsWeighted, 1, SetThroughOriginsWeighted, std::vector<IdValuePair> const&)
HAS(Vehicle, ThroughOriginWeights)
GET(Vehicle, ThroughOriginWeights)
GET(Vehicle, ThroughOriginWeightPairs)
PROPERTY(Vehicle, CarDoors)
PROPERTY(Vehicle, CarFloors)
OPTIONAL(Vehicle, CarFloorCapacityLimit)
PROPERTY(Vehicle, Profile)
HAS(Vehicle, InitialAction)
GET(Vehicle, InitialActionCopy)
SET(Vehicle, InitialAction)
GET(Vehicle, ColorSchemeType)
SET(Vehicle, ColorSchemeEventColor)
SET(Vehicle, ColorSchemeLighter)
SET(Vehicle, ColorSchemeDarker)
SET(Vehicle, ColorSchemeSpecified)
GET(Vehicle, ColorSchemeColor)
SET(Vehicle, ColorSchemeRules)
GET(Vehicle, ColorSchemeRuleCount)
GET(Vehicle, ColorSchemeRuleAgentTest)
GET(Vehicle, ColorSchemeRuleColor)
GET(Vehicle, TypeId)

}  // namespace pedflux::jni
