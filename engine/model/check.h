#pragma once

#include "engine/model/rules.h"
#include "engine/model/state.h"

#include <pedflux/identifiers.h>

#include <string>
#include <string_view>
#include <vector>

/// Refusals of values that break their fields' rules. Setters and opening a project share them.
namespace pedflux::engine {

struct NodeState;

/// The owner of checked values: an object, a node outside of projects, or, without either, the project's settings.
struct Owner {
    ObjectState const* object;
    Document const* document;  ///< none for an object that is no longer part of a project
    NodeState const* node = nullptr;
};

inline Owner owner_of(ObjectState const& object) { return {&object, object.document}; }
inline Owner owner_of(NodeState const& node) { return {nullptr, nullptr, &node}; }

/// A value's owner and path, for messages.
struct Subject {
    Owner owner;
    std::string property;

    /// Throws Exception: Stair 'Up': localAgentBodyRadius must be greater than 0 m, not -1.
    [[noreturn]] void refuse(std::string const& allowed, std::string const& found) const;
};

bool contains(Range const& range, double value);
/// The range for messages: greater than 0 and at most 2 m.
std::string described(Range const& range);

/// Throws Exception: DelayedTrigger: childTrigger must be given, not empty.
[[noreturn]] void refuse_empty(Subject const& subject);
/// Throws Exception: Stair 'Up' has no localAgentBodyRadius.
[[noreturn]] void refuse_unset(Owner const& owner, std::string_view property);

/// Throws Exception unless the project has such an object. Nodes outside of projects can refer to any.
void check_reference(Subject const& subject, GlobalId const& id, RefersTo const& rule);
/// Throws Exception when a list has an identifier twice.
void check_different(Subject const& subject, std::vector<GlobalId> const& ids);

/// The document that an object belongs to. Throws Exception when it belongs to none any more.
Document& document_of(ObjectState& object);

}  // namespace pedflux::engine
