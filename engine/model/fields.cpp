#include "engine/model/fields.h"

#include "engine/model/node.h"

#include <stdexcept>

namespace pedflux::engine {

Fields fields_in(NodeState const& state) { return {state.kind->fields(), &state}; }

Field const& field_at(Fields const& fields, void const* place, std::type_info const& type) {
    for (Field const& field : fields.table) {
        if (field.in(fields.origin) == place && *field.type->id == type) return field;
    }
    throw std::logic_error("the state does not list the field that is asked for");
}

void FieldList::add(std::string_view name, void const* member, FieldType const& type, FieldRule const& rule) {
    auto const offset = static_cast<std::byte const*>(member) - static_cast<std::byte const*>(origin_);
    fields_.push_back({name, offset, &type, rule});
}

}  // namespace pedflux::engine
