#pragma once

#include "engine/crowd/floor_plan.h"
#include "engine/crowd/locomotion.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace pedflux::engine::crowd {

/// Identifies an agent from add() until remove() or depart(). Freed indices are used again, the last freed first, so
/// they stay small and dense and can index arrays beside the crowd.
using AgentIndex = std::uint32_t;

/// The initial state of an agent. Lengths in metres, speeds in metres per second.
struct Entrant {
    Point position;
    std::uint32_t region = 0;
    double speed = 1.34;
    double radius = 0.2;
    /// Factor on the perceived density; above 1 the agent keeps larger gaps.
    double personal_space = 1;
    /// Preferred side for passing others: 1 right, -1 left, 0 the nearer one.
    double side_bias = 0;
    /// Key of the agent's random choices; the same for the same person in every run.
    std::uint32_t key = 0;
};

/// The walking crowd: flat arrays of agents that are stepped together. Before a step the caller sets where each agent
/// wants to go; after it, it reads the positions. Steps of 0.05 to 0.2 seconds are suitable.
///
/// Results depend only on the floor plan, the entrants and what the caller sets, not on the number of threads or the
/// order in which agents were added. Functions throw pedflux::Exception for indices of no agent and for values that are
/// not finite or out of range; the crowd then stays as it was.
class Crowd {
  public:
    /// A crowd without agents. `threads` includes the calling one.
    explicit Crowd(FloorPlan const& plan, Locomotion const& locomotion = {}, unsigned threads = 1);
    Crowd(Crowd&&) noexcept;
    Crowd& operator=(Crowd&&) noexcept;
    ~Crowd();

    AgentIndex add(Entrant const& entrant);
    /// Removes the agent at once.
    void remove(AgentIndex agent);
    /// Removes the agent through an exit. The index is free at once, but those behind see the person walk straight on
    /// for one sight length. Otherwise they would rush at the empty line, and an exit would have a larger capacity than
    /// a door.
    void depart(AgentIndex agent);

    /// The wanted walking direction, a unit vector of the plane; (0, 0) to stand.
    void set_direction(AgentIndex agent, Point direction);
    void set_speed(AgentIndex agent, double metres_per_second);
    /// Factor of the ground on the walking speed, for stairs and ramps.
    void set_ground_factor(AgentIndex agent, double factor);
    /// A held agent does not walk, but gives way when pushed.
    void set_held(AgentIndex agent, bool held);
    /// Moves the agent elsewhere; it stands there until the next step.
    void place(AgentIndex agent, Point position, std::uint32_t region);
    /// Opens or closes a wall of a region, for gates and doors. On a crossing it stops those in the region, not those
    /// who come from beyond: the region there has its own wall.
    void set_wall_open(std::uint32_t region, std::size_t wall, bool open);

    bool contains(AgentIndex agent) const;
    std::size_t size() const;
    Point position(AgentIndex agent) const;
    /// Velocity of the last step (metres per second).
    Point velocity(AgentIndex agent) const;
    std::uint32_t region(AgentIndex agent) const;
    double radius(AgentIndex agent) const;
    double speed(AgentIndex agent) const;
    /// Density ahead of the agent in the last step, in persons per square metre.
    double local_density(AgentIndex agent) const;

    /// Advances the crowd by `seconds`.
    void step(double seconds);
    std::uint64_t steps_taken() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace pedflux::engine::crowd
