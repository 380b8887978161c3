#pragma once

#include "engine/model/rules.h"
#include "engine/model/state.h"
#include "engine/scene/scene_states.h"

#include <pedflux/networks.h>

#include <string_view>
#include <variant>
#include <vector>

/// The state of networks: see state.h for how a state lists its fields.
namespace pedflux::engine {

struct AllMembers {
    static constexpr std::string_view NAME = "AllObjects";

    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

struct ListedMembers {
    std::vector<GlobalId> objects;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("objects", self.objects,
              refers_to<NetworkObjectState>("a floor, portal, connection or other object that routes lead over"));
    }
};

struct AllMembersExcept : ListedMembers {
    static constexpr std::string_view NAME = "ExcludedObjects";
};

struct OnlyMembers : ListedMembers {
    static constexpr std::string_view NAME = "IncludedObjects";
};

/// The objects of a network definition, and kinds all of whose objects belong to it.
struct DefinedMembers : ListedMembers {
    static constexpr std::string_view NAME = "Definition";

    bool all_elevators = true;
    bool all_escalators = true;
    bool all_paths = true;
    bool all_ramps = true;
    bool all_stairs = true;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ListedMembers::fields(self, field);
        field("includeAllElevators", self.all_elevators);
        field("includeAllEscalators", self.all_escalators);
        field("includeAllPaths", self.all_paths);
        field("includeAllRamps", self.all_ramps);
        field("includeAllStairs", self.all_stairs);
    }
};

/// The state of a `Network`. The common state of the objects that can belong to one is `NetworkObjectState`.
struct NetworkState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::NETWORK;
    static constexpr std::string_view NAME = "Network";
    using Handle = Network;

    std::variant<AllMembers, AllMembersExcept, OnlyMembers, DefinedMembers> members;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("members", self.members);
    }
};

/// Whether an object is a member of a network.
bool is_member(NetworkState const& network, NetworkObjectState const& object);

}  // namespace pedflux::engine
