#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/value_pairs.h>

#include <memory>
#include <vector>

/// Origins, destinations, counts and arrival times of the people that events bring.
///
/// Counts are real numbers, so that shares and multiples need not be rounded; the simulation rounds the total once and
/// distributes the remainders so that it is met exactly. Numbers are finite and not negative. A list of identifiers
/// holds each of them once; of weights at least one is above 0. What is refused throws Exception and changes nothing.
namespace pedflux {

class Distribution;

namespace engine {
struct PopulationAccess;
}

/// What `PopulationSource::GetPopulationSourceTypeId` returns.
enum class PopulationSourceTypeId : int {
    COUNT = 0,                  ///< `CountPopulationSource`
    COUNT_PER_ORIGIN = 1,       ///< `CountPerOriginPopulationSource`
    COUNT_PER_DESTINATION = 2,  ///< `CountPerDestinationPopulationSource`
    ORIGIN_TABLE = 3,           ///< `OriginTablePopulationSource`
    DESTINATION_TABLE = 4,      ///< `DestinationTablePopulationSource`
    SCHEDULE = 5,               ///< `SchedulePopulationSource`
    OD_MATRIX = 6,              ///< `ODMatrixPopulationSource`
};

/// How a person's destination is chosen.
enum class DestinationAssignment : int {
    BY_CHANCE = 0,           ///< drawn, all with equal chances
    BY_LOWEST_COST = 1,      ///< the one that is the easiest to reach when the person starts
    WEIGHTED_BY_CHANCE = 2,  ///< drawn with chances in proportion to the weights
    BY_COUNT = 3,            ///< the source itself tells how many go to each destination
    IN_SEQUENCE = 4,         ///< all of them one after the other; no choice for a source
};

/// The kinds of arrival.
enum class PopulationArrivalTypeId : int {
    INSTANT = 0,
    EVENLY_SPACED = 1,
    RANDOM_DISTRIBUTION = 2,
    WEIGHTED_CURVE = 3,
};

/// When the persons of a source arrive, counted from the start of their event. An arrival never changes.
class PEDFLUX_API PopulationArrival {
  public:
    ~PopulationArrival();
    PopulationArrival(PopulationArrival const&) = delete;
    PopulationArrival& operator=(PopulationArrival const&) = delete;

    /// All at the start.
    static std::shared_ptr<PopulationArrival> CreateInstant();
    /// One after the other at equal intervals, the first at the start and the last one interval before the end.
    /// @param seconds the length of the whole, at least 1
    static std::shared_ptr<PopulationArrival> CreateEvenlySpaced(int seconds);
    /// Each at a time of its own.
    /// @param delay from the start, in seconds; a valid distribution without negative values. It is copied.
    static std::shared_ptr<PopulationArrival> CreateRandomDistribution(std::shared_ptr<Distribution> const& delay);
    /// In consecutive periods, the first from the start on. Each gets a share of the persons in proportion to its
    /// value; within a period they come at equal intervals.
    /// @param periods at least one with a value above 0
    static std::shared_ptr<PopulationArrival> CreateWeightedCurve(std::vector<DurationValuePair> const& periods);

    PopulationArrivalTypeId GetPopulationArrivalTypeId();
    /// The time from the start to the last possible arrival, rounded up to whole seconds: 0 for an instant arrival, the
    /// greatest value of a distribution, the sum of a curve's periods.
    int GetPopulationArrivalDurationInSeconds() const;
    /// A copy of the distribution; empty for the other kinds.
    std::shared_ptr<Distribution> GetDistribution();
    /// The periods of a weighted curve; none for the other kinds.
    std::vector<DurationValuePair> GetWeightedCurvePairs();

  private:
    struct State;
    explicit PopulationArrival(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;

    friend engine::PopulationAccess;
};

/// One cell of a matrix: so many persons go from the origin to the destination.
class PEDFLUX_API ODMatrixEntry {
  public:
    /// @param population persons, finite and not negative
    ODMatrixEntry(GlobalId const& origin, GlobalId const& destination, double population);
    ODMatrixEntry(ODMatrixEntry const& other);
    ODMatrixEntry& operator=(ODMatrixEntry const& other);
    ~ODMatrixEntry();

    GlobalId GetOrigin();
    void SetOrigin(GlobalId const& origin);
    GlobalId GetDestination();
    void SetDestination(GlobalId const& destination);
    double GetPopulation();
    void SetPopulation(double population);

  private:
    GlobalId origin_;
    GlobalId destination_;
    double population_;
};

/// Where the persons of an event come from and go to, how many they are and when they arrive. Origins and destinations
/// are portals, floors, connections or zones: at a portal people enter and leave one by one, an area is filled with
/// people at their arrival and reached at its edge.
///
/// A new source has no origins, no destinations, no persons and an instant arrival; where people choose, the
/// destination is drawn by chance. Constructors take the same defaults for what they are not given. Copies are deep.
class PEDFLUX_API PopulationSource {
  public:
    virtual ~PopulationSource();
    PopulationSource& operator=(PopulationSource const&) = delete;

    /// The kind of source, a `PopulationSourceTypeId`.
    virtual int GetPopulationSourceTypeId();
    virtual std::vector<GlobalId> GetOrigins();
    virtual bool HasOriginWeights();
    /// One weight for each origin; none when the origins are not weighted.
    virtual std::vector<double> GetOriginWeights();
    /// The origins with their weights; none when they are not weighted.
    virtual std::vector<IdValuePair> GetOriginWeightPairs();
    virtual std::vector<GlobalId> GetDestinations();
    virtual bool HasDestinationWeights();
    /// One weight for each destination; none when the destinations are not weighted.
    virtual std::vector<double> GetDestinationWeights();
    /// The destinations with their weights; none when they are not weighted.
    virtual std::vector<IdValuePair> GetDestinationWeightPairs();
    virtual DestinationAssignment GetDestinationAssignment();
    /// All persons of the source: counts times origins or destinations, the sum of a table, schedule or matrix.
    virtual double GetTotalPopulationCount();
    /// The kind of arrival; that of a schedule is `WEIGHTED_CURVE`.
    virtual PopulationArrivalTypeId GetPopulationArrivalTypeId();
    /// See `PopulationArrival::GetPopulationArrivalDurationInSeconds`; of a schedule the sum of its periods.
    virtual int GetPopulationArrivalDurationInSeconds();
    /// A deep copy of the same class.
    virtual std::shared_ptr<PopulationSource> Clone();

  protected:
    struct State;
    explicit PopulationSource(PopulationSourceTypeId type);
    PopulationSource(PopulationSource const& other);
    std::unique_ptr<State> state_;

  private:
    friend engine::PopulationAccess;
};

/// A total count. The persons are spread over the origins evenly, or in proportion to the origins' weights.
class PEDFLUX_API CountPopulationSource : public PopulationSource {
  public:
    CountPopulationSource();
    CountPopulationSource(std::vector<GlobalId> const& origins, double count);
    CountPopulationSource(std::vector<GlobalId> const& origins, std::vector<GlobalId> const& destinations,
                          double count);
    CountPopulationSource(CountPopulationSource const& other);

    double GetPopulationCount() const;
    void SetPopulationCount(double count);

    /// Replaces the origins; they have no weights then.
    void SetOrigins(std::vector<GlobalId> const& origins);
    void SetOriginsWeighted(std::vector<GlobalId> const& origins, std::vector<double> const& weights);
    void SetOriginsWeighted(std::vector<IdValuePair> const& originsAndWeights);
    /// Replaces the destinations; each person draws one.
    void SetDestinationsByChance(std::vector<GlobalId> const& destinations);
    /// Replaces the destinations; each person takes the one that is the easiest to reach.
    void SetDestinationsByLowestCost(std::vector<GlobalId> const& destinations);
    /// Replaces the destinations; each person draws one in proportion to the weights.
    void SetDestinationsWeightedByChance(std::vector<GlobalId> const& destinations, std::vector<double> const& weights);
    void SetDestinationsWeightedByChance(std::vector<IdValuePair> const& destinationsAndWeights);

    std::shared_ptr<PopulationArrival> GetPopulationArrival();
    void SetPopulationArrival(std::shared_ptr<PopulationArrival> const& arrival);
};

/// The same count at each origin.
class PEDFLUX_API CountPerOriginPopulationSource : public PopulationSource {
  public:
    CountPerOriginPopulationSource();
    CountPerOriginPopulationSource(std::vector<GlobalId> const& origins, double count);
    CountPerOriginPopulationSource(std::vector<GlobalId> const& origins, double count,
                                   std::vector<GlobalId> const& destinations);
    CountPerOriginPopulationSource(CountPerOriginPopulationSource const& other);

    double GetPopulationCountPerOrigin() const;
    void SetPopulationCountPerOrigin(int count);

    void SetOrigins(std::vector<GlobalId> const& origins);
    /// The destinations as for `CountPopulationSource`.
    void SetDestinationsByChance(std::vector<GlobalId> const& destinations);
    void SetDestinationsByLowestCost(std::vector<GlobalId> const& destinations);
    void SetDestinationsWeightedByChance(std::vector<GlobalId> const& destinations, std::vector<double> const& weights);
    void SetDestinationsWeightedByChance(std::vector<IdValuePair> const& destinationsAndWeights);

    std::shared_ptr<PopulationArrival> GetPopulationArrival();
    void SetPopulationArrival(std::shared_ptr<PopulationArrival> const& arrival);
};

/// The same count to each destination. The origins are drawn independently of the destinations, and are met as
/// closely as whole persons allow: evenly, or in proportion to their weights.
class PEDFLUX_API CountPerDestinationPopulationSource : public PopulationSource {
  public:
    CountPerDestinationPopulationSource();
    CountPerDestinationPopulationSource(std::vector<GlobalId> const& origins, std::vector<GlobalId> const& destinations,
                                        double count);
    CountPerDestinationPopulationSource(CountPerDestinationPopulationSource const& other);

    double GetPopulationCountPerDestination() const;
    void SetPopulationCountPerDestination(double count);

    void SetDestinations(std::vector<GlobalId> const& destinations);
    /// Replaces the origins; they have no weights then.
    void SetOrigins(std::vector<GlobalId> const& origins);
    void SetOriginsWeighted(std::vector<GlobalId> const& origins, std::vector<double> const& weights);
    void SetOriginsWeighted(std::vector<IdValuePair> const& originsAndWeights);

    std::shared_ptr<PopulationArrival> GetPopulationArrival();
    void SetPopulationArrival(std::shared_ptr<PopulationArrival> const& arrival);
};

/// A count for each origin.
class PEDFLUX_API OriginTablePopulationSource : public PopulationSource {
  public:
    OriginTablePopulationSource();
    explicit OriginTablePopulationSource(std::vector<IdValuePair> const& originsAndPopulations);
    OriginTablePopulationSource(std::vector<IdValuePair> const& originsAndPopulations,
                                std::vector<GlobalId> const& destinations);
    OriginTablePopulationSource(OriginTablePopulationSource const& other);

    std::vector<IdValuePair> GetOriginsAndPopulations();
    void SetOriginsAndPopulations(std::vector<IdValuePair> const& originsAndPopulations);
    /// @throws Exception when it is none of the origins
    double GetPopulationForOrigin(GlobalId const& origin) const;

    /// The destinations as for `CountPopulationSource`.
    void SetDestinationsByChance(std::vector<GlobalId> const& destinations);
    void SetDestinationsByLowestCost(std::vector<GlobalId> const& destinations);
    void SetDestinationsWeightedByChance(std::vector<GlobalId> const& destinations, std::vector<double> const& weights);
    void SetDestinationsWeightedByChance(std::vector<IdValuePair> const& destinationsAndWeights);

    std::shared_ptr<PopulationArrival> GetPopulationArrival();
    void SetPopulationArrival(std::shared_ptr<PopulationArrival> const& arrival);
};

/// A count for each destination. The origins as for `CountPerDestinationPopulationSource`.
class PEDFLUX_API DestinationTablePopulationSource : public PopulationSource {
  public:
    DestinationTablePopulationSource();
    DestinationTablePopulationSource(std::vector<GlobalId> const& origins,
                                     std::vector<IdValuePair> const& destinationsAndPopulations);
    DestinationTablePopulationSource(DestinationTablePopulationSource const& other);

    std::vector<IdValuePair> GetDestinationsAndPopulations();
    void SetDestinationsAndPopulations(std::vector<IdValuePair> const& destinationsAndPopulations);
    /// @throws Exception when it is none of the destinations
    double GetPopulationForDestination(GlobalId const& destination) const;

    /// Replaces the origins; they have no weights then.
    void SetOrigins(std::vector<GlobalId> const& origins);
    void SetOriginsWeighted(std::vector<GlobalId> const& origins, std::vector<double> const& weights);
    void SetOriginsWeighted(std::vector<IdValuePair> const& originsAndWeights);

    std::shared_ptr<PopulationArrival> GetPopulationArrival();
    void SetPopulationArrival(std::shared_ptr<PopulationArrival> const& arrival);
};

/// Counts for consecutive periods, the first from the start of the event on. Within a period people come at equal
/// intervals.
class PEDFLUX_API SchedulePopulationSource : public PopulationSource {
  public:
    SchedulePopulationSource();
    SchedulePopulationSource(std::vector<GlobalId> const& origins, std::vector<DurationValuePair> const& schedule);
    SchedulePopulationSource(std::vector<GlobalId> const& origins, std::vector<GlobalId> const& destinations,
                             std::vector<DurationValuePair> const& schedule);
    SchedulePopulationSource(SchedulePopulationSource const& other);

    /// The length of each period and the number of persons that arrive in it.
    std::vector<DurationValuePair> GetDurationPopulationPairs();
    void SetDurationPopulationPairs(std::vector<DurationValuePair> const& schedule);

    /// Origins and destinations as for `CountPopulationSource`.
    void SetOrigins(std::vector<GlobalId> const& origins);
    void SetOriginsWeighted(std::vector<GlobalId> const& origins, std::vector<double> const& weights);
    void SetOriginsWeighted(std::vector<IdValuePair> const& originsAndWeights);
    void SetDestinationsByChance(std::vector<GlobalId> const& destinations);
    void SetDestinationsByLowestCost(std::vector<GlobalId> const& destinations);
    void SetDestinationsWeightedByChance(std::vector<GlobalId> const& destinations, std::vector<double> const& weights);
    void SetDestinationsWeightedByChance(std::vector<IdValuePair> const& destinationsAndWeights);
};

/// A count for each pair of an origin and a destination.
///
/// The population data are in rows, one row for each origin: the persons from origin o to destination d stand at index
/// o * GetDestinationCount() + d, with o and d the positions in the lists of origins and destinations.
class PEDFLUX_API ODMatrixPopulationSource : public PopulationSource {
  public:
    ODMatrixPopulationSource();
    ODMatrixPopulationSource(std::vector<GlobalId> const& origins, std::vector<GlobalId> const& destinations,
                             std::vector<double> const& data);
    explicit ODMatrixPopulationSource(std::vector<std::shared_ptr<ODMatrixEntry>> const& entries);
    ODMatrixPopulationSource(ODMatrixPopulationSource const& other);

    /// Replaces the origins. Those that stay keep their persons, new ones have none yet.
    void SetOrigins(std::vector<GlobalId> const& origins);
    /// Replaces the destinations. Those that stay keep their persons, new ones have none yet.
    void SetDestinations(std::vector<GlobalId> const& destinations);
    int GetOriginCount() const;
    int GetDestinationCount() const;
    bool HasOrigin(GlobalId const& origin) const;
    bool HasDestination(GlobalId const& destination) const;

    std::vector<double> GetPopulationData();
    /// Replaces the data, one number for each pair of the present origins and destinations.
    void SetPopulationData(std::vector<double> const& data);
    /// Replaces origins, destinations and data together.
    void SetODPopulationData(std::vector<GlobalId> const& origins, std::vector<GlobalId> const& destinations,
                             std::vector<double> const& data);

    /// @throws Exception for what is not among the origins or destinations
    double GetPopulationForOD(GlobalId const& origin, GlobalId const& destination) const;
    /// @throws Exception for what is not among the origins or destinations
    void SetPopulationForOD(GlobalId const& origin, GlobalId const& destination, double population);
    /// The index of the pair in the population data.
    /// @throws Exception for what is not among the origins or destinations
    int GetPopulationDataIndexForOD(GlobalId const& origin, GlobalId const& destination) const;

    /// One entry for each pair, in the order of the data.
    std::vector<std::shared_ptr<ODMatrixEntry>> GetODMatrixEntriesAll();
    /// The entries with more than 0 persons, in the order of the data.
    std::vector<std::shared_ptr<ODMatrixEntry>> GetODMatrixEntriesNonZero();
    /// Replaces everything: origins and destinations in the order in which the entries first name them, 0 persons for
    /// pairs without an entry. Empty pointers and two entries for the same pair are refused.
    void SetFromODMatrixEntries(std::vector<std::shared_ptr<ODMatrixEntry>> const& entries);

    std::shared_ptr<PopulationArrival> GetPopulationArrival();
    void SetPopulationArrival(std::shared_ptr<PopulationArrival> const& arrival);
};

}  // namespace pedflux
