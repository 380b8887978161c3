#pragma once

#include <pedflux/identifiers.h>
#include <pedflux/tasks.h>
#include <pedflux/wait_styles.h>

#include <memory>
#include <vector>

/// Tasks as plain data, for the simulation.
namespace pedflux::engine {

enum class TaskKind {
    EXIT,
    FOLLOW_SIGN,
    SEEK_AREA,
    SEEK_PORTAL,
    SEEK_PROCESS_START,
    WAIT_FOR_DURATION,
    WAIT_FOREVER,
    WAIT_UNTIL_TIME,
};

struct TaskOrder {
    TaskKind kind;
    std::vector<GlobalId> goals = {};  ///< of movement tasks: valid and distinct
    bool erase_route_history = false;
    int seconds = 0;                        ///< duration of a wait, or time after midnight
    std::shared_ptr<WaitStyle> style = {};  ///< of waiting tasks; never changed
};

struct TaskAccess {
    static TaskOrder const& order(Task const& task) { return *task.order_; }
};

/// The data of a task.
inline TaskOrder const& order_of(Task const& task) { return TaskAccess::order(task); }

}  // namespace pedflux::engine
