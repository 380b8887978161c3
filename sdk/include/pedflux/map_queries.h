#pragma once

#include <pedflux/api.h>
#include <pedflux/color_functions.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>
#include <pedflux/time_range.h>

#include <memory>
#include <vector>

/// Questions to a stored run whose answers are maps. Made by a project.
namespace pedflux {

class AgentFilter;
class Map;

/// What `MapQuery::GetMapQueryTypeId` returns.
enum class MapQueryType : int {
    AGENT_COUNT = 1,
    AGENT_PATH = 2,
    AGENT_TIME_TO_EXIT = 3,
    AVERAGE_DENSITY = 4,
    DYNAMIC_PATH = 5,
    EXPERIENCED_DENSITY = 6,
    INSTANTANEOUS_DENSITY = 7,
    INSTANTANEOUS_PROXIMITY = 8,
    MAX_DENSITY = 9,
    MAXIMUM_PROXIMITY = 10,
    NON_ZERO_AVERAGE_DENSITY = 11,
    STATIC_COST = 12,
    STATIC_DISTANCE = 13,
    TIME_ABOVE_DENSITY = 14,
    TIME_IN_PROXIMITY = 15,
    TIME_OCCUPIED = 16,
    TIME_UNTIL_CLEAR = 17,
    VISION_COUNT = 18,
    VISION_TIME = 19,
    VISION_TIME_ABOVE_COUNT = 20,
};

/// Which scale of levels of service colours a density map.
enum class LevelOfServiceColorFunctionTypeId : int {
    FRUIN_BY_OBJECT = 0,  ///< stairways on stairs, walkways elsewhere
    FRUIN_WALKWAY = 1,
    FRUIN_STAIRWAY = 2,
    FRUIN_PLATFORM = 3,
    IATA_WAIT_CIRCULATE = 4,
};

/// A question that one map for each display object answers.
///
/// Pixels are 0.25 m wide, or a doubling of that where a map would have more than a quarter of a million of them. Maps
/// hold values, and colours by the query's colour function.
class PEDFLUX_API MapQuery : public SimObject {
  public:
    using SimObject::SimObject;

    /// A `MapQueryType`.
    virtual int GetMapQueryTypeId() = 0;

    /// The maps, in the order of the display objects. They are found once and kept until ClearMaps or until something
    /// of the query changes. Throws Exception when the run is not set or has no results, when a display object does
    /// not belong to it, when the agent filter asks for what a stored run does not tell, and for a kind of query that
    /// this version does not evaluate yet.
    std::vector<std::shared_ptr<Map>> Evaluate();
    void ClearMaps();

    GlobalId GetSimulationRunId();
    /// @param run a simulation run of the project
    void SetSimulationRunId(GlobalId const& run);
    std::vector<GlobalId> GetMapDisplayObjects();
    /// Floors and other walkable objects, each of them once.
    void SetMapDisplayObjects(std::vector<GlobalId> const& objects);
};

/// How many different persons were on each pixel.
class PEDFLUX_API AgentCountMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    int GetMapQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Empty unless set: blue for the least value of the map to red for the greatest. An empty one takes it away.
    std::shared_ptr<ColorFunction> GetColorFunction();
    void SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
    /// All of the run unless set.
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
};

/// A map of density in persons per square metre: at each pixel the weighted number of persons around it over the
/// equally weighted area where people can walk, both on the same object. The weight of a person or of a piece of area
/// at the distance r is exp(-r^2/R^2) with R = 1 m, up to 2 m along each axis (Helbing, Johansson and Al-Abideen, "The
/// dynamics of crowd disasters: An empirical study", Physical Review E 75, 046109, 2007). Dividing by the walkable area
/// keeps walls from thinning the crowd beside them; what stands behind a wall less than 2 m away still counts.
class PEDFLUX_API DensityMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    bool UsesCustomColorFunction();
    /// Empty when the query uses a scale of levels of service.
    std::shared_ptr<ColorFunction> GetCustomColorFunction();
    /// An empty one brings the scale of levels of service back.
    void SetCustomColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
    /// FRUIN_BY_OBJECT unless set.
    LevelOfServiceColorFunctionTypeId GetLevelOfServiceColorFunctionTypeId();
    /// STEPS unless set.
    ColorTransition GetLevelOfServiceColorTransition();
    /// Uses a scale of levels of service instead of a custom colour function.
    void SetLevelOfServiceColorFunction(LevelOfServiceColorFunctionTypeId type, ColorTransition transition);
    /// The colour function that the map of a walkable object of the project gets.
    std::shared_ptr<ColorFunction> GenerateColorFunctionForWalkableObject(GlobalId const object);
};

// What the maps of the kinds that follow show at each pixel, over the frames of a time range (all of them unless set).

/// The mean density over time.
class PEDFLUX_API AverageDensityMapQuery : public DensityMapQuery {
  public:
    using DensityMapQuery::DensityMapQuery;

    int GetMapQueryTypeId() override;
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
};

/// The greatest density.
class PEDFLUX_API MaxDensityMapQuery : public DensityMapQuery {
  public:
    using DensityMapQuery::DensityMapQuery;

    int GetMapQueryTypeId() override;
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
};

/// The mean density over the time in which a person was near, that is, within 2 m along both axes.
class PEDFLUX_API NonZeroAverageDensityMapQuery : public DensityMapQuery {
  public:
    using DensityMapQuery::DensityMapQuery;

    int GetMapQueryTypeId() override;
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
};

/// The mean density that people experienced there: each frame is weighted by the number of people, so it is the mean
/// square of the density over its mean.
class PEDFLUX_API ExperiencedDensityMapQuery : public DensityMapQuery {
  public:
    using DensityMapQuery::DensityMapQuery;

    int GetMapQueryTypeId() override;
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
};

/// The density in the last frame of the run.
class PEDFLUX_API InstantaneousDensityMapQuery : public DensityMapQuery {
  public:
    using DensityMapQuery::DensityMapQuery;

    int GetMapQueryTypeId() override;
};

// A person is on the pixel that holds the centre of its body. Each frame stands for one frame length: seconds count
// frames. With an agent filter, only the persons that it selects count, each at the times at which it does.

/// How many seconds persons on the pixel still needed until they left the simulation at their destination: the mean
/// over all frames and persons on it. A person that never arrived does not count; a pixel without a person that arrived
/// has no value.
class PEDFLUX_API AgentTimeToExitMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    int GetMapQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Empty unless set: blue for the least value of the map to red for the greatest. An empty one takes it away.
    std::shared_ptr<ColorFunction> GetColorFunction();
    void SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
    /// All of the run unless set.
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
};

/// How many seconds the pixel was occupied.
class PEDFLUX_API TimeOccupiedMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    int GetMapQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Empty unless set: blue for the least value of the map to red for the greatest. An empty one takes it away.
    std::shared_ptr<ColorFunction> GetColorFunction();
    void SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
    /// All of the run unless set.
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
};

/// How many seconds after the start of the time range, or of the run if that is later, the pixel was occupied for the
/// last time; 0 where it never was.
class PEDFLUX_API TimeUntilClearMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    int GetMapQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Empty unless set: blue for the least value of the map to red for the greatest. An empty one takes it away.
    std::shared_ptr<ColorFunction> GetColorFunction();
    void SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
    /// All of the run unless set.
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
};

/// How many seconds the density was above a threshold. `DensityMapQuery` tells what the density at a pixel is.
class PEDFLUX_API TimeAboveDensityMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    int GetMapQueryTypeId() override;
    /// Empty unless set: blue for the least value of the map to red for the greatest. An empty one takes it away.
    std::shared_ptr<ColorFunction> GetColorFunction();
    void SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
    /// All of the run unless set.
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
    /// Persons per square metre; 1.08, about where level of service E begins on walkways (Fruin 1971), unless set.
    double GetDensityThreshold();
    /// @param threshold at least 0
    void SetDensityThreshold(double threshold);
};

/// The ways that persons walked: each pixel that a way crosses, from frame to frame in a straight line, in the colour
/// of the person who was there last. The maps hold colours, not values; all other pixels are transparent.
class PEDFLUX_API AgentPathMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    int GetMapQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// All of the run unless set.
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
};

// Two persons are close to each other when they are on the same object, no further apart than a distance, and a
// straight line between them stays where people can walk, unless barriers are ignored. The filter selects the persons
// that are looked at; everybody counts as the other one.

/// To how many others the persons on the pixel were close in the last frame of the run; of several persons on a pixel
/// the greatest number. A pixel without a person has no value.
class PEDFLUX_API InstantaneousProximityMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    int GetMapQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Empty unless set: blue for the least value of the map to red for the greatest. An empty one takes it away.
    std::shared_ptr<ColorFunction> GetColorFunction();
    void SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
    /// Metres between the centres of two persons at which they count as close to each other; 2 unless set.
    double GetDistance();
    /// @param distance greater than 0
    void SetDistance(double distance);
    /// Whether two persons count as close through what neither can walk through; they do not unless set.
    bool IsIgnoreBarriers();
    void SetIgnoreBarriers(bool ignore);
};

/// How many seconds persons on the pixel were close to at least one other, added up over the persons.
class PEDFLUX_API TimeInProximityMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    int GetMapQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Empty unless set: blue for the least value of the map to red for the greatest. An empty one takes it away.
    std::shared_ptr<ColorFunction> GetColorFunction();
    void SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
    /// All of the run unless set.
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
    /// Metres between the centres of two persons at which they count as close to each other; 2 unless set.
    double GetDistance();
    /// @param distance greater than 0
    void SetDistance(double distance);
    /// Whether two persons count as close through what neither can walk through; they do not unless set.
    bool IsIgnoreBarriers();
    void SetIgnoreBarriers(bool ignore);
};

/// The greatest number of others to whom a person on the pixel was close at one of the times that are sampled. A pixel
/// that was not occupied then has no value.
class PEDFLUX_API MaximumProximityMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    int GetMapQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Empty unless set: blue for the least value of the map to red for the greatest. An empty one takes it away.
    std::shared_ptr<ColorFunction> GetColorFunction();
    void SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
    /// All of the run unless set.
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
    /// Metres between the centres of two persons at which they count as close to each other; 2 unless set.
    double GetDistance();
    /// @param distance greater than 0
    void SetDistance(double distance);
    /// Whether two persons count as close through what neither can walk through; they do not unless set.
    bool IsIgnoreBarriers();
    void SetIgnoreBarriers(bool ignore);
    /// Seconds from one sample to the next, the first of them at the start of the time range; 1 unless set.
    unsigned int GetSamplePeriod();
    /// @param seconds at least 1
    void SetSamplePeriod(unsigned int seconds);
};

// The kinds of query that follow are set, stored and opened like the others; this version does not evaluate them yet.

/// The ways that persons would choose at the end of the run. Not evaluated yet.
class PEDFLUX_API DynamicPathMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    int GetMapQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
};

/// How many different persons saw the pixel. Not evaluated yet.
class PEDFLUX_API VisionCountMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    int GetMapQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Empty unless set: blue for the least value of the map to red for the greatest. An empty one takes it away.
    std::shared_ptr<ColorFunction> GetColorFunction();
    void SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
    /// All of the run unless set.
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
};

/// How many seconds the pixel was seen, added up over the persons. Not evaluated yet.
class PEDFLUX_API VisionTimeMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    int GetMapQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Empty unless set: blue for the least value of the map to red for the greatest. An empty one takes it away.
    std::shared_ptr<ColorFunction> GetColorFunction();
    void SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
    /// All of the run unless set.
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
};

/// How many seconds more than one person saw the pixel. Not evaluated yet.
class PEDFLUX_API VisionTimeAboveCountMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;

    int GetMapQueryTypeId() override;
    /// Empty unless set: everybody. An empty one takes the filter away.
    std::shared_ptr<AgentFilter> GetAgentFilter();
    void SetAgentFilter(std::shared_ptr<AgentFilter> const& filter);
    /// Empty unless set: blue for the least value of the map to red for the greatest. An empty one takes it away.
    std::shared_ptr<ColorFunction> GetColorFunction();
    void SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
    /// All of the run unless set.
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
};

/// A map of the building itself, independent of the people in it: the effort of reaching an object. The object is given
/// when the query is made and stays.
class PEDFLUX_API StaticMapQuery : public MapQuery {
  public:
    using MapQuery::MapQuery;
    /// An empty one brings the colours from blue to red back that the maps have unless set.
    void SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
};

/// The cost of the way to the object. Not evaluated yet.
class PEDFLUX_API StaticCostMapQuery : public StaticMapQuery {
  public:
    using StaticMapQuery::StaticMapQuery;

    int GetMapQueryTypeId() override;
};

/// The length of the shortest way to the object, in metres. Not evaluated yet.
class PEDFLUX_API StaticDistanceMapQuery : public StaticMapQuery {
  public:
    using StaticMapQuery::StaticMapQuery;

    int GetMapQueryTypeId() override;
};

}  // namespace pedflux
