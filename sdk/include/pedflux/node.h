#pragma once

#include <pedflux/api.h>

#include <memory>

/// The opaque state behind triggers, tests, filters, actions, tallies, transitions and wait styles.
namespace pedflux::engine {

struct NodeAccess;
struct NodeState;

/// Releases a tree of any depth without recursion.
struct PEDFLUX_API NodeRelease {
    void operator()(NodeState* state) const noexcept;
};

using NodePointer = std::unique_ptr<NodeState, NodeRelease>;

}  // namespace pedflux::engine
