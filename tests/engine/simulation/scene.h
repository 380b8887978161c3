#pragma once

#include "tests/engine/refusal.h"

#include <pedflux/database.h>
#include <pedflux/distributions.h>
#include <pedflux/events.h>
#include <pedflux/exception.h>
#include <pedflux/geometry.h>
#include <pedflux/population_sources.h>
#include <pedflux/profiles.h>
#include <pedflux/project.h>
#include <pedflux/scene.h>
#include <pedflux/simulation.h>
#include <pedflux/simulation_run.h>
#include <pedflux/triggers.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pedflux {

/// A project to draw a small building in; everything stands at the height y unless it says otherwise.
class Scene {
  public:
    Scene();
    ~Scene();

    std::shared_ptr<Floor> floor(std::string const& name, std::vector<Vec2d> const& outline, double y = 0) const;
    /// A rectangle along the axes.
    std::shared_ptr<Floor> room(std::string const& name, double x1, double z1, double x2, double z2,
                                double y = 0) const;
    /// An upright portal between two points of the plan.
    std::shared_ptr<Portal> portal(std::string const& name, double x1, double z1, double x2, double z2,
                                   double y = 0) const;
    std::shared_ptr<Barrier> wall(std::string const& name, double x1, double z1, double x2, double z2) const;
    std::shared_ptr<Stair> stair(std::string const& name, Vec3d const& bottom, Vec3d const& top, double width) const;
    std::shared_ptr<Profile> walkers(std::string const& name, double speed) const;
    /// Everybody at once from one place to another.
    std::shared_ptr<Journey> journey(std::string const& name, GlobalId const& from, GlobalId const& to, double count,
                                     GlobalId const& profile = {}) const;
    std::shared_ptr<Journey> journey(std::string const& name, CountPopulationSource const& source,
                                     GlobalId const& profile = {}) const;

    std::shared_ptr<Simulation> simulate(int seed = 1, int threads = 1) const;
    /// Steps until everybody has left, and returns the seconds; fails the test after `most` seconds.
    double run_until_empty(Simulation& simulation, double most) const;

    std::shared_ptr<Project> const project;
    std::string const database;
};

/// Steps up to a second of the simulation, or so many seconds on.
void step_to(Simulation& simulation, double seconds);
void step_for(Simulation& simulation, double seconds);

/// So many seconds after the start of the simulation.
std::shared_ptr<Trigger> after(int seconds);

/// One number for all that a stored run shows.
std::uint64_t hash_of(std::string const& database);

}  // namespace pedflux
