#pragma once

#include "engine/model/check.h"
#include "engine/model/fields.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// What is done with values of any type by the descriptions of their types.
namespace pedflux::engine {

/// Throws Exception when a value, or anything in it, breaks its rule. The rule of an optional value or of a list holds
/// for what is in it as well.
void check_value(Owner const& owner, std::string const& path, FieldType const& type, void const* value,
                 FieldRule const& rule);
void check_fields(Owner const& owner, std::string const& path, Fields const& fields);
/// The same for a node and for an object, whose kinds may have a rule that binds several fields together.
void check_node(Owner const& owner, std::string const& path, NodeState const& node);
void check_object(ObjectState const& object);

template <class T>
void check_value(Owner const& owner, std::string const& path, T const& value, FieldRule const& rule) {
    if constexpr (Described<T>) {
        check_fields(owner, path, fields_in(value));
    } else {
        check_value(owner, path, field_type<T>(), &value, rule);
    }
}

/// Adds every identifier in a value to the references of its owner.
void collect_references(ObjectState const* owner, FieldType const& type, void const* value, FieldRule const& rule,
                        std::vector<Reference>& found);
void collect_references(ObjectState const* owner, Fields const& fields, std::vector<Reference>& found);

template <class T>
void collect_references(ObjectState const* owner, T const& value, std::vector<Reference>& found) {
    if constexpr (Described<T>) {
        collect_references(owner, fields_in(value), found);
    } else {
        collect_references(owner, field_type<T>(), &value, NoRule{}, found);
    }
}

/// A node that stands directly in a state, and the pointer to it.
struct HeldNode {
    std::string_view name;  ///< of the field
    FieldType const& type;
    void const* pointer;
    NodeState& node;
};

void visit_nodes(Fields const& fields, std::function<void(HeldNode const&)> const& visit);

/// Replaces everything shared in an object by a copy.
void take_copies(FieldTable table, void* origin);

}  // namespace pedflux::engine
