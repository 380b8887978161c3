#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>

#include <memory>
#include <vector>

namespace pedflux {

namespace engine {
struct DefinedMembers;
struct NetworkDefinitionAccess;
}  // namespace engine

/// Which of the elevators, escalators, paths, ramps and stairs of a project belong to a network: all of a kind, or only
/// the named ones. The other network objects, such as floors, links, portals and servers, always belong to it.
///
/// A new definition includes all of every kind. A definition is not part of a project: the identifiers in it are looked
/// up when a network takes it, and the network keeps a copy.
class PEDFLUX_API NetworkDefinition {
  public:
    NetworkDefinition();
    NetworkDefinition(NetworkDefinition const&) = delete;
    NetworkDefinition& operator=(NetworkDefinition const&) = delete;
    ~NetworkDefinition();

    bool IsIncludeAllElevators();
    void SetIncludeAllElevators(bool include);
    bool IsIncludeAllEscalators();
    void SetIncludeAllEscalators(bool include);
    bool IsIncludeAllPaths();
    void SetIncludeAllPaths(bool include);
    bool IsIncludeAllRamps();
    void SetIncludeAllRamps(bool include);
    bool IsIncludeAllStairs();
    void SetIncludeAllStairs(bool include);

    /// The objects that are included by name.
    std::vector<GlobalId> GetIncludeObjects();
    /// @param objects network objects, each of them once
    void SetIncludeObjects(std::vector<GlobalId> const& objects);

  private:
    friend engine::NetworkDefinitionAccess;
    std::unique_ptr<engine::DefinedMembers> const members_;
};

/// The network objects that the routes of some people may use.
///
/// A new network has all network objects of the project as members, also those that are added later.
class PEDFLUX_API Network : public SimObject {
  public:
    using SimObject::SimObject;

    bool IsUsingAllObjects();
    void SetUsingAllObjects();

    bool IsExcludingObjects();
    /// The objects that are no members; none unless set by excluding objects.
    std::vector<GlobalId> GetExcludedObjects();
    /// All network objects except some are members.
    /// @param objects network objects, each of them once
    void SetByExcludingObjects(std::vector<GlobalId> const& objects);

    bool IsIncludingObjectsOnly();
    /// The objects that are the members; none unless set by including objects.
    std::vector<GlobalId> GetIncludedObjects();
    /// Only the given objects are members.
    /// @param objects network objects, each of them once
    void SetByIncludingObjects(std::vector<GlobalId> const& objects);

    bool IsUsingNetworkDefinition();
    /// A copy of the definition; empty when the network is not set by one.
    std::shared_ptr<NetworkDefinition> GetNetworkDefinition();
    /// @throws Exception when it is empty or names what is no network object of the project
    void SetByNetworkDefinition(std::shared_ptr<NetworkDefinition> const& definition);

    /// The members as the project stands now, in the order of their creation.
    std::vector<GlobalId> GetMembers();
    /// Whether an object is a member; not so for what is no network object of the project.
    bool IsMember(GlobalId const& object);
};

}  // namespace pedflux
