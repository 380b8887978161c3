#include "engine/crowd/sorting.h"

#include <algorithm>
#include <tuple>

namespace pedflux::engine::crowd {

void sort_by_cell(Scene& scene) {
    Bodies& bodies = scene.bodies;
    auto const everybody = [&scene](auto const& visit) {
        auto const agents = static_cast<std::uint32_t>(scene.agents.size());
        for (std::uint32_t i = 0; i < agents; ++i)
            if (scene.agents[i].present) visit(i, scene.agents[i]);
        for (std::uint32_t i = 0; i < scene.departed.size(); ++i) visit(agents + i, scene.departed[i].agent);
    };
    std::uint32_t const cells = scene.surfaces.cell_count();
    std::uint32_t count = 0;
    // Counts are stored two places further, so that filling the lists turns them into the starts without another pass.
    bodies.cell_start.assign(cells + 2, 0);
    everybody([&](std::uint32_t source, Agent& agent) {
        agent.cell = scene.surfaces.cell_of(agent.region, agent.x, agent.z);
        ++bodies.cell_start[agent.cell + 2];
        ++count;
        static_cast<void>(source);
    });
    for (std::uint32_t cell = 2; cell < cells + 2; ++cell) bodies.cell_start[cell] += bodies.cell_start[cell - 1];
    bodies.resize(count);
    everybody(
        [&](std::uint32_t source, Agent const& agent) { bodies.source[bodies.cell_start[agent.cell + 1]++] = source; });
}

void fill_bodies(Scene& scene, std::size_t first_cell, std::size_t last_cell) {
    Bodies& bodies = scene.bodies;
    auto const seconds = static_cast<float>(scene.seconds);
    auto const place = [&scene](std::uint32_t source) {
        Agent const& agent = scene.agent_of(source);
        return std::tuple(agent.x, agent.z, agent.key);
    };
    for (std::size_t cell = first_cell; cell < last_cell; ++cell) {
        std::uint32_t const from = bodies.cell_start[cell];
        std::uint32_t const to = bodies.cell_start[cell + 1];
        for (std::uint32_t i = from + 1; i < to; ++i) {
            std::uint32_t const moved = bodies.source[i];
            std::uint32_t hole = i;
            for (; hole > from && place(moved) < place(bodies.source[hole - 1]); --hole)
                bodies.source[hole] = bodies.source[hole - 1];
            bodies.source[hole] = moved;
        }
        for (std::uint32_t i = from; i < to; ++i) {
            Agent const& agent = scene.agent_of(bodies.source[i]);
            bodies.cell[i] = static_cast<std::uint32_t>(cell);
            bodies.x[i] = static_cast<float>(agent.x);
            bodies.z[i] = static_cast<float>(agent.z);
            bodies.velocity_x[i] = agent.velocity_x;
            bodies.velocity_z[i] = agent.velocity_z;
            bodies.direction_x[i] = agent.direction_x;
            bodies.direction_z[i] = agent.direction_z;
            bodies.radius[i] = bodies.source[i] < scene.agents.size() ? agent.radius : Bodies::no_body;
            bodies.longest[i] = agent.speed * seconds;
        }
    }
}

}  // namespace pedflux::engine::crowd
