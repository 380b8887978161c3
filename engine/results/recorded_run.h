#pragma once

#include "engine/geometry/plane.h"
#include "engine/geometry/vector.h"

#include <pedflux/identifiers.h>

#include <array>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

/// What a run leaves behind. The file is an SQLite database with these tables:
///
///     meta     name, value: the fields of RunInfo and the last frame
///     surfaces number, id, name, kind, shape: where people could walk, as it was simulated
///     agents   number, id and what is known of each person as a whole
///     frames   number, states: one AgentFrame after the other, in the order of agents
///     episodes agent, kind, object, first_frame, last_frame: what was so for a part of a person's stay
///     joins    connection, floor: the numbers of surfaces that touched
///     objects  text: the project's zones and named filters, as in project files
///
/// Its application id is "pfdb", its user version the version of the format. Format 1 has no episodes, joins, objects
/// and events of agents, and the activity of each state is 0.
namespace pedflux::engine {

inline constexpr std::int64_t application_id = 0x70666462;
inline constexpr std::int64_t format_version = 2;
/// The first format that tells what filters ask: activities, tokens, servers and the events that agents come from.
inline constexpr std::int64_t format_with_doings = 2;
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

/// A person over the whole run. Identifiers that do not apply are invalid.
struct AgentRecord {
    GlobalId profile;
    GlobalId origin;
    GlobalId destination;
    int first_frame = 0;
    int last_frame = 0;
    bool arrived = false;
    GlobalId event = {};  ///< that created it
};

/// Something that was so for a person in all frames from the first to the last.
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

/// What a run knows of the project besides the surfaces.
struct RecordedProject {
    std::vector<Join> joins;
    std::vector<std::string> objects;
};

/// A person in one frame, as the bytes of the file: metres, seconds, degrees, persons per square metre.
struct AgentFrame {
    std::uint32_t agent = 0;
    std::uint16_t surface = 0;
    std::uint8_t movement = 0;
    std::uint8_t activity = 0;  ///< an AgentActivity
    std::array<std::uint8_t, 4> color{};
    float x = 0;
    float y = 0;
    float z = 0;
    float heading = 0;
    float speed = 0;
    float radius = 0;
    float density = 0;
    float animation_time = 0;
};
static_assert(std::is_trivially_copyable_v<AgentFrame> && sizeof(AgentFrame) == 44);

}  // namespace pedflux::engine
