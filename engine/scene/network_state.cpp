#include "engine/scene/network_state.h"

#include "engine/model/lists.h"

#include <variant>

namespace pedflux::engine {

namespace {

bool includes_all_of(DefinedMembers const& definition, ObjectType kind) {
    switch (kind) {
        case ObjectType::ELEVATOR:
            return definition.all_elevators;
        case ObjectType::ESCALATOR:
            return definition.all_escalators;
        case ObjectType::PATH:
            return definition.all_paths;
        case ObjectType::RAMP:
            return definition.all_ramps;
        case ObjectType::STAIR:
            return definition.all_stairs;
        default:
            return true;
    }
}

struct Membership {
    NetworkObjectState const& object;

    bool operator()(AllMembers) const { return true; }
    bool operator()(AllMembersExcept const& members) const { return !lists(members.objects, object.id); }
    bool operator()(OnlyMembers const& members) const { return lists(members.objects, object.id); }
    bool operator()(DefinedMembers const& members) const {
        return includes_all_of(members, object.kind->type) || lists(members.objects, object.id);
    }
};

}  // namespace

bool is_member(NetworkState const& network, NetworkObjectState const& object) {
    return std::visit(Membership{object}, network.members);
}

}  // namespace pedflux::engine
