#include "bindings/table.h"

#include <pedflux/level_of_service.h>

namespace pedflux::jni {

CLASS(LevelOfService)
CONSTRUCTOR(LevelOfService)
GET(LevelOfService, Density)
GET(LevelOfService, Level)
GET(LevelOfService, Standard)

}  // namespace pedflux::jni
