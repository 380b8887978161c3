#pragma once

#include "engine/behaviour/distributions/distribution_spec.h"
#include "engine/behaviour/events/time_reference.h"
#include "engine/model/document.h"

#include <pedflux/agent_actions.h>
#include <pedflux/color.h>
#include <pedflux/identifiers.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

/// Actions compiled for a simulation: one flat list of nodes that refer to each other and to what they need by index.
/// What a node refers to is listed apart, so that the simulation compiles each list once into what it works with.
namespace pedflux::engine {

struct TaskOrder;

/// No entry of a list.
inline constexpr int NONE = -1;

/// Some consecutive entries of a list.
struct Entries {
    std::size_t first = 0;
    std::size_t count = 0;
};

/// One action. What its kind does not have stays empty.
struct ActionNode {
    AgentActionTypeId type = AgentActionTypeId::DO_NOTHING;
    Entries children;  ///< in `ActionProgram::children`; of a named action the action that it names
    Entries objects;   ///< in `ActionProgram::objects`: where to go, what to give
    Entries weights;   ///< in `ActionProgram::weights`, one for each child or object
    int test = NONE;   ///< in `ActionProgram::tests`
    int time = NONE;   ///< in `ActionProgram::times`
    int spec = NONE;   ///< in `ActionProgram::laws`: seconds, or a count
    int style = NONE;  ///< in `ActionProgram::styles`: how to wait
    DestinationAssignment assignment = DestinationAssignment::BY_CHANCE;
    ListActionAssignment order = ListActionAssignment::IN_ORDER;
    bool erase_route_history = false;
    double value = 0;  ///< to add to tallies
    Color color;
};

struct ActionProgram {
    std::vector<ActionNode> nodes;
    std::vector<int> children;  ///< in `nodes`
    std::vector<GlobalId> objects;
    std::vector<double> weights;
    std::vector<std::shared_ptr<AgentTest>> tests;
    std::vector<TimeInFrame> times;
    std::vector<DistributionSpec> laws;
    std::vector<std::shared_ptr<WaitStyle>> styles;
    /// The root of each named action that something refers to.
    std::unordered_map<GlobalId, int, IdentifierHash, IdentifierEqual> named;

    std::span<int const> children_of(ActionNode const& node) const {
        return std::span(children).subspan(node.children.first, node.children.count);
    }
    std::span<GlobalId const> objects_of(ActionNode const& node) const {
        return std::span(objects).subspan(node.objects.first, node.objects.count);
    }
    std::span<double const> weights_of(ActionNode const& node) const {
        return std::span(weights).subspan(node.weights.first, node.weights.count);
    }
};

/// Adds an action and all that it holds or names, and returns its node. The action has passed its checks; a named
/// action that the document does not know does nothing.
int compile(ActionProgram& plan, Document const& document, AgentAction const& action);
/// The same for an order that a program gives. Its times are those of the simulated clock.
int compile(ActionProgram& plan, TaskOrder const& order);

}  // namespace pedflux::engine
