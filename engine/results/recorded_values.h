#pragma once

#include <pedflux/identifiers.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

/// The values that a run records of its agents, one line each. From a line follow the member of AgentFrame or
/// AgentRecord, its bytes or its column in the file, writing and reading it, and, of a measure, what AgentData shows.
/// engine/simulation/frame tells where the values come from.
///
/// The last entry is the first format that has the value. A new value is the last line of its list, with a new
/// `format_version`; in older files it is 0 or empty, and what depends on it asks first (`require_recorded`).
namespace pedflux::engine {

inline constexpr std::int64_t format_version = 2;
/// The first format that tells what filters ask: activities, tokens, servers and the events that agents come from.
inline constexpr std::int64_t format_with_doings = 2;

/// Red, green, blue and opacity in steps of 1/255.
using ColorBytes = std::array<std::uint8_t, 4>;

/// An agent in one frame, in the order of the bytes: metres, seconds, degrees, persons per square metre.
///
///     VALUE(type, name, format)
///     MEASURE(name, Name, member, format)  a float that AgentData shows by Get<Name> from a member of its own
///
/// The surface is a number, the movement an AgentMovement, the activity an AgentActivity.
#define PEDFLUX_FRAME_VALUES(VALUE, MEASURE) \
    VALUE(std::uint32_t, agent, 1)           \
    VALUE(std::uint16_t, surface, 1)         \
    VALUE(std::uint8_t, movement, 1)         \
    VALUE(std::uint8_t, activity, 1)         \
    VALUE(ColorBytes, color, 1)              \
    VALUE(float, x, 1)                       \
    VALUE(float, y, 1)                       \
    VALUE(float, z, 1)                       \
    MEASURE(heading, Heading, heading_, 1)   \
    MEASURE(speed, Speed, speed_, 1)         \
    MEASURE(radius, Radius, radius_, 1)      \
    MEASURE(density, Density, density_, 1)   \
    MEASURE(animation_time, AnimationTime, animationTime_, 1)

/// An agent over the whole run, in the order of the columns: VALUE(type, name, format). Identifiers that do not apply
/// are invalid. The event is the one that created the agent.
#define PEDFLUX_AGENT_VALUES(VALUE) \
    VALUE(GlobalId, profile, 1)     \
    VALUE(GlobalId, origin, 1)      \
    VALUE(GlobalId, destination, 1) \
    VALUE(int, first_frame, 1)      \
    VALUE(int, last_frame, 1)       \
    VALUE(bool, arrived, 1)         \
    VALUE(GlobalId, event, format_with_doings)

struct AgentFrame {
#define VALUE(Type, name, format) Type name{};
#define MEASURE(name, Name, member, format) float name = 0;
    PEDFLUX_FRAME_VALUES(VALUE, MEASURE)
#undef MEASURE
#undef VALUE
};

struct AgentRecord {
#define VALUE(Type, name, format) Type name{};
    PEDFLUX_AGENT_VALUES(VALUE)
#undef VALUE
};

#define COUNT(...) +1
inline constexpr int frame_value_count = 0 PEDFLUX_FRAME_VALUES(COUNT, COUNT);
inline constexpr int agent_value_count = 0 PEDFLUX_AGENT_VALUES(COUNT);
#undef COUNT

/// The bytes of an agent in the frames of a format, those of an AgentFrame's first values.
constexpr std::size_t bytes_of_agent_frame(std::int64_t in_format) {
    std::size_t bytes = 0;
#define VALUE(Type, name, format) bytes += (format) <= in_format ? sizeof(Type) : 0;
#define MEASURE(name, Name, member, format) VALUE(float, name, format)
    PEDFLUX_FRAME_VALUES(VALUE, MEASURE)
#undef MEASURE
#undef VALUE
    return bytes;
}
static_assert(std::is_trivially_copyable_v<AgentFrame>);
static_assert(bytes_of_agent_frame(format_version) == sizeof(AgentFrame), "there is no padding");
static_assert(bytes_of_agent_frame(1) == 44, "files of the first format stay readable");

}  // namespace pedflux::engine
