#pragma once

#include "engine/simulation/frame/simulation_state.h"

#include <pedflux/color.h>

/// Agents who do what actions and tasks tell them.
namespace pedflux::engine {

struct TaskOrder;

/// Gives somebody who comes in what its portal, event and profile tell it, and its colour.
void instruct(SimulationState& run, AgentMotion& motion);

/// Sends those out who are in the zones of evacuations that start now.
void clear_zones(SimulationState& run);
/// Lets everybody do what it has to; those whom an action lets leave are gone afterwards.
void act_all(SimulationState& run);
/// Lets one do so at once; it may have left afterwards.
void act(SimulationState& run, AgentMotion& motion);

/// Somebody came from one surface onto another.
void act_on_crossing(SimulationState& run, AgentMotion const& motion, navigation::RegionIndex from);

/// Somebody leaves: does what the floor and zones where it is tell those who go out of them, as far as it happens at
/// once. What takes time is dropped.
void act_on_leaving(SimulationState& run, AgentMotion& motion);

/// Makes a place somebody's last goal, and sends it there.
void send_to(SimulationState& run, AgentMotion& motion, PlaceIndex goal);

/// Whether somebody who arrives stays, as it has something else to do.
inline bool stays_on_arrival(AgentInfo const& info) { return info.tasks.task || info.tasks.circulation != no_place; }

/// Gives an order, to be done at once or after all others. Throws Exception when it cannot be done in the simulated
/// project.
void order(SimulationState& run, AgentMotion& motion, TaskOrder const& task, bool at_once);
/// Forgets all orders and goals.
void clear_tasks(SimulationState& run, AgentMotion& motion);

}  // namespace pedflux::engine
