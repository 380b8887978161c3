#pragma once

#include "engine/geometry/plane.h"
#include "engine/geometry/vector.h"
#include "engine/results/recorded_values.h"

#include <pedflux/identifiers.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// A recorded run. The file is an SQLite database with these tables:
///
///     meta     name, value: the fields of RunInfo and the last frame
///     surfaces number, id, name, kind, shape: where people could walk, as it was simulated
///     agents   number and an AgentRecord, column by column
///     frames   number, states: one AgentFrame after the other, in the order of agents
///     episodes agent, kind, object, first_frame, last_frame: facts that hold for a part of an agent's stay
///     joins    connection, floor: the numbers of surfaces that touched
///     objects  text: the project's zones and named filters, as in project files
///
/// Its application id is "pfdb", its user version the version of the format. Format 1 has no episodes, joins, objects
/// and events of agents, and the activity of each state is 0.
namespace pedflux::engine {

inline constexpr std::int64_t application_id = 0x70666462;
inline constexpr int first_frame = 1;

struct RunInfo {
    std::string project;
    int frame_rate = 1;  ///< frames per second
    int start_time = 0;  ///< seconds after midnight
};

enum class SurfaceKind : std::uint8_t { LEVEL = 0, STAIR = 1 };

/// Where people walk on one object: its area in the plan, and the triangles that give its height there.
struct Surface {
    GlobalId id;
    std::string name;
    SurfaceKind kind = SurfaceKind::LEVEL;
    Polygons walkable;
    std::vector<std::array<Vector, 3>> faces;
};

/// A fact that holds for an agent in all frames from the first to the last.
enum class EpisodeKind : std::uint8_t { HELD_TOKEN = 0, AT_SERVER = 1 };
struct Episode {
    std::uint32_t agent = 0;
    EpisodeKind kind = EpisodeKind::HELD_TOKEN;
    GlobalId object = {};
    int first_frame = 0;
    int last_frame = 0;
};

/// A link, stair or ramp, and a floor that it ends at, by the numbers of their surfaces.
struct Join {
    std::uint16_t connection = 0;
    std::uint16_t floor = 0;
};

/// The parts of the project that a run records besides the surfaces.
struct RecordedProject {
    std::vector<Join> joins;
    std::vector<std::string> objects;
};

}  // namespace pedflux::engine
