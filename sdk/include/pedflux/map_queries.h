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
    /// of the query changes. Throws Exception when the run is not set or has no results, or when a display object does
    /// not belong to it.
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
    /// Empty unless set: blue for nobody to red for the greatest number of the map.
    std::shared_ptr<ColorFunction> GetColorFunction();
    void SetColorFunction(std::shared_ptr<ColorFunction> const& colorFunction);
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

/// The mean density over the time in which somebody was near, that is, within 2 m along both axes.
class PEDFLUX_API NonZeroAverageDensityMapQuery : public DensityMapQuery {
  public:
    using DensityMapQuery::DensityMapQuery;

    int GetMapQueryTypeId() override;
    TimeRange GetTimeRange() const;
    void SetTimeRange(TimeRange range);
};

/// The mean density that people met there: each frame counts as much as there were people, so it is the mean square of
/// the density over its mean.
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

}  // namespace pedflux
