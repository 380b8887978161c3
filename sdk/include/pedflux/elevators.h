#pragma once

#include <pedflux/api.h>
#include <pedflux/elevator_operations.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>
#include <pedflux/vectors.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Elevators: how they are set up in a project (`Elevator`, `ElevatorBank`), and their cars and controllers in a
/// simulation (`ElevatorCar`, `ElevatorController`), with the values that these speak of.
namespace pedflux {

namespace engine {
struct Car;
struct CarController;
}  // namespace engine

class Agent;
class AgentAction;
class AgentTest;
class WaitStyle;

/// A way of moving.
enum class ElevatorDirection : int {
    NONE = 0,  ///< neither; of a service: either
    UP = 1,
    DOWN = 2,
};

/// What the doors of a car are doing.
enum class ElevatorDoorState : int {
    CLOSED = 0,
    OPENING = 1,
    OPEN = 2,
    CLOSING = 3,
};

/// How people call a car.
enum class ElevatorControlStyle : int {
    DIRECTION_CALLS = 0,    ///< with a button for up or down; the floor is chosen in the car
    DESTINATION_CALLS = 1,  ///< with the floor that they want to go to, before they get in
};

/// In which order a car works through its list of services.
enum class ElevatorComputer : int {
    COLLECTIVE = 0,  ///< the services in its direction on the way, before it reverses
    IN_ORDER = 1,    ///< in the order of the list
};

/// What limits the persons in a car.
enum class ElevatorCapacityType : int {
    AGENT_COUNT = 0,  ///< a number of persons
    AUTO_AREA = 1,    ///< how many fit on the area of the car's mesh
    CUSTOM_AREA = 2,  ///< how many fit on an area of a given size
};

/// An elevator: one shaft with its car. Its mesh is the floor of the car.
///
/// A car has doors on two opposite sides, called ball and box. Each side serves floors where people get in (boarding
/// floors) and floors where they get out (alighting floors). A new elevator serves none; it answers calls on its own,
/// and people who wait for it stand still.
class PEDFLUX_API Elevator : public WalkableObject {
  public:
    using WalkableObject::WalkableObject;

    /// The greatest acceleration, m/s²; 0.8 unless set.
    double GetAcceleration() const;
    /// How fast the acceleration may change, m/s³; 1 unless set.
    double GetJerk() const;
    /// The greatest speed, m/s; 1.6 unless set.
    double GetSpeed() const;
    /// The width of the doors, metres; 1.1 unless set.
    double GetDoorWidth() const;
    /// Seconds; 2 unless set.
    double GetDoorOpeningDuration() const;
    /// Seconds; 3 unless set.
    double GetDoorClosingDuration() const;
    /// How long the doors stay open after someone has passed them, seconds; 3 unless set.
    double GetDoorOpenDurationAfterUse() const;
    /// How long the doors stay open when nobody passes them, seconds; 5 unless set.
    double GetDoorOpenDurationWhenUnused() const;
    /// The factor by which people weigh the time that they expect to wait for the elevator; 1 unless set.
    double GetQueueMultiplier() const;
    /// The cost of the elevator for agents that fail the access test, in seconds; 1000000 unless set.
    double GetAccessAgentTestFailureCost() const;
    /// The radius of a person where the capacity comes from an area, metres; 0.2 unless set.
    double GetAgentRadiusForAreaCapacity() const;
    /// The area of the capacity type CUSTOM_AREA, m²; 2 unless set.
    double GetCapacityCustomArea() const;
    /// The time that people take for one round of the car, in seconds, where it is set. Without it they judge by the
    /// floors served.
    double GetCycleDurationOverride() const;
    double GetBoardingFlowRateValue() const;
    double GetAlightingFlowRateValue() const;

    /// @param acceleration above 0 m/s²
    void SetAcceleration(double acceleration);
    /// @param jerk above 0 m/s³
    void SetJerk(double jerk);
    /// @param speed above 0 m/s
    void SetSpeed(double speed);
    /// @param width above 0 m
    void SetDoorWidth(double width);
    /// @param duration 0 or more seconds
    void SetDoorOpeningDuration(double duration);
    /// @param duration 0 or more seconds
    void SetDoorClosingDuration(double duration);
    /// @param duration 0 or more seconds
    void SetDoorOpenDurationAfterUse(double duration);
    /// @param duration 0 or more seconds
    void SetDoorOpenDurationWhenUnused(double duration);
    /// @param multiplier 0 or more
    void SetQueueMultiplier(double multiplier);
    /// @param cost 0 or more seconds
    void SetAccessAgentTestFailureCost(double cost);

    /// By a number of persons unless set.
    ElevatorCapacityType GetCapacityType();
    /// The number of the capacity type AGENT_COUNT; 13 unless set.
    int GetCapacityByAgentCount();
    /// @param count at least 1 person
    void SetCapacityByAgentCount(int count);
    /// @param agentRadius above 0 and at most 2 m
    void SetCapacityByAutoArea(double agentRadius);
    /// @param area above 0 m²
    /// @param agentRadius above 0 and at most 2 m
    void SetCapacityByCustomArea(double area, double agentRadius);

    bool HasCycleDurationOverride();
    /// @param seconds at least 1
    void SetCycleDurationOverride(int seconds);
    void ClearCycleDurationOverride();

    /// The unit of the limit; throws Exception while boarding is not limited.
    FlowRateType GetBoardingFlowRateType();
    /// The unit of the limit; throws Exception while alighting is not limited.
    FlowRateType GetAlightingFlowRateType();
    /// How many people get in at most at a time.
    /// @param value above 0, in the unit of the type; per metre means of the doors' width
    void SetBoardingFlowCap(FlowRateType type, double value);
    /// How many people get out at most at a time; see `SetBoardingFlowCap`.
    void SetAlightingFlowCap(FlowRateType type, double value);
    /// Not unless set.
    bool IsBoardingFlowCapped();
    void ClearBoardingFlowCap();

    /// Whether the ball side of the doors is where the box side would be, and the other way round; not unless set.
    bool AreDoorsTransposed();
    void SetDoorsTransposed(bool transposed);

    /// All floors that the ball side serves: the boarding floors, then the floors for alighting alone.
    std::vector<GlobalId> GetBallFloors();
    /// All floors that the box side serves: the boarding floors, then the floors for alighting alone.
    std::vector<GlobalId> GetBoxFloors();
    std::vector<GlobalId> GetBallBoardingFloors();
    std::vector<GlobalId> GetBallAlightingFloors();
    std::vector<GlobalId> GetBoxBoardingFloors();
    std::vector<GlobalId> GetBoxAlightingFloors();
    /// Floors of the project, each of them once in each list.
    void SetBallBoardingFloors(std::vector<GlobalId> const& floors);
    void SetBallAlightingFloors(std::vector<GlobalId> const& floors);
    void SetBoxBoardingFloors(std::vector<GlobalId> const& floors);
    void SetBoxAlightingFloors(std::vector<GlobalId> const& floors);
    /// Whether people get in on a side wherever they get out on it.
    bool AreAllFloorsTwoWay();
    /// Lets people get in and out on the same floors: the first ones by the ball side, the second ones by the box side.
    void SetTwoWayFloors(std::vector<GlobalId> const& ballFloors, std::vector<GlobalId> const& boxFloors);

    /// Whether the elevator belongs to a bank.
    bool HasElevatorBank();
    /// The bank that has the elevator among its items.
    GlobalId GetElevatorBank();
    /// Moves the elevator to a bank.
    void SetElevatorBank(GlobalId const& bank);
    void ClearElevatorBank();

    /// The floor where the car waits when it has nothing to do; invalid when none is set.
    GlobalId GetRestFloor();
    /// @param floor a floor of the project; an invalid identifier takes it away
    void SetRestFloor(GlobalId const& floor);
    void ClearRestFloor();

    /// How the car decides where to go unless its bank decides; it answers calls unless set. A copy.
    std::shared_ptr<ElevatorOperation> GetElevatorOperation();
    void SetElevatorOperation(std::shared_ptr<ElevatorOperation> const& operation);

    bool HasAccessAgentTest();
    /// The test of agents that may use the elevator. A copy.
    std::shared_ptr<AgentTest> GetAccessAgentTest();
    void SetAccessAgentTest(std::shared_ptr<AgentTest> const& test);
    void ClearAccessAgentTest();

    bool HasEnterAction();
    bool HasExitAction();
    /// What people do when they get in. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetEnterActionCopy();
    /// What people do when they get out. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetExitActionCopy();
    /// An empty action takes it away.
    void SetEnterAction(std::shared_ptr<AgentAction> const& action);
    /// An empty action takes it away.
    void SetExitAction(std::shared_ptr<AgentAction> const& action);

    /// How people wait for the car. A copy.
    std::shared_ptr<WaitStyle> GetWaitStyle();
    void SetWaitStyle(std::shared_ptr<WaitStyle> const& style);
};

/// Elevators with one operation, which decides for all of them. An elevator belongs to one bank at most: a bank that
/// takes it takes it from the one before.
class PEDFLUX_API ElevatorBank : public Group {
  public:
    using Group::Group;

    void AddItem(GlobalId const& elevator);
    void AddItems(std::vector<GlobalId> const& elevators);
    void SetItems(std::vector<GlobalId> const& elevators);

    /// What people can take instead of the bank when they wait too long for it, such as stairs; none unless set.
    std::vector<GlobalId> GetAlternateRouteItems();
    /// @param items walkable objects, each of them once
    void SetAlternateRouteItems(std::vector<GlobalId> const& items);

    /// How the cars decide where to go; they answer calls unless set. A copy.
    std::shared_ptr<ElevatorOperation> GetElevatorOperation();
    void SetElevatorOperation(std::shared_ptr<ElevatorOperation> const& operation);

    bool HasAccessAgentTest();
    /// The test of agents that may use the elevators of the bank. A copy.
    std::shared_ptr<AgentTest> GetAccessAgentTest();
    void SetAccessAgentTest(std::shared_ptr<AgentTest> const& test);
    void ClearAccessAgentTest();
    /// The cost of the bank for agents that fail the access test, in seconds; 1000000 unless set.
    double GetAccessAgentTestFailureCost();
    /// @param cost 0 or more seconds
    void SetAccessAgentTestFailureCost(double cost);
};

/// A place where a car stops: one floor, by its name. Stops are equal when their names are, and in the order of the
/// bytes of their names; the invalid stop comes first.
class PEDFLUX_API ElevatorStop {
  public:
    /// The invalid stop, which is none.
    ElevatorStop();
    /// Used by the library.
    explicit ElevatorStop(std::string name);
    ~ElevatorStop();
    ElevatorStop(ElevatorStop const&);
    ElevatorStop(ElevatorStop&&) noexcept;
    ElevatorStop& operator=(ElevatorStop const&);
    ElevatorStop& operator=(ElevatorStop&&) noexcept;

    bool IsValid();
    void SetInvalid();
    /// The name of the floor; empty for the invalid stop.
    std::string GetString();

    bool InternalEquals(ElevatorStop const& other) const;
    /// Negative, 0 or positive as this stop comes before the other, equals it or comes after it.
    int InternalCompare(ElevatorStop const& other) const;
    int InternalHashCode() const;

  private:
    std::string name_;
};

/// A stop that a car is to make, for people who travel in a direction. Ordered by stop, then by direction.
class PEDFLUX_API ElevatorService {
  public:
    /// No service: at the invalid stop, in no direction.
    ElevatorService();
    /// @throws Exception for a number that is no direction
    ElevatorService(ElevatorStop const& stop, ElevatorDirection direction);
    ~ElevatorService();
    ElevatorService(ElevatorService const&);
    ElevatorService(ElevatorService&&) noexcept;
    ElevatorService& operator=(ElevatorService const&);
    ElevatorService& operator=(ElevatorService&&) noexcept;

    ElevatorStop GetStop();
    ElevatorDirection GetDirection();
    /// Whether its stop is valid.
    bool IsValid();
    /// The stop and the direction: "Lobby UP".
    std::string GetString();

    bool InternalEquals(ElevatorService const& other) const;
    /// Negative, 0 or positive as this service comes before the other, equals it or comes after it.
    int InternalCompare(ElevatorService const& other) const;
    int InternalHashCode() const;

  private:
    ElevatorStop stop_;
    ElevatorDirection direction_ = ElevatorDirection::NONE;
};

/// Someone's wish for a trip. In the order of the origins, then of the destinations, the directions and the callers;
/// what is not known comes first.
class PEDFLUX_API ElevatorCall {
  public:
    /// No call.
    ElevatorCall();
    /// Used by the library.
    ElevatorCall(ElevatorStop origin, ElevatorDirection direction, std::optional<ElevatorStop> destination,
                 std::optional<int> callerId);
    ~ElevatorCall();
    ElevatorCall(ElevatorCall const&);
    ElevatorCall(ElevatorCall&&) noexcept;
    ElevatorCall& operator=(ElevatorCall const&);
    ElevatorCall& operator=(ElevatorCall&&) noexcept;

    ElevatorStop GetOriginStop();
    /// The invalid stop while the destination is not known.
    ElevatorStop GetDestinationStop();
    bool HasDestinationStop();
    /// The number of the agent who calls.
    /// @throws Exception when it is not known
    int GetCallerId();
    bool HasCallerId();
    ElevatorDirection GetTripDirection();
    /// Whether its origin is valid.
    bool IsValid();
    /// The origin, the direction or destination and the caller, as far as they are known: "Lobby UP", "Lobby to Roof by
    /// 12".
    std::string GetString();

    bool InternalEquals(ElevatorCall const& other) const;
    /// Negative, 0 or positive as this call comes before the other, equals it or comes after it.
    int InternalCompare(ElevatorCall const& other) const;
    int InternalHashCode() const;

  private:
    ElevatorStop origin_;
    ElevatorDirection direction_ = ElevatorDirection::NONE;
    std::optional<ElevatorStop> destination_;
    std::optional<int> callerId_;
};

class ElevatorController;

/// The car of an elevator in a simulation.
///
/// This engine sets cars up but does not move them yet. What a car is (its stops, ways and times between them, its
/// capacity) and what a program tells it (services, rest stop, control, access) works; what only a moving car has, its
/// position, its doors and the people in it, throws Exception and says so.
///
/// A stop that is none of the car's throws Exception wherever the answer depends on it.
class PEDFLUX_API ElevatorCar {
  public:
    /// Used by the library.
    explicit ElevatorCar(std::shared_ptr<engine::Car> car);
    ~ElevatorCar();
    ElevatorCar(ElevatorCar const&) = delete;
    ElevatorCar& operator=(ElevatorCar const&) = delete;

    /// The identifier of the elevator.
    GlobalId GetId();
    /// Whether the elevator can be used: it serves at least two floors.
    bool IsValid();
    bool IsMoving();
    int GetPopulation();
    int GetAvailableCapacity();
    /// How many persons the car holds. By an area: as many as circles of the agents' radius fit on it in the densest
    /// packing, 1 for each 2√3 r² (Thue, 1910), but at least 1.
    int GetTotalCapacity();
    /// Metres.
    double GetElevation();
    /// m/s
    double GetSpeed();
    /// m/s²
    double GetAcceleration();
    Vec3d GetPositionOfCarCentre();
    ElevatorDirection GetMovementDirection();
    ElevatorDirection GetServiceDirection();
    ElevatorDoorState GetElevatorDoorState();
    ElevatorControlStyle GetElevatorControlStyle();
    /// The kind of operation that decides for the car: its bank's, or else its own.
    ElevatorOperationTypeId GetElevatorOperationTypeId();
    /// Collective unless set.
    ElevatorComputer GetComputerType();
    void SetComputerType(ElevatorComputer computer);

    /// From the lowest to the highest.
    std::vector<ElevatorStop> GetAllStops();
    bool HasStop(ElevatorStop const& stop);
    ElevatorStop GetCurrentStop();
    bool HasCurrentStop();
    bool IsAtStop(ElevatorStop const& stop);
    bool IsArrivingAtStop(ElevatorStop const& stop);
    bool IsOpenAtStop(ElevatorStop const& stop);
    /// The name of the floor.
    std::string GetStopName(ElevatorStop const& stop);
    /// The lowest elevation of the floor, metres.
    double GetStopElevation(ElevatorStop const& stop);
    GlobalId GetFloorForStop(ElevatorStop const& stop);
    /// @throws Exception when the car does not serve the floor
    ElevatorStop GetStopForFloor(GlobalId const& floor);
    /// @throws Exception when the car serves no floor of the name
    ElevatorStop GetStopForFloor(std::string const& floorName);
    bool HasStopForFloor(GlobalId const& floor);
    bool HasStopForFloor(std::string const& floorName);
    /// None from a stop to itself.
    ElevatorDirection GetDirectionOfTrip(ElevatorStop const& from, ElevatorStop const& to);
    /// How long the car takes from standing at one stop to standing at another, without the doors, seconds. It is the
    /// shortest time within its greatest speed, acceleration and jerk (Peters, "Ideal lift kinematics", Elevator
    /// Technology 6, 1995).
    double GetTravelTimeInSeconds(ElevatorStop const& from, ElevatorStop const& to);

    /// Where the car waits when it has nothing to do; the invalid stop when there is none.
    ElevatorStop GetRestStop();
    bool HasRestStop();
    void SetRestStop(ElevatorStop const& stop);
    void ClearRestStop();

    /// What the car is to do, in the order in which it was told.
    std::vector<ElevatorService> GetServiceList();
    /// Empties the list.
    /// @return the services that were in it
    std::vector<ElevatorService> ClearServiceList();
    bool IsServiceListEmpty();
    /// The first of the list; an invalid one when it is empty.
    ElevatorService GetNextInServiceList();
    bool HasServiceInServiceList(ElevatorService const& service);
    /// In any direction.
    bool HasStopInServiceList(ElevatorStop const& stop);
    bool HasStopInServiceList(ElevatorStop const& stop, ElevatorDirection direction);
    /// Adds a service at the end of the list; one that is there already is not added again.
    void AddServiceToServiceList(ElevatorService const& service);
    void AddStopToServiceList(ElevatorStop const& stop, ElevatorDirection direction);
    /// For both directions.
    void AddStopToServiceList(ElevatorStop const& stop);
    /// Adds the stop where the trip starts, in its direction, and the one where it ends.
    void AddTripToServiceList(ElevatorStop const& from, ElevatorStop const& to);

    /// Takes the decisions of the car from its operation.
    /// @return whether it changed anything: not when the program has control already
    bool AssumeControl();
    /// Gives the decisions back.
    /// @return whether it changed anything
    bool ReleaseControl();
    bool HasManualControl();
    /// The controller of the car's bank, or that of the car alone.
    std::shared_ptr<ElevatorController> GetController();
    /// As if someone stood between the doors.
    void ActivateDoorOpenSensor();

    std::vector<std::shared_ptr<Agent>> GetManualAccessAgents();
    /// Lets only these agents use the car, whatever its access test says.
    /// @param costWhenDenied the cost of the elevator for all other agents, 0 or more seconds
    void SetManualAccessAgents(std::vector<std::shared_ptr<Agent>> const& agents, double costWhenDenied);
    /// Whether manual access is set and the agent has it.
    bool IsManualAccessAgent(std::shared_ptr<Agent> const& agent);
    bool HasManualAccess();
    void ClearManualAccess();
    /// 1000000 unless set, in seconds.
    double GetCostWhenManualAccessDenied();

    /// The time that people take for one round of the car, seconds. Unless set by hand, or for the elevator in the
    /// project, it is that of a round to the highest stop and back without a stop between them, doors included.
    double GetEffectiveCycleDuration();
    bool IsAutoEffectiveCycleDuration();
    void SetAutoEffectiveCycleDuration();
    /// @param seconds above 0
    void SetManualEffectiveCycleDuration(double seconds);

  private:
    std::shared_ptr<engine::Car> const car_;
};

/// What decides for the cars of a bank, or for a single car. A program can take the decisions over.
///
/// As this engine does not move cars yet, nobody calls them: what has to do with calls throws Exception and says so.
class PEDFLUX_API ElevatorController {
  public:
    /// Used by the library.
    explicit ElevatorController(std::shared_ptr<engine::CarController> controller);
    ~ElevatorController();
    ElevatorController(ElevatorController const&) = delete;
    ElevatorController& operator=(ElevatorController const&) = delete;

    /// Whether it has a car.
    bool IsValid();
    /// By direction unless set.
    ElevatorControlStyle GetElevatorControlStyle();
    ElevatorOperationTypeId GetElevatorOperationTypeId();
    bool HasManualControl();
    /// Takes the decisions for all cars; from now on people call them in the style.
    void AssumeControl(ElevatorControlStyle style);
    /// Gives the decisions and the style back.
    void ReleaseControl();

    /// The calls that came in the frame.
    std::vector<ElevatorCall> GetTripCallsThisFrame();
    void RegisterCallReceived(ElevatorCall const& call);
    void RegisterCallAssigned(ElevatorCall const& call, GlobalId const& car);
    void AssignCallToElevatorCar(ElevatorCall const& call, GlobalId const& car);
    void CallForTrip(int callerId, ElevatorStop const& from, ElevatorStop const& to);
    void ClearCallForTrip(ElevatorCall const& call);
    void ClearAllRegisteredCalls();
    void DirectToTripDestination(GlobalId const& car, ElevatorStop const& to);
    bool IsCallForTripRequired(int callerId, ElevatorStop const& from, ElevatorStop const& to);
    bool IsCarStartingTrip(GlobalId const& car, int callerId, ElevatorStop const& from, ElevatorStop const& to);
    bool IsTripDestinationRequired(GlobalId const& car, ElevatorStop const& to);

    bool HasElevatorCar(GlobalId const& car);
    /// Whether it has the car and no program controls that car by itself.
    bool IsControllingElevatorCar(GlobalId const& car);
    /// @throws Exception when no car has both stops
    ElevatorDirection GetDirectionOfTrip(ElevatorStop const& from, ElevatorStop const& to);
    /// Whether people get into a car that goes the other way first; not unless set.
    bool IsIgnoreDirectionWhenBoardingForTrip();
    void SetIgnoreDirectionWhenBoardingForTrip(bool ignore);

  private:
    std::shared_ptr<engine::CarController> const controller_;
};

}  // namespace pedflux
