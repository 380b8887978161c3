#pragma once

#include <cstddef>

namespace pedflux::engine::crowd {

/// How often this program has asked for memory so far.
std::size_t allocations();

}  // namespace pedflux::engine::crowd
