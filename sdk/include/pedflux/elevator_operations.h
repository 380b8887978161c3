#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/node.h>

#include <memory>
#include <vector>

namespace pedflux {

/// The kinds of elevator operation.
enum class ElevatorOperationTypeId : int {
    CALL_ANSWER = 0,   ///< `CallAnswerElevatorOperation`
    ORDERED_LIST = 1,  ///< `OrderedListElevatorOperation`
    SABBATH = 2,       ///< `SabbathElevatorOperation`
    SHUTTLE = 3,       ///< `ShuttleElevatorOperation`
};

/// The order in which a car visits the floors of a list.
enum class ElevatorVisitingOrder : int {
    AS_LISTED = 0,  ///< as the list tells
    UPWARDS = 1,    ///< from the lowest to the highest
    DOWNWARDS = 2,  ///< from the highest to the lowest
};

/// What a car does at the end of its list.
enum class ElevatorOperationRepeatType : int {
    ONCE = 0,            ///< it stays at the last floor
    FROM_START = 1,      ///< it begins again with the first floor
    BACK_AND_FORTH = 2,  ///< it visits the floors in reverse, then again from the first
};

/// How the cars of an elevator or of a bank decide where to go.
///
/// An elevator or a bank to which an operation is given keeps a copy and hands out copies. It refuses an operation
/// whose lists name anything but floors of the project, each of them once; before, the lists take any identifiers.
class PEDFLUX_API ElevatorOperation {
  public:
    /// Used by the library.
    explicit ElevatorOperation(engine::NodePointer node);
    ElevatorOperation(ElevatorOperation const& other);
    ElevatorOperation& operator=(ElevatorOperation const&) = delete;

    /// The kind.
    virtual ElevatorOperationTypeId GetElevatorOperationTypeId();
    virtual ~ElevatorOperation();

  protected:
    engine::NodePointer const node_;

  private:
    friend engine::NodeAccess;
};

/// Cars go where they are called. Unless set, the doors close when nobody calls, and the car stays where it is.
class PEDFLUX_API CallAnswerElevatorOperation : public ElevatorOperation {
  public:
    using ElevatorOperation::ElevatorOperation;
    CallAnswerElevatorOperation();

    bool IsLeaveDoorsOpenWhenIdle() const;
    void SetLeaveDoorsOpenWhenIdle(bool open);
    /// Whether a car that has nothing to do goes to its elevator's rest floor, if it has one.
    bool IsReturnToRestFloorWhenIdle() const;
    void SetReturnToRestFloorWhenIdle(bool returning);
};

/// Cars visit a list of floors, whether or not they are called.
class PEDFLUX_API OrderedListElevatorOperation : public ElevatorOperation {
  public:
    using ElevatorOperation::ElevatorOperation;
    OrderedListElevatorOperation(std::vector<GlobalId> const& floors, ElevatorVisitingOrder order,
                                 ElevatorOperationRepeatType repeat);

    std::vector<GlobalId> GetOrderedFloors();
    void SetOrderedFloors(std::vector<GlobalId> const& floors);
    ElevatorVisitingOrder GetVisitingOrder();
    void SetVisitingOrder(ElevatorVisitingOrder order);
    ElevatorOperationRepeatType GetRepeatType();
    void SetRepeatType(ElevatorOperationRepeatType repeat);
};

/// Cars stop at every floor that they serve, up and down again, without calls.
class PEDFLUX_API SabbathElevatorOperation : public ElevatorOperation {
  public:
    using ElevatorOperation::ElevatorOperation;
    /// @param movingUpAtStart whether the first way is upwards
    explicit SabbathElevatorOperation(bool movingUpAtStart);

    bool IsMovingUpAtStart() const;
    void SetMovingUpAtStart(bool movingUp);
};

/// Cars fetch people from the boarding floors and take them to the destination floors. Unless set, the doors close when
/// there is nobody to fetch, and the car stays where it is.
class PEDFLUX_API ShuttleElevatorOperation : public ElevatorOperation {
  public:
    using ElevatorOperation::ElevatorOperation;
    /// @param order in which the boarding floors are visited
    ShuttleElevatorOperation(std::vector<GlobalId> const& boardingFloors, ElevatorVisitingOrder order,
                             std::vector<GlobalId> const& destinationFloors);

    std::vector<GlobalId> GetBoardingFloors();
    void SetBoardingFloors(std::vector<GlobalId> const& floors);
    std::vector<GlobalId> GetDestinationFloors();
    void SetDestinationFloors(std::vector<GlobalId> const& floors);
    ElevatorVisitingOrder GetVisitingOrder();
    void SetVisitingOrder(ElevatorVisitingOrder order);

    bool IsLeaveDoorsOpenWhenIdle() const;
    void SetLeaveDoorsOpenWhenIdle(bool open);
    /// Whether a car that has nothing to do goes to its elevator's rest floor, if it has one.
    bool IsReturnToRestFloorWhenIdle() const;
    void SetReturnToRestFloorWhenIdle(bool returning);
};

}  // namespace pedflux
