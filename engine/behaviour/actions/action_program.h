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

/// How an action is carried out.
enum class ActionPlay {
    NOTHING,         ///< it is done at once
    SEQUENCE,        ///< its children one after the other
    CHOICE,          ///< one of its children, by their weights
    BRANCH,          ///< the first child when the test is passed, otherwise the second one if there is one
    DO_UNTIL,        ///< its child until the test fails or the time has come; then, or early, waits
    REPEAT,          ///< its child over and over, likewise
    REPEAT_COUNTED,  ///< its child a number of times
    SEEK,            ///< goes somewhere
    SEEK_ONE_OF,     ///< goes to one of its objects, if there is any
    WAIT,            ///< waits until the test fails or the time has come
    EFFECT,          ///< something happens at once
    END,             ///< the same, after which nothing is left to do
};

constexpr ActionPlay play_of(AgentActionTypeId type) {
    switch (type) {
#define ACTION(Class, type, play, ...) \
    case AgentActionTypeId::type:      \
        return ActionPlay::play;
#include "engine/behaviour/actions/agent_action_table.def"
    }
    return ActionPlay::NOTHING;
}

/// Whether an agent goes somewhere by it.
constexpr bool is_seeking(AgentActionTypeId type) {
    return play_of(type) == ActionPlay::SEEK || play_of(type) == ActionPlay::SEEK_ONE_OF;
}

/// What happens at once.
enum class ActionEffect {
#define ACTION(...)
#define ACTION_EFFECT(Class, type, ...) type = static_cast<int>(AgentActionTypeId::type),
#include "engine/behaviour/actions/agent_action_table.def"
};

/// One action. What its kind does not have stays empty.
struct ActionNode {
    AgentActionTypeId type = AgentActionTypeId::DO_NOTHING;
    Entries children;  ///< in `ActionProgram::children`; of a named action the action that it names
    Entries objects;   ///< in `ActionProgram::objects`: where to go, what to give
    Entries weights;   ///< in `ActionProgram::weights`, one for each child or object
    int test = NONE;   ///< in `ActionProgram::tests`
    int time = NONE;   ///< in `ActionProgram::times`
    int spec = NONE;   ///< in `ActionProgram::distributions`: seconds, or a count
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
    std::vector<DistributionSpec> distributions;
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
int compile(ActionProgram& program, Document const& document, AgentAction const& action);
/// The same for an order that a program gives. Its times are those of the simulated clock.
int compile(ActionProgram& program, TaskOrder const& order);

}  // namespace pedflux::engine
