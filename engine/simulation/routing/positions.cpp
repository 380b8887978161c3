#include "engine/simulation/routing/positions.h"

#include <utility>

namespace pedflux::engine {

void put_back(AgentMotion& motion, crowd::Crowd& crowd) {
    crowd.place(motion.body, motion.step_start, motion.region);
    motion.position = motion.step_start;
}

std::vector<RegionChange> read_positions(World const& world, Routes const& routes, ConnectionEntrances const& entrances,
                                         Agents& agents, crowd::Crowd& crowd, CongestionRerouting& rerouting,
                                         FrameChanges& changes) {
    std::vector<RegionChange> region_changes;
    for (auto& motion : agents.motions) {
        auto& info = agents.infos[motion.agent];
        if (info.controlled && !info.adjustable) crowd.place(motion.body, motion.position, motion.region);
        motion.step_start = motion.position;
        motion.position = crowd.position(motion.body);
        motion.walked +=
            world.plan.inclines[motion.region].length_factor * distance(motion.step_start, motion.position);
        auto const region = crowd.region(motion.body);
        if (region == motion.region) continue;
        if (is_shut_out(routes, world.plan, motion, region, motion.position) ||
            is_before_its_turn(entrances, world.plan, motion, region)) {
            put_back(motion, crowd);
            continue;
        }
        changes.exited.emplace_back(world.plan.surfaces[motion.region].id, info.object);
        changes.entered.emplace_back(world.plan.surfaces[region].id, info.object);
        if (motion.region >= world.plan.floor_count) info.previous_connection = motion.region;
        auto const left = std::exchange(motion.region, region);
        count_passed(rerouting, world.plan, left, region, motion.step_start);
        region_changes.push_back({motion.agent, left});
    }
    return region_changes;
}

}  // namespace pedflux::engine
