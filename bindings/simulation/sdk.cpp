#include "bindings/table.h"

#include <pedflux/sdk.h>

namespace pedflux::jni {

CLASS(Sdk)
METHOD(Sdk, init, Init)
METHOD(Sdk, fini, Fini)
IS(Sdk, Embedded)
PROPERTY(Sdk, InstallPath)
PROPERTY(Sdk, AvatarsPath)
PROPERTY(Sdk, FontsPath)
IS(Sdk, FeatureLoggingEnabled)
SET(Sdk, FeatureLoggingEnabled)
SET(Sdk, OutputLevel)

}  // namespace pedflux::jni
