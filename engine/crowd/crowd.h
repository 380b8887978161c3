#pragma once

#include "engine/crowd/floor_plan.h"
#include "engine/crowd/locomotion.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace pedflux::engine::crowd {

/// Names an agent from add() until remove() or depart(); free numbers are given again, the last freed first. Numbers
/// stay small and dense, so arrays beside the crowd can be indexed by them.
using AgentIndex = std::uint32_t;

/// An agent as it enters. Lengths in metres, speeds in metres per second.
struct Entrant {
    Point position;
    std::uint32_t region = 0;
    double speed = 1.34;
    double radius = 0.2;
    /// Factor on the density that the agent feels: above one keeps larger gaps.
    double personal_space = 1;
    /// Side on which the agent passes others: 1 right, -1 left, 0 whichever is nearer.
    double side_bias = 0;
    /// What makes this agent's random choices its own; equal for the same person in every run.
    std::uint32_t key = 0;
};

/// The walking crowd: flat arrays of agents, stepped together. The caller writes where each agent wants to go before a
/// step and reads where it got to after it. Steps of 0.05 to 0.2 seconds are right.
///
/// Results depend on the plan, the entrants and what the caller writes only: not on the number of threads, nor on the
/// order in which agents were added. Functions throw pedflux::Exception for numbers that name nothing and values that
/// are not finite or out of range; the crowd then stays as it was.
class Crowd {
  public:
    /// A crowd without agents. `threads` counts the calling one.
    explicit Crowd(Plan const& plan, Locomotion const& locomotion = {}, unsigned threads = 1);
    Crowd(Crowd&&) noexcept;
    Crowd& operator=(Crowd&&) noexcept;
    ~Crowd();

    AgentIndex add(Entrant const& entrant);
    /// Takes the agent out at once.
    void remove(AgentIndex agent);
    /// Takes the agent out through an exit: the number is free at once, but those behind see the person walk straight
    /// on for one sight length. Without it they would rush at the empty line, and an exit would pass more people than a
    /// door.
    void depart(AgentIndex agent);

    /// Where the agent wants to walk, a unit vector in the plan; (0, 0) wants to stand.
    void set_direction(AgentIndex agent, Point direction);
    void set_speed(AgentIndex agent, double metres_per_second);
    /// Factor of the ground on the agent's speed, for stairs and ramps.
    void set_ground_factor(AgentIndex agent, double factor);
    /// A held agent waits: it does not walk, but makes room when pushed.
    void set_held(AgentIndex agent, bool held);
    /// Puts the agent elsewhere; it stands there until the next step.
    void place(AgentIndex agent, Point position, std::uint32_t region);
    /// Opens or closes a wall of a region, for gates and doors. On a crossing it stops those who are in the region, not
    /// those who come from beyond: the region there has its own wall.
    void set_wall_open(std::uint32_t region, std::size_t wall, bool open);

    bool contains(AgentIndex agent) const;
    std::size_t size() const;
    Point position(AgentIndex agent) const;
    /// Distance walked per second in the last step, in metres per second.
    Point velocity(AgentIndex agent) const;
    std::uint32_t region(AgentIndex agent) const;
    double radius(AgentIndex agent) const;
    double speed(AgentIndex agent) const;
    /// Persons per square metre that the agent felt ahead in the last step.
    double felt_density(AgentIndex agent) const;

    /// Moves everyone by `seconds`.
    void step(double seconds);
    std::uint64_t steps_taken() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace pedflux::engine::crowd
