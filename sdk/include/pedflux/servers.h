#pragma once

#include <pedflux/api.h>
#include <pedflux/objects.h>

#include <memory>
#include <vector>

namespace pedflux {

class AgentAction;
class AgentTest;
class Distribution;

/// A place where agents are served one after the other: a desk, a gate, a machine. Its shape is a polyline along which
/// they queue; its first point is where they are served.
///
/// The time that serving an agent takes, its contact time, is that of the first rule whose test the agent passes, or
/// else the server's own one. A server without either serves at once.
class PEDFLUX_API Server : public NetworkObject {
  public:
    using NetworkObject::NetworkObject;

    bool HasAccessRequiredTest();
    /// The test that agents must pass to use the server. A copy.
    std::shared_ptr<AgentTest> GetAccessRequiredTest();
    void SetAccessRequiredTest(std::shared_ptr<AgentTest> const& test);
    void ClearAccessRequiredTest();

    bool HasAccessPreferredTest();
    /// The test of agents that prefer this server to others. A copy.
    std::shared_ptr<AgentTest> GetAccessPreferredTest();
    void SetAccessPreferredTest(std::shared_ptr<AgentTest> const& test);
    void ClearAccessPreferredTest();

    /// Whether the number of agents in the queue, including the one that is served, is limited; not unless set.
    bool HasCapacityLimit();
    /// The greatest number of agents. Of an automatic limit, as many as fit on the polyline with the spacing: the whole
    /// spacings in its length, and one more.
    int GetCapacityLimit();
    /// Whether the limit follows from the length of the polyline. Throws Exception when there is no limit.
    bool IsAutoCapacityLimit();
    /// @param limit 1 or more agents
    void SetFixedCapacityLimit(int limit);
    /// @param spacing from one agent to the next, at least 0.1 and at most 100 m
    void SetAutoCapacityLimit(double spacing);
    void ClearCapacityLimit();

    bool HasContactTime();
    /// The contact time of agents to which no rule applies, in seconds. A copy.
    std::shared_ptr<Distribution> GetContactTime();
    /// @param time a valid distribution of 0 or more seconds
    void SetContactTime(std::shared_ptr<Distribution> const& time);
    void ClearContactTime();

    /// The tests of the rules, in the order in which they are tried. Copies.
    std::vector<std::shared_ptr<AgentTest>> GetContactTimeRuleTests();
    /// The contact times of the rules, in seconds, in the same order. Copies.
    std::vector<std::shared_ptr<Distribution>> GetContactTimeRuleDurations();
    /// Replaces the rules; each test goes with the duration of the same index. Lists of different lengths, empty
    /// pointers and durations that are no valid distributions of 0 or more seconds are refused.
    void SetContactTimeRules(std::vector<std::shared_ptr<AgentTest>> const& tests,
                             std::vector<std::shared_ptr<Distribution>> const& durations);

    bool HasProcessedAction();
    /// What agents do when they have been served. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetProcessedActionCopy();
    void SetProcessedAction(std::shared_ptr<AgentAction> const& action);
    bool HasReleaseAction();
    /// What agents do when they leave the server, served or not. A copy; empty when there is none.
    std::shared_ptr<AgentAction> GetReleaseActionCopy();
    void SetReleaseAction(std::shared_ptr<AgentAction> const& action);
};

}  // namespace pedflux
