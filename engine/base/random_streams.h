#pragma once

#include <cstdint>

/// The first stream of random numbers of each purpose. The key of the person is added to it, of 32 bits, and above the
/// key the number of the draw, of 22 bits, so that no two purposes use the same stream.
namespace pedflux::engine::streams {

inline constexpr std::uint64_t of_events = std::uint64_t{1} << 40;  ///< the number of the start is 20 bits up
inline constexpr std::uint64_t of_pre_movement_times = std::uint64_t{1} << 41;
inline constexpr std::uint64_t of_placement = std::uint64_t{1} << 42;
inline constexpr std::uint64_t of_tallies = std::uint64_t{1} << 55;
inline constexpr std::uint64_t of_tally_changes = of_tallies + (std::uint64_t{1} << 40);
inline constexpr std::uint64_t of_delays_at_connections = std::uint64_t{1} << 56;
inline constexpr std::uint64_t of_wait_spaces = std::uint64_t{1} << 57;
inline constexpr std::uint64_t of_server_choices = std::uint64_t{1} << 58;
inline constexpr std::uint64_t of_contact_times = std::uint64_t{1} << 59;
inline constexpr std::uint64_t of_costs = std::uint64_t{1} << 60;
inline constexpr std::uint64_t of_clearances = std::uint64_t{1} << 61;
inline constexpr std::uint64_t of_circulation = std::uint64_t{1} << 62;

}  // namespace pedflux::engine::streams
