#include "bindings/table.h"

#include <pedflux/identifiers.h>
#include <pedflux/time_references.h>

namespace pedflux::jni {

CLASS(TimeReference)
METHOD(TimeReference, absolute, Absolute)
METHOD(TimeReference, afterSimulationStart, AfterSimulationStart)
METHOD(TimeReference, beforeSimulationEnd, BeforeSimulationEnd)
METHOD(TimeReference, afterEventStart, AfterEventStart)
GET(TimeReference, TimeReferenceFrame)

CLASS(TimeObject, SimObject)
GET(TimeObject, TypeId)
PROPERTY(TimeObject, TimeReference)
SET(TimeObject, AbsoluteTime)

}  // namespace pedflux::jni
