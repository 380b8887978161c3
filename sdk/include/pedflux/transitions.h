#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/node.h>

#include <memory>
#include <vector>

namespace pedflux {

/// What `Transition::GetTransitionType` returns.
enum class TransitionType : int {
    ANY_OF = 0,            ///< `AnyOfTransition`
    AT_PORTAL = 1,         ///< `AtPortalTransition`
    BETWEEN_OBJECTS = 2,   ///< `BetweenObjectsTransition`
    CORDON = 3,            ///< `CordonTransition`
    ENTER_AREA = 4,        ///< `EnterAreaTransition`
    EXIT_AREA = 5,         ///< `ExitAreaTransition`
    ENTER_SERVER = 6,      ///< `EnterServerTransition`
    EXIT_SERVER = 7,       ///< `ExitServerTransition`
    ENTER_SIMULATION = 8,  ///< `EnterSimulationTransition`
    EXIT_SIMULATION = 9,   ///< `ExitSimulationTransition`
};

/// An agent's crossing from one place or state to another. Transitions are counted, by triggers and queries.
///
/// An object to which a transition is given keeps a copy; triggers and tallies that are not part of a project share it.
class PEDFLUX_API Transition {
  public:
    /// Used by the library.
    explicit Transition(engine::NodePointer node);
    Transition(Transition const& other);
    Transition& operator=(Transition const&) = delete;

    /// The kind, a `TransitionType`.
    virtual int GetTransitionType();
    /// A copy that shares nothing.
    virtual std::shared_ptr<Transition> Clone();
    /// Whether a transition can be added as a child of this one: it is not empty, and neither is nor holds this one.
    virtual bool IsValidChild(std::shared_ptr<Transition> const& child);
    /// 0 for all but `AnyOfTransition`.
    virtual int GetChildTransitionCount();
    virtual std::vector<std::shared_ptr<Transition>> GetChildTransitions();
    /// @param index from 0; Exception is thrown for a child that there is not
    virtual std::shared_ptr<Transition> GetChildTransition(int index);
    virtual ~Transition();

    /// An `AnyOfTransition`.
    static std::shared_ptr<Transition> AnyOf(std::vector<std::shared_ptr<Transition>> const& children);
    /// An `EnterAreaTransition`.
    static std::shared_ptr<Transition> AreaEnter(GlobalId const& area);
    /// An `ExitAreaTransition`.
    static std::shared_ptr<Transition> AreaExit(GlobalId const& area);
    /// An `AtPortalTransition`.
    static std::shared_ptr<Transition> AtPortal(GlobalId const& portal);
    /// A `BetweenObjectsTransition`.
    static std::shared_ptr<Transition> ChannelTransition(GlobalId const& from, GlobalId const& to);
    /// An `EnterServerTransition`.
    static std::shared_ptr<Transition> ServerEnter(GlobalId const& server);
    /// An `ExitServerTransition`.
    static std::shared_ptr<Transition> ServerExit(GlobalId const& server);
    /// An `EnterSimulationTransition`.
    static std::shared_ptr<Transition> SimEnter(GlobalId const& object);
    /// An `ExitSimulationTransition`.
    static std::shared_ptr<Transition> SimExit(GlobalId const& object);

  protected:
    engine::NodePointer const node_;

  private:
    friend engine::NodeAccess;
};

/// Each of several transitions. One without children never happens.
class PEDFLUX_API AnyOfTransition : public Transition {
  public:
    using Transition::Transition;
    AnyOfTransition(std::shared_ptr<Transition> const& first, std::shared_ptr<Transition> const& second);
    explicit AnyOfTransition(std::vector<std::shared_ptr<Transition>> const& children);

    void AddChildTransition(std::shared_ptr<Transition> const& child);
    void ClearChildTransitions();
    /// Replaces a child. @param index from 0
    void SetChildTransition(int index, std::shared_ptr<Transition> const& child);
    void SetChildTransitions(std::vector<std::shared_ptr<Transition>> const& children);
};

/// An agent passes a portal, in or out.
class PEDFLUX_API AtPortalTransition : public Transition {
  public:
    using Transition::Transition;
    explicit AtPortalTransition(GlobalId const& portal);

    GlobalId GetPortal();
    void SetPortal(GlobalId const& portal);
};

/// An agent goes directly from one place to another.
class PEDFLUX_API BetweenObjectsTransition : public Transition {
  public:
    using Transition::Transition;
    /// @param from, to portals, floors, connections or zones; an object of a project does not take one from an object
    /// to itself
    BetweenObjectsTransition(GlobalId const& from, GlobalId const& to);

    GlobalId GetFromObject();
    void SetFromObject(GlobalId const& from);
    GlobalId GetToObject();
    void SetToObject(GlobalId const& to);
};

/// An agent crosses the line of a cordon.
class PEDFLUX_API CordonTransition : public Transition {
  public:
    using Transition::Transition;
    explicit CordonTransition(GlobalId const& cordon);

    GlobalId GetCordon();
    void SetCordon(GlobalId const& cordon);
};

/// An agent enters an area: a portal, floor, connection, zone or volume.
class PEDFLUX_API EnterAreaTransition : public Transition {
  public:
    using Transition::Transition;
    explicit EnterAreaTransition(GlobalId const& area);

    GlobalId GetArea();
    void SetArea(GlobalId const& area);
};

/// An agent leaves an area: a portal, floor, connection, zone or volume.
class PEDFLUX_API ExitAreaTransition : public Transition {
  public:
    using Transition::Transition;
    explicit ExitAreaTransition(GlobalId const& area);

    GlobalId GetArea();
    void SetArea(GlobalId const& area);
};

/// An agent enters a server.
class PEDFLUX_API EnterServerTransition : public Transition {
  public:
    using Transition::Transition;
    explicit EnterServerTransition(GlobalId const& server);

    GlobalId GetServer();
    void SetServer(GlobalId const& server);
};

/// An agent leaves a server.
class PEDFLUX_API ExitServerTransition : public Transition {
  public:
    using Transition::Transition;
    explicit ExitServerTransition(GlobalId const& server);

    GlobalId GetServer();
    void SetServer(GlobalId const& server);
};

/// An agent enters the simulation at an object: a portal, floor, connection or zone.
class PEDFLUX_API EnterSimulationTransition : public Transition {
  public:
    using Transition::Transition;
    explicit EnterSimulationTransition(GlobalId const& object);

    GlobalId GetObject();
    void SetObject(GlobalId const& object);
};

/// An agent leaves the simulation at an object: a portal, floor, connection or zone.
class PEDFLUX_API ExitSimulationTransition : public Transition {
  public:
    using Transition::Transition;
    explicit ExitSimulationTransition(GlobalId const& object);

    GlobalId GetObject();
    void SetObject(GlobalId const& object);
};

}  // namespace pedflux
