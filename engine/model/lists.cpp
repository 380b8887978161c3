#include "engine/model/lists.h"

#include <algorithm>
#include <string>

namespace pedflux::engine {

bool lists(std::vector<GlobalId> const& list, GlobalId const& id) {
    return std::ranges::any_of(list, [&](GlobalId const& other) { return other.InternalEquals(id); });
}

void add_to_list(ObjectState const& state, std::vector<GlobalId>& list, std::vector<GlobalId> const& ids) {
    Field const& field = field_at(fields_in(state), &list, typeid(list));
    for (auto const& id : ids) check_value(owner_of(state), std::string(field.name), id, field.rule);
    for (auto const& id : ids) {
        if (!lists(list, id)) list.push_back(id);
    }
}

std::ptrdiff_t index_in_list(ObjectState const& state, std::vector<GlobalId> const& list, GlobalId const& id) {
    auto const found = std::ranges::find_if(list, [&](GlobalId const& other) { return other.InternalEquals(id); });
    if (found == list.end()) {
        Field const& field = field_at(fields_in(state), &list, typeid(list));
        Subject{owner_of(state), std::string(field.name)}.refuse("a list that has " + GlobalId(id).GetString(),
                                                                 "one without it");
    }
    return found - list.begin();
}

}  // namespace pedflux::engine
