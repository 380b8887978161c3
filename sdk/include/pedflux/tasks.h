#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>

#include <memory>
#include <vector>

/// What a program tells one agent to do while a simulation runs. A task never changes; it can be given to any number of
/// agents. Whether its objects are part of the simulated project is checked when an agent is given the task.
namespace pedflux {

class WaitStyle;

namespace engine {
struct TaskAccess;
struct TaskOrder;
}  // namespace engine

/// A task of an agent.
class PEDFLUX_API Task {
  public:
    Task(Task const&) = delete;
    Task& operator=(Task const&) = delete;
    virtual ~Task();

  protected:
    explicit Task(engine::TaskOrder order);
    std::unique_ptr<engine::TaskOrder const> const order_;

  private:
    friend engine::TaskAccess;
};

/// The agent leaves the simulation from where it is.
class PEDFLUX_API ExitTask : public Task {
  public:
    ExitTask();
};

// Going somewhere. Lists hold at least one identifier and each of them once. Route history is what the agent has
// passed; erasing it lets the agent take the same way again. It is kept unless the constructor says otherwise.

/// The agent passes route objects (floors, connections, portals) one after the other.
class PEDFLUX_API FollowSignTask : public Task {
  public:
    explicit FollowSignTask(GlobalId const& routeObject);
    FollowSignTask(GlobalId const& routeObject, bool eraseRouteHistory);
    explicit FollowSignTask(std::vector<GlobalId> const& routeObjects);
    FollowSignTask(std::vector<GlobalId> const& routeObjects, bool eraseRouteHistory);
};

/// The agent goes to a floor, connection or zone; of several to the one that is easiest to reach.
class PEDFLUX_API SeekAreaTask : public Task {
  public:
    explicit SeekAreaTask(GlobalId const& area);
    SeekAreaTask(GlobalId const& area, bool eraseRouteHistory);
    explicit SeekAreaTask(std::vector<GlobalId> const& areas);
    SeekAreaTask(std::vector<GlobalId> const& areas, bool eraseRouteHistory);
};

/// The agent goes to a portal; of several to the one that is easiest to reach.
class PEDFLUX_API SeekPortalTask : public Task {
  public:
    explicit SeekPortalTask(GlobalId const& portal);
    SeekPortalTask(GlobalId const& portal, bool eraseRouteHistory);
    explicit SeekPortalTask(std::vector<GlobalId> const& portals);
    SeekPortalTask(std::vector<GlobalId> const& portals, bool eraseRouteHistory);
};

/// The agent goes to the start of a process: to a server, or to a dispatch that sends it on to one.
class PEDFLUX_API SeekProcessStartTask : public Task {
  public:
    explicit SeekProcessStartTask(GlobalId const& processStart);
    SeekProcessStartTask(GlobalId const& processStart, bool eraseRouteHistory);
};

/// The agent waits.
class PEDFLUX_API WaitTask : public Task {
  public:
    /// A copy of the style.
    std::shared_ptr<WaitStyle> GetWaitStyle();

  protected:
    using Task::Task;
};

/// The agent waits for a time. The wait styles of this and the next tasks must be given; the tasks keep copies.
class PEDFLUX_API WaitForDurationTask : public WaitTask {
  public:
    /// @param seconds 0 or more
    WaitForDurationTask(int seconds, std::shared_ptr<WaitStyle> const& style);
};

/// The agent waits until something else becomes its task.
class PEDFLUX_API WaitForeverTask : public WaitTask {
  public:
    explicit WaitForeverTask(std::shared_ptr<WaitStyle> const& style);
};

/// The agent waits until a time of the simulated clock.
class PEDFLUX_API WaitUntilTimeTask : public WaitTask {
  public:
    /// @param seconds after midnight, 0 or more
    WaitUntilTimeTask(int seconds, std::shared_ptr<WaitStyle> const& style);
};

}  // namespace pedflux
