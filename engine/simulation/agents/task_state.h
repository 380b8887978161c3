#pragma once

#include "engine/behaviour/actions/action_stack.h"
#include "engine/navigation/navigation_input.h"
#include "engine/simulation/world/places.h"

#include <cstdint>
#include <limits>
#include <optional>

/// What an agent is at, besides walking. Part of every person, so it knows nothing of the simulation.
namespace pedflux::engine {

/// A connection that an agent passes because a sign says so.
struct SignedWay {
    navigation::RegionIndex region = navigation::none;
    navigation::DestinationIndex far_end = navigation::none;
};

/// An agent's way to a server, through its queue and out of it.
struct Visit {
    enum class Stage : std::uint8_t { NOWHERE, COMES, QUEUES, IS_SERVED };

    Stage stage = Stage::NOWHERE;
    ActionTask task{};         ///< that sends it there
    std::uint32_t server = 0;  ///< unless the stage is NOWHERE
    double at_head = 0;  ///< seconds since which it has been next, and near enough to be served; below 0: it is not
    std::uint64_t draws = 0;  ///< numbers drawn for choices of servers and contact times

    bool is_on() const { return stage != Stage::NOWHERE; }
};

inline constexpr std::uint32_t no_wait_space = std::numeric_limits<std::uint32_t>::max();

/// What tells one wait of an agent from the others.
struct WaitKey {
    int node = 0;
    std::uint64_t began = 0;

    bool operator==(WaitKey const&) const = default;
};

/// A wait that leads somewhere.
struct Waiting {
    std::optional<WaitKey> key;  ///< none: the agent does not wait, or just stands
    bool walks = false;          ///< to its place
    Point place;
    navigation::RegionIndex region = navigation::none;
    double gives_up_at = 0;                               ///< seconds after the start of the simulation
    std::uint32_t space = no_wait_space;                  ///< in which it has its place
    navigation::DestinationIndex way = navigation::none;  ///< to the space
};

struct TaskState {
    ActionStack actions;
    std::optional<ActionTask> task;    ///< what takes its time now; none: it is on the way to its last goal
    PlaceIndex task_goal = no_place;   ///< where the task leads
    PlaceIndex last_goal = no_place;   ///< where it goes when there is nothing else to do, and leaves
    std::optional<double> wait_after;  ///< seconds to wait when the initial actions are done
    int wait_style = NONE;             ///< of the wait before it moves, in the action plan
    Waiting waiting;
    bool evacuates = false;   ///< its last goal is an evacuation's
    std::uint64_t tests = 0;  ///< how many tests were put to it
    SignedWay sign;
    Visit visit;
    std::uint32_t circulation = no_place;                               ///< which of the rules' circulations it is in
    double circulates_until = std::numeric_limits<double>::infinity();  ///< seconds of the simulated clock
    int portals_left = std::numeric_limits<int>::max();                 ///< to reach while it circulates
    std::uint32_t portals_drawn = 0;
    PlaceIndex portal = no_place;  ///< where it goes while it circulates; at first where it came from

    bool has_something_to_do() const { return task || !actions.frames.empty() || circulation != no_place; }
};

}  // namespace pedflux::engine
