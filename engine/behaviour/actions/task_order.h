#pragma once

#include <pedflux/identifiers.h>
#include <pedflux/tasks.h>
#include <pedflux/wait_styles.h>

#include <memory>
#include <vector>

/// Tasks as plain data, for the simulation that carries them out.
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
    std::vector<GlobalId> goals = {};  ///< of the kinds that go somewhere: valid and different
    bool erase_route_history = false;
    int seconds = 0;                        ///< to wait, or after midnight
    std::shared_ptr<WaitStyle> style = {};  ///< of the kinds that wait; never changed
};

struct TaskAccess {
    static TaskOrder const& order(Task const& task) { return *task.order_; }
};

/// What a task orders.
inline TaskOrder const& order_of(Task const& task) { return TaskAccess::order(task); }

}  // namespace pedflux::engine
