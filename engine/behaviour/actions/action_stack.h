#pragma once

#include "engine/behaviour/actions/action_program.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

/// The execution state of an agent in an `ActionProgram`: a stack of the actions in progress, the innermost last.
/// Instantaneous actions are passed on to the simulation; one that takes time stays on top until it is done. An action
/// that is started meanwhile is pushed on top of it, and the former resumes afterwards.
namespace pedflux::engine {

/// A task that a program gave to an agent, compiled by the simulation.
struct OrderProgram;

/// The goal that is cheapest to reach.
inline constexpr int ANY_GOAL = -1;

/// One action in progress.
struct ActionFrame {
    int node;
    std::shared_ptr<OrderProgram const> order{};  ///< the order of the node; none: the project's actions
    bool apart = false;                           ///< started independently of the frame below
    bool begun = false;
    int step = 0;                                            ///< children or turns done
    int turns = 0;                                           ///< number of turns of a counted repetition
    int goal = ANY_GOAL;                                     ///< index in the node's objects
    int station = NONE;                                      ///< the place that the agent is heading for in a process
    int passed = NONE;                                       ///< the last place that it has passed in a process
    double until = std::numeric_limits<double>::infinity();  ///< seconds of the simulated clock
    std::uint64_t draw = 0;                                  ///< number of the draw that orders the children
    std::uint64_t turn_began = 0;                            ///< the call of `advance` in which the turn began
    std::uint64_t began_in = 0;                              ///< the call of `advance` in which the action began
};

struct ActionStack {
    std::vector<ActionFrame> frames;
    std::uint64_t draws = 0;     ///< numbers drawn so far
    std::uint64_t advances = 0;  ///< calls of `advance` so far
};

/// An action that takes time. If the action is neither a movement nor a wait, the agent waits: for the rest of the time
/// if the node has a wait style, otherwise until the next step.
struct ActionTask {
    int node;
    int goal;                                     ///< of the node's objects, or ANY_GOAL
    std::shared_ptr<OrderProgram const> order{};  ///< that the node is of; none: the project's actions

    friend bool operator==(ActionTask const&, ActionTask const&) = default;
};

/// The agent and its surroundings, as its actions see them.
struct ActionScene {
    ActionScene() = default;
    ActionScene(ActionScene const&) = delete;
    ActionScene& operator=(ActionScene const&) = delete;
    virtual ~ActionScene() = default;

    /// Seconds of the simulated clock.
    virtual double now() const = 0;
    virtual ActionProgram const& actions_of(OrderProgram const& order) const = 0;
    /// Seconds of the simulated clock; none while the time is not known, as before an event starts.
    virtual std::optional<double> time_of(TimeInFrame const& time) const = 0;
    /// Whether the agent passes a test of the project's actions. Each call draws anew.
    virtual bool put_test(int test) = 0;
    /// Moves the agent towards the goal of a task, and returns whether it has arrived.
    virtual bool pursue(ActionTask const& task) = 0;
    /// Carries out an action that happens at once. Must not change the stack.
    virtual void happen(ActionEffect effect, ActionNode const& node) = 0;
};

/// The key of an agent's random draws; together with the number of the draw it determines the result, so that agents do
/// not influence each other.
struct ActionDraws {
    std::uint64_t seed;
    std::uint64_t agent;
};

/// The maximum number of instantaneous actions in one step of an agent; the rest continues in the next step.
inline constexpr int most_at_once = 1000;

/// Starts an action that interrupts the current ones; they resume when it is done.
/// @param order the order of the node; none: the project's actions
void start(ActionStack& stack, int node, std::shared_ptr<OrderProgram const> order = {});
/// Adds an action to be carried out after all others.
void start_last(ActionStack& stack, int node, std::shared_ptr<OrderProgram const> order = {});

/// Carries out actions up to the first one that takes time, and returns it; none when nothing is left to do. A repeated
/// action that takes no time is carried out once per step.
/// @param program the project's actions
std::optional<ActionTask> advance(ActionProgram const& program, ActionStack& stack, ActionDraws draws,
                                  ActionScene& scene);

}  // namespace pedflux::engine
