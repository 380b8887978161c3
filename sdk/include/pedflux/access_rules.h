#pragma once

#include <pedflux/api.h>
#include <pedflux/conditions.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>

#include <memory>
#include <vector>

namespace pedflux {

class AgentTest;
class TriggerRange;

/// Opens or closes gates during spans of time; outside of them, it has no effect on gates. Of several accesses that
/// concern a gate at the same time, the one that began last holds.
///
/// A new one opens no gates, both ways, for all of the simulation.
class PEDFLUX_API GateAccess : public SimObject {
  public:
    using SimObject::SimObject;

    std::vector<GlobalId> GetGatedObjects();
    /// Replaces the gates: connections, each of them once. What is not gated is not concerned.
    void SetGatedObjects(std::vector<GlobalId> const& gated_objects);

    /// A copy.
    std::shared_ptr<TriggerRange> GetTriggerRange();
    void SetTriggerRange(std::shared_ptr<TriggerRange> const& range);

    void SetCommandToOpen(ConnectionObjectDirection direction);
    void SetCommandToClose(ConnectionObjectDirection direction);
    bool IsCommandToOpen() const;
    bool IsCommandToClose() const;
    /// The ways that are opened or closed.
    ConnectionObjectDirection GetCommandDirection();

    /// Whether the command is in force in turns within a span: for the seconds on from its beginning, then not for the
    /// seconds off, and so on. Setting either duration makes a cycle, in which the other one has the same length until
    /// it is set too.
    bool HasCycle();
    void ClearCycle();
    /// @throws Exception without a cycle
    int GetCycleOnDurationInSeconds() const;
    /// @param duration at least 1
    void SetCycleOnDurationInSeconds(int duration);
    /// @throws Exception without a cycle
    int GetCycleOffDurationInSeconds() const;
    /// @param duration at least 1
    void SetCycleOffDurationInSeconds(int duration);

    /// The test of agents that the command applies to. All agents without a test. A copy.
    std::shared_ptr<AgentTest> GetAgentTest();
    void SetAgentTest(std::shared_ptr<AgentTest> const& test);
    bool HasAgentTest();
    void ClearAgentTest();
};

/// Opens or closes servers during spans of time; outside of them, it has no effect on servers. Of several accesses that
/// concern a server at the same time, the one that began last holds.
///
/// A new one opens no servers, at entrance and exit, for all of the simulation.
class PEDFLUX_API ServerAccess : public SimObject {
  public:
    using SimObject::SimObject;

    std::vector<GlobalId> GetServers();
    /// Replaces the servers, each of them once.
    void SetServers(std::vector<GlobalId> const& servers);

    /// A copy.
    std::shared_ptr<TriggerRange> GetTriggerRange();
    void SetTriggerRange(std::shared_ptr<TriggerRange> const& range);

    void SetCommandToOpen(ServerAccessPoint point);
    void SetCommandToClose(ServerAccessPoint point);
    bool IsCommandToOpen() const;
    bool IsCommandToClose() const;
    /// Where it opens or closes.
    ServerAccessPoint GetCommandAccessPoint();

    /// The same as of `GateAccess`.
    bool HasCycle();
    void ClearCycle();
    /// @throws Exception without a cycle
    int GetCycleOnDurationInSeconds() const;
    /// @param duration at least 1
    void SetCycleOnDurationInSeconds(int duration);
    /// @throws Exception without a cycle
    int GetCycleOffDurationInSeconds() const;
    /// @param duration at least 1
    void SetCycleOffDurationInSeconds(int duration);
};

/// Something that agents are given and lose by actions, and that tests ask for.
class PEDFLUX_API Token : public SimObject {
  public:
    using SimObject::SimObject;
};

}  // namespace pedflux
