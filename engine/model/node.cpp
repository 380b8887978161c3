#include "engine/model/node.h"

#include "engine/model/node_kind.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <string>

#include <fmt/format.h>

namespace pedflux::engine {

void NodeRelease::operator()(NodeState* state) const noexcept {
    // What a node holds waits until the node itself is gone, so that a long chain does not exhaust the stack.
    thread_local NodeState* waiting = nullptr;
    thread_local bool releasing = false;
    state->next_released = waiting;
    waiting = state;
    if (releasing) return;
    releasing = true;
    while (waiting != nullptr) {
        NodeState* const next = waiting;
        waiting = next->next_released;
        delete next;
    }
    releasing = false;
}

namespace {

/// How far a node reaches. A node that is shared counts wherever it stands, as it does when it is copied or saved.
struct Extent {
    int levels = 0;
    int nodes = 0;
    bool is_allowed() const { return levels <= deepest_node && nodes <= most_nodes; }
};

/// Counts no further than what is allowed.
void measure(NodeState const& state, int level, Extent& extent) {
    extent.levels = std::max(extent.levels, level);
    ++extent.nodes;
    visit_nodes(fields_in(state), [&](HeldNode const& held) {
        if (extent.is_allowed()) measure(held.node, level + 1, extent);
    });
}

bool fits(NodeState const& state, int level) {
    Extent extent;
    measure(state, level, extent);
    return extent.is_allowed();
}

bool holds(NodeState const& state, NodeState const& wanted) {
    bool found = &state == &wanted;
    visit_nodes(fields_in(state), [&](HeldNode const& held) { found = found || holds(held.node, wanted); });
    return found;
}

[[noreturn]] void refuse_extent(NodeState const& state) {
    throw Exception(fmt::format("{}: nested deeper than {} levels or with more than {} parts", state.kind->name,
                                deepest_node, most_nodes));
}

}  // namespace

NodePointer copy_of(NodeState const& state) {
    require_shallow(state);
    NodePointer copied = state.kind->copy(state);
    take_copies(state.kind->fields(), copied.get());
    return copied;
}

void require_shallow(NodeState const& state) {
    if (!fits(state, 1)) refuse_extent(state);
}

std::size_t checked_index(NodeState const& state, std::string_view what, int index, std::size_t count) {
    if (index < 0 || static_cast<std::size_t>(index) >= count) {
        throw Exception(fmt::format("{}: there is no {} {}, it has {}", state.kind->name, what, index, count));
    }
    return static_cast<std::size_t>(index);
}

bool may_hold_node(NodeState const& parent, NodeState const& child) { return fits(child, 2) && !holds(child, parent); }

void require_may_hold(NodeState const& parent, std::string_view property, NodeState const& child) {
    if (!fits(child, 2)) refuse_extent(parent);
    if (holds(child, parent)) {
        throw Exception(fmt::format("{0}: {1} must not be or hold the {0} itself", parent.kind->name, property));
    }
}

void check_new_node(NodeState const& node) {
    require_may_hold_all(node, node);
    check_node(owner_of(node), "", node);
}

void require_may_hold_all(NodeState const& parent, NodeState const& changed) {
    visit_nodes(fields_in(changed), [&](HeldNode const& held) { require_may_hold(parent, held.name, held.node); });
}

}  // namespace pedflux::engine
