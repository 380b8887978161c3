#include "bindings/table.h"

#include <pedflux/identifiers.h>

namespace pedflux::jni {

CLASS(GlobalId)
CONSTRUCTOR_OVERLOAD(GlobalId, 0)
CONSTRUCTOR_OVERLOAD(GlobalId, 1, std::string const&)
CONSTANT(GlobalId, INVALID)
METHOD(GlobalId, generate, Generate)
GET(GlobalId, String)
IS(GlobalId, Valid)
METHOD(GlobalId, internalEquals, InternalEquals)
METHOD(GlobalId, internalHashCode, InternalHashCode)
METHOD(GlobalId, internalCompare, InternalCompare)

}  // namespace pedflux::jni
