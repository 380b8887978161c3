#pragma once

#include <cstddef>

/// A program with allocations.cpp counts what it and the libraries in it take from the heap by `new`.
namespace pedflux {

/// How often memory was asked for so far.
std::size_t allocations();

/// The bytes that were asked for and not given back.
std::size_t live_bytes();

}  // namespace pedflux
