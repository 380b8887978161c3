#pragma once

#include "engine/simulation/tasks/behaviour_program.h"

#include <span>

/// The tasks that programs give. They are compiled into the plan of actions, behind what the project says, and are
/// forgotten when nobody is at them any more, so that a program that gives tasks in every frame does not fill memory.
namespace pedflux::engine {

struct TaskState;
struct TaskOrder;

/// From here on the plan's lists hold orders. Remembers where the project's part ends.
void begin_orders(BehaviourProgram& rules);

/// Whether there are so many orders that it is time to forget those that are done.
bool has_many_orders(BehaviourProgram const& rules);
/// @param doings of everybody who is there; their numbers of orders change
void forget_done_orders(BehaviourProgram& rules, Places& places, std::span<TaskState* const> tasks);

/// Adds an order and returns its node. Throws Exception when it leads to what is no place.
int add_order(BehaviourProgram& rules, Places& places, TaskOrder const& order);

}  // namespace pedflux::engine
