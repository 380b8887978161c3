#include "bindings/table.h"

#include <pedflux/identifiers.h>
#include <pedflux/networks.h>

namespace pedflux::jni {

CLASS(Network, SimObject)
GET(Network, ExcludedObjects)
GET(Network, IncludedObjects)
GET(Network, Members)
GET(Network, NetworkDefinition)
GET(Network, TypeId)
IS(Network, ExcludingObjects)
IS(Network, IncludingObjectsOnly)
IS(Network, Member)
FLAG(Network, UsingAllObjects)
IS(Network, UsingNetworkDefinition)
SET(Network, ByExcludingObjects)
SET(Network, ByIncludingObjects)
SET(Network, ByNetworkDefinition)

CLASS(NetworkDefinition)
CONSTRUCTOR(NetworkDefinition)
PROPERTY(NetworkDefinition, IncludeObjects)
FLAG(NetworkDefinition, IncludeAllElevators)
FLAG(NetworkDefinition, IncludeAllEscalators)
FLAG(NetworkDefinition, IncludeAllPaths)
FLAG(NetworkDefinition, IncludeAllRamps)
FLAG(NetworkDefinition, IncludeAllStairs)

}  // namespace pedflux::jni
