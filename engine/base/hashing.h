#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <initializer_list>

/// Equality and hashing of value classes, which are consistent: 0 equals -0 and NaN equals NaN.
namespace pedflux::engine {

inline bool same_component(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

/// Mixes all bits: the finaliser of SplitMix64 (Steele, Lea, Flood: "Fast splittable pseudorandom number generators",
/// 2014).
constexpr std::uint64_t mixed(std::uint64_t bits) {
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9U;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111ebU;
    return bits ^ (bits >> 31);
}

/// The words, in order, mixed into 64 bits: a step of SplitMix64 for each.
constexpr std::uint64_t mixed(std::initializer_list<std::uint64_t> words) {
    constexpr std::uint64_t golden_gamma = 0x9e3779b97f4a7c15U;
    std::uint64_t bits = 0;
    for (std::uint64_t const word : words) bits = mixed(bits + golden_gamma + word);
    return bits;
}

/// A number of [0, 1) made of the upper 53 bits.
constexpr double unit_interval(std::uint64_t bits) { return static_cast<double>(bits >> 11) * 0x1p-53; }

inline int hash_of_words(std::initializer_list<std::uint64_t> words) {
    std::uint64_t const hash = mixed(words);
    return static_cast<int>(static_cast<std::uint32_t>(hash ^ (hash >> 32)));
}

inline std::uint64_t hashed_bits(double component) {
    if (component == 0) return 0;
    return std::isnan(component) ? ~std::uint64_t{0} : std::bit_cast<std::uint64_t>(component);
}

}  // namespace pedflux::engine
