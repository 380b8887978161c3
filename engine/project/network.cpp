#include "engine/base/checks.h"
#include "engine/base/list_checks.h"
#include "engine/model/document.h"
#include "engine/model/properties.h"
#include "engine/scene/network_state.h"

#include <pedflux/networks.h>

#include <utility>
#include <variant>

#include <fmt/format.h>

namespace pedflux {

using engine::AllMembers;
using engine::AllMembersExcept;
using engine::DefinedMembers;
using engine::NetworkState;
using engine::OnlyMembers;

namespace engine {

struct NetworkDefinitionAccess {
    static DefinedMembers& members(NetworkDefinition& definition) { return *definition.members_; }
};

}  // namespace engine

namespace {

DefinedMembers& members_of(NetworkDefinition& definition) {
    return engine::NetworkDefinitionAccess::members(definition);
}

/// How the members are told, if it is in this way.
template <class Members>
Members const* members_by(Network& handle) {
    return std::get_if<Members>(&engine::get(handle, &NetworkState::members));
}

template <class Members>
std::vector<GlobalId> objects_of(Network& handle) {
    auto const* const members = members_by<Members>(handle);
    return members == nullptr ? std::vector<GlobalId>() : members->objects;
}

template <class Members>
void set_members(Network& handle, Members const& members) {
    engine::set(handle, &NetworkState::members, members);
}

}  // namespace

NetworkDefinition::NetworkDefinition() : members_(std::make_unique<DefinedMembers>()) {}
NetworkDefinition::~NetworkDefinition() = default;

#define INCLUDE_ALL(Kinds, field)                                                     \
    bool NetworkDefinition::IsIncludeAll##Kinds() { return members_of(*this).field; } \
    void NetworkDefinition::SetIncludeAll##Kinds(bool include) { members_of(*this).field = include; }

INCLUDE_ALL(Elevators, all_elevators)
INCLUDE_ALL(Escalators, all_escalators)
INCLUDE_ALL(Paths, all_paths)
INCLUDE_ALL(Ramps, all_ramps)
INCLUDE_ALL(Stairs, all_stairs)

std::vector<GlobalId> NetworkDefinition::GetIncludeObjects() { return members_of(*this).objects; }
void NetworkDefinition::SetIncludeObjects(std::vector<GlobalId> const& objects) {
    engine::require_distinct("NetworkDefinition: included object", objects);
    members_of(*this).objects = objects;
}

bool Network::IsUsingAllObjects() { return members_by<AllMembers>(*this) != nullptr; }
void Network::SetUsingAllObjects() { set_members(*this, AllMembers{}); }

bool Network::IsExcludingObjects() { return members_by<AllMembersExcept>(*this) != nullptr; }
std::vector<GlobalId> Network::GetExcludedObjects() { return objects_of<AllMembersExcept>(*this); }
void Network::SetByExcludingObjects(std::vector<GlobalId> const& objects) {
    set_members(*this, AllMembersExcept{{objects}});
}

bool Network::IsIncludingObjectsOnly() { return members_by<OnlyMembers>(*this) != nullptr; }
std::vector<GlobalId> Network::GetIncludedObjects() { return objects_of<OnlyMembers>(*this); }
void Network::SetByIncludingObjects(std::vector<GlobalId> const& objects) {
    set_members(*this, OnlyMembers{{objects}});
}

bool Network::IsUsingNetworkDefinition() { return members_by<DefinedMembers>(*this) != nullptr; }
std::shared_ptr<NetworkDefinition> Network::GetNetworkDefinition() {
    auto const* const members = members_by<DefinedMembers>(*this);
    if (members == nullptr) return nullptr;
    auto definition = std::make_shared<NetworkDefinition>();
    members_of(*definition) = *members;
    return definition;
}
void Network::SetByNetworkDefinition(std::shared_ptr<NetworkDefinition> const& definition) {
    if (!definition) {
        engine::refuse(fmt::format("{}: the network definition must be given, not empty",
                                   title_of(engine::state_of<NetworkState>(*this))));
    }
    set_members(*this, members_of(*definition));
}

std::vector<GlobalId> Network::GetMembers() {
    auto& network = engine::state_of<NetworkState>(*this);
    std::vector<GlobalId> members;
    for (auto const* const object : engine::document_of(network).objects<engine::NetworkObjectState>()) {
        if (is_member(network, *object)) members.push_back(object->id);
    }
    return members;
}
bool Network::IsMember(GlobalId const& object) {
    auto& network = engine::state_of<NetworkState>(*this);
    auto const* const found = engine::document_of(network).find<engine::NetworkObjectState>(object);
    return found != nullptr && is_member(network, *found);
}

}  // namespace pedflux
