#pragma once

#include <cstdint>

/// Where the streams of random numbers of each purpose begin, so that no two purposes ever draw the same numbers. To a
/// beginning the key of the person is added, of 32 bits, and above it the number of the draw, of 22.
namespace pedflux::engine::streams {

inline constexpr std::uint64_t of_events = std::uint64_t{1} << 40;  ///< a start's number stands 20 bits up
inline constexpr std::uint64_t of_pre_movement_times = std::uint64_t{1} << 41;
inline constexpr std::uint64_t of_placement = std::uint64_t{1} << 42;
inline constexpr std::uint64_t of_delays_at_connections = std::uint64_t{1} << 56;
inline constexpr std::uint64_t of_wait_spaces = std::uint64_t{1} << 57;
inline constexpr std::uint64_t of_server_choices = std::uint64_t{1} << 58;
inline constexpr std::uint64_t of_contact_times = std::uint64_t{1} << 59;
inline constexpr std::uint64_t of_costs = std::uint64_t{1} << 60;
inline constexpr std::uint64_t of_clearances = std::uint64_t{1} << 61;
inline constexpr std::uint64_t of_circulation = std::uint64_t{1} << 62;

}  // namespace pedflux::engine::streams
