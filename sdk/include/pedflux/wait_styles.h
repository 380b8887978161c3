#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/node.h>

#include <memory>
#include <vector>

namespace pedflux {

/// The kinds of wait style.
enum class WaitStyleTypeId : int {
    STAND_STILL = 0,            ///< `StandStillWaitStyle`
    SPREAD_OUT = 1,             ///< `SpreadOutWaitStyle`
    ASSIGNED_WAIT_SPACE = 2,    ///< `AssignedWaitSpaceWaitStyle`
    LOWEST_COST_WAIT_SPACE = 3  ///< `LowestCostWaitSpaceWaitStyle`
};

/// How people wait.
///
/// An object to which a wait style is given keeps a copy, and so does a task; actions that are not
/// part of a project share it.
class PEDFLUX_API WaitStyle {
  public:
    /// Used by the library.
    explicit WaitStyle(engine::NodePointer node);
    WaitStyle(WaitStyle const& other);
    WaitStyle& operator=(WaitStyle const&) = delete;

    /// The kind.
    virtual WaitStyleTypeId GetWaitStyleTypeId();
    /// A copy that shares nothing.
    virtual std::shared_ptr<WaitStyle> Clone();
    virtual ~WaitStyle();

    /// People stay where they are.
    static std::shared_ptr<WaitStyle> StandStill();
    /// People keep their distance from each other.
    static std::shared_ptr<WaitStyle> SpreadOut();
    /// People go to one of the wait spaces, each chosen with the same chance.
    static std::shared_ptr<WaitStyle> AssignedWaitSpace(std::vector<GlobalId> const& spaces);
    /// People go to one of the wait spaces, chosen with chances in proportion to the weights, one for each space.
    static std::shared_ptr<WaitStyle> AssignedWaitSpace(std::vector<GlobalId> const& spaces,
                                                        std::vector<double> const& weights);
    /// People go to the wait space that costs them least to reach.
    static std::shared_ptr<WaitStyle> LowestCostWaitSpace(std::vector<GlobalId> const& spaces);

  protected:
    engine::NodePointer const node_;

  private:
    friend engine::NodeAccess;
};

/// People stay where they are.
class PEDFLUX_API StandStillWaitStyle : public WaitStyle {
  public:
    using WaitStyle::WaitStyle;
    StandStillWaitStyle();
};

/// People keep their distance from each other.
class PEDFLUX_API SpreadOutWaitStyle : public WaitStyle {
  public:
    using WaitStyle::WaitStyle;
    SpreadOutWaitStyle();
};

/// People wait in a wait space that is assigned to them by chance. People who find no room there wait in the fallback
/// style.
class PEDFLUX_API AssignedWaitSpaceWaitStyle : public WaitStyle {
  public:
    using WaitStyle::WaitStyle;
    /// @param spaces wait spaces, each of them once, all with the same chance
    explicit AssignedWaitSpaceWaitStyle(std::vector<GlobalId> const& spaces);
    /// @param weights one for each wait space, none negative
    /// @throws Exception for lists of unequal length
    AssignedWaitSpaceWaitStyle(std::vector<GlobalId> const& spaces, std::vector<double> const& weights);

    /// The style of people who find no room. Standing still unless set.
    WaitStyleTypeId GetFallbackWaitStyleId();
    void SetFallbackWaitStyleStandStill();
    void SetFallbackWaitStyleSpreadOut();
};

/// People wait in the wait space that costs them least to reach. People who find no room there wait in the fallback
/// style.
class PEDFLUX_API LowestCostWaitSpaceWaitStyle : public WaitStyle {
  public:
    using WaitStyle::WaitStyle;
    /// @param spaces wait spaces, each of them once
    explicit LowestCostWaitSpaceWaitStyle(std::vector<GlobalId> const& spaces);

    /// The style of people who find no room. Standing still unless set.
    WaitStyleTypeId GetFallbackWaitStyleId();
    void SetFallbackWaitStyleStandStill();
    void SetFallbackWaitStyleSpreadOut();
};

}  // namespace pedflux
