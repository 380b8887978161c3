#include "bindings/table.h"

#include <pedflux/color.h>
#include <pedflux/color_functions.h>

namespace pedflux::jni {

CLASS(ColorFunction)
CREATE(ColorFunction, Custom)
CREATE(ColorFunction, FruinWalkway)
CREATE(ColorFunction, FruinStairway)
CREATE(ColorFunction, FruinPlatform)
CREATE(ColorFunction, IATAWaitCirculate)
GET(ColorFunction, ColorTransition)
GET(ColorFunction, MinValue)
GET(ColorFunction, MaxValue)

}  // namespace pedflux::jni
