#pragma once

#include "engine/simulation/agents/agents.h"
#include "engine/simulation/routing/density_grid.h"
#include "engine/simulation/routing/routes.h"
#include "engine/simulation/world/clock.h"
#include "engine/simulation/world/world.h"

/// The direction in which each agent walks.
namespace pedflux::engine {

/// Chooses the direction of one agent: to its post, over the joint of its reroute, or along its route. Changes nothing
/// but the motion, so that agents can choose at the same time.
void choose_direction(World const& world, Clock const& clock, Routes const& routes, DensityGrid const& density,
                      Agents const& agents, AgentMotion& motion);

/// The share of an agent's speed at which it walks in a direction on a region, seen in the plan.
double ground_factor(Incline const& incline, double speed, Point direction);

/// Tells the bodies of the crowd what was chosen.
void steer_bodies(FloorPlan const& plan, Agents const& agents, crowd::Crowd& crowd);

}  // namespace pedflux::engine
