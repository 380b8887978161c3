#include "engine/model/properties.h"

#include <string>
#include <variant>

namespace pedflux::engine {

void check_field(Owner const& owner, Fields const& fields, void const* place, std::type_info const& type,
                 void const* value) {
    Field const& field = field_at(fields, place, type);
    check_value(owner, std::string(field.name), *field.type, value, field.rule);
}

void check_field(NodeState const& node, void const* place, std::type_info const& type, void const* value) {
    Field const& field = field_at(fields_in(node), place, type);
    // First how far the node reaches, since the check goes all the way.
    if (auto const* const family = std::get_if<NodeType>(&field.type->shape)) {
        if (auto const* const held = family->get(value)) require_may_hold(node, field.name, *held);
    }
    check_value(owner_of(node), std::string(field.name), *field.type, value, field.rule);
}

void refuse_unset(Owner const& owner, Fields const& fields, void const* place, std::type_info const& type) {
    refuse_unset(owner, field_at(fields, place, type).name);
}

void refuse_empty(Owner const& owner, Fields const& fields, void const* place, std::type_info const& type) {
    refuse_empty(Subject{owner, std::string(field_at(fields, place, type).name)});
}

void check_changed_node(NodeState const& node, NodeState const& changed) {
    require_may_hold_all(node, changed);
    check_node(owner_of(node), "", changed);
}

}  // namespace pedflux::engine
