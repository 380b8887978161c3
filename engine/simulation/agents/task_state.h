#pragma once

#include "engine/behaviour/actions/action_stack.h"
#include "engine/navigation/navigation_input.h"
#include "engine/simulation/world/places.h"

#include <cstdint>
#include <limits>
#include <optional>

/// What an agent has been told to do, and how far it is with that.
namespace pedflux::engine {

/// A connection that an agent passes because it follows a sign.
struct SignedWay {
    navigation::RegionIndex region = navigation::none;
    navigation::DestinationIndex far_end = navigation::none;
};

/// An agent's way to a server, through its queue and out of it.
struct Visit {
    enum class Stage : std::uint8_t { NOWHERE, COMES, QUEUES, IS_SERVED };

    Stage stage = Stage::NOWHERE;
    ActionTask task{};         ///< that the visit belongs to
    std::uint32_t server = 0;  ///< unless the stage is NOWHERE
    /// The time (seconds of the simulation) since which the agent has been first in the queue and near enough to be
    /// served; below 0: it is not.
    double at_head = 0;
    std::uint64_t draws = 0;  ///< numbers drawn for choices of servers and contact times

    bool is_on() const { return stage != Stage::NOWHERE; }
};

inline constexpr std::uint32_t no_wait_space = std::numeric_limits<std::uint32_t>::max();

/// Identifies one wait of an agent.
struct WaitKey {
    int node = 0;  ///< its number among all actions, see OrderProgram::first_node
    std::uint64_t began = 0;

    bool operator==(WaitKey const&) const = default;
};

/// A wait at a place of its own.
struct Waiting {
    std::optional<WaitKey> key;  ///< none: the agent does not wait, or just stands
    bool walks = false;          ///< whether it is on the way to its place
    Point place;
    navigation::RegionIndex region = navigation::none;
    double gives_up_at = 0;                               ///< seconds of the simulation
    std::uint32_t space = no_wait_space;                  ///< in which it has its place
    navigation::DestinationIndex way = navigation::none;  ///< to the space
};

struct TaskState {
    ActionStack actions;
    std::optional<ActionTask> task;    ///< in progress; none: it is on the way to its last goal
    PlaceIndex task_goal = no_place;   ///< where the task leads
    PlaceIndex last_goal = no_place;   ///< where it goes, and leaves, when there is nothing else to do
    std::optional<double> wait_after;  ///< seconds to wait when the initial actions are done
    int wait_style = NONE;             ///< of the wait before it moves, in the action program
    Waiting waiting;
    bool evacuates = false;   ///< its last goal is an evacuation's
    std::uint64_t tests = 0;  ///< that were evaluated for it
    SignedWay sign;
    Visit visit;
    std::uint32_t circulation = no_place;  ///< in the BehaviourProgram, while it circulates
    double circulates_until = std::numeric_limits<double>::infinity();  ///< seconds of the simulated clock
    int portals_left = std::numeric_limits<int>::max();                 ///< to reach while it circulates
    std::uint32_t portals_drawn = 0;
    PlaceIndex portal = no_place;  ///< where it goes while it circulates; at first where it entered

    bool has_something_to_do() const { return task || !actions.frames.empty() || circulation != no_place; }
};

}  // namespace pedflux::engine
