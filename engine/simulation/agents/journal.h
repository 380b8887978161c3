#pragma once

#include "engine/behaviour/triggers/crossing.h"
#include "engine/navigation/navigation_input.h"
#include "engine/results/recorded_run.h"
#include "engine/simulation/world/clock.h"
#include "engine/simulation/world/places.h"

#include <pedflux/agents.h>
#include <pedflux/issue.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

/// What happens in a simulation, written by the phase in which it happens and read by later ones.
namespace pedflux::engine {

/// What a FrameSummary tells.
struct FrameChanges {
    using Entry = std::pair<GlobalId, std::shared_ptr<Agent>>;

    std::vector<std::shared_ptr<Agent>> created;
    std::vector<std::shared_ptr<Agent>> deleted;
    std::vector<Entry> entered;   ///< a surface or portal
    std::vector<Entry> exited;    ///< a surface or portal
    std::vector<Entry> received;  ///< a token
    std::vector<Entry> lost;      ///< a token
};

/// Where an agent entered or left the simulation.
struct BoundaryCrossing {
    std::uint32_t agent = 0;
    navigation::RegionIndex region = navigation::none;
    Point position;
    std::uint32_t doorway = no_place;  ///< of the portal, if it was one
};

/// Spans of frames in which something holds for an agent.
struct Episodes {
    std::vector<Episode> all;                    ///< in the order in which they began
    std::vector<std::vector<std::size_t>> open;  ///< of each agent, in `all`
};

struct Journal {
    std::shared_ptr<FrameChanges> changes = std::make_shared<FrameChanges>();
    std::vector<BoundaryCrossing> entered;         ///< since transitions were counted
    std::vector<BoundaryCrossing> left;            ///< since transitions were counted
    std::vector<ServerCrossing> server_crossings;  ///< since transitions were counted
    Episodes episodes;
    std::vector<Issue> issues;
};

/// Begins an episode with the next frame; nothing happens when one of the kind and object is open for the agent.
void begin_episode(Episodes& episodes, Clock const& clock, std::uint32_t agent, EpisodeKind kind,
                   GlobalId const& object);
/// Ends it with this frame.
void end_episode(Episodes& episodes, Clock const& clock, std::uint32_t agent, EpisodeKind kind, GlobalId const& object);

}  // namespace pedflux::engine
