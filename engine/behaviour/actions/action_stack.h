#pragma once

#include "engine/behaviour/actions/action_program.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

/// What each agent does at the time, out of an `ActionProgram`: a stack of the actions that it is in, the innermost
/// last. Those that happen at once are passed on to the simulation; one that takes time stays on top until it is done.
/// An action that is started meanwhile stands on top of it, and when that one is done the former goes on.
namespace pedflux::engine {

/// A task that a program gave to an agent, compiled by the simulation.
struct OrderProgram;

/// Of goals that the agent reaches whichever is the easiest.
inline constexpr int ANY_GOAL = -1;

/// One action that an agent is in.
struct ActionFrame {
    int node;
    std::shared_ptr<OrderProgram const> order{};  ///< that the node is of; none: the project's actions
    bool apart = false;                           ///< started besides what the agent did, not by the frame below
    bool begun = false;
    int step = 0;                                            ///< children or turns done
    int turns = 0;                                           ///< to do, of a count
    int goal = ANY_GOAL;                                     ///< of the node's objects
    int station = NONE;                                      ///< of a process, the place where the agent goes in it
    int passed = NONE;                                       ///< of a process, the place where the agent was last
    double until = std::numeric_limits<double>::infinity();  ///< seconds of the simulated clock
    std::uint64_t draw = 0;                                  ///< of the order of the children
    std::uint64_t turn_began = 0;                            ///< the call of `advance` in which the turn began
    std::uint64_t began_in = 0;                              ///< the call of `advance` in which the action began
};

struct ActionStack {
    std::vector<ActionFrame> frames;
    std::uint64_t draws = 0;     ///< numbers drawn so far
    std::uint64_t advances = 0;  ///< calls of `advance` so far
};

/// Something that takes time. Of a kind of action that is not itself a way to go or to wait, the agent waits: until
/// the rest of what it was to do has passed when the node has a style, or until the next step.
struct ActionTask {
    int node;
    int goal;                                     ///< of the node's objects, or ANY_GOAL
    std::shared_ptr<OrderProgram const> order{};  ///< that the node is of; none: the project's actions

    friend bool operator==(ActionTask const&, ActionTask const&) = default;
};

/// The agent and the world around it, as its actions see them.
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
    /// Puts a test of the project's actions to the agent, and returns whether it passes. Each time draws anew.
    virtual bool put_test(int test) = 0;
    /// Lets the agent go where a task leads, and returns whether it has arrived.
    virtual bool pursue(ActionTask const& task) = 0;
    /// Carries out an action that happens at once. Must not change the stack.
    virtual void happen(ActionEffect effect, ActionNode const& node) = 0;
};

/// Draws are a function of these and of how many there were before, so that agents do not disturb each other.
struct ActionDraws {
    std::uint64_t seed;
    std::uint64_t agent;
};

/// How many actions can happen at once in one step of an agent; the rest happens in the next one.
inline constexpr int MOST_AT_ONCE = 1000;

/// Starts an action besides what the agent does: it comes first, and then the rest goes on.
/// @param order that the node is of; none: the project's actions
void start(ActionStack& stack, int node, std::shared_ptr<OrderProgram const> order = {});
/// Adds an action for when the agent has done all that it was to do.
void start_last(ActionStack& stack, int node, std::shared_ptr<OrderProgram const> order = {});

/// Lets the agent do what it has to until something takes time, and returns that; none when there is nothing left to
/// do. A repeated action that takes no time is done once in a step.
/// @param program the project's actions
std::optional<ActionTask> advance(ActionProgram const& program, ActionStack& stack, ActionDraws draws,
                                  ActionScene& scene);

}  // namespace pedflux::engine
