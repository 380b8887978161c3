#include "bindings/table.h"

#include <pedflux/identifiers.h>
#include <pedflux/value_pairs.h>

namespace pedflux::jni {

CLASS(IdValuePair)
CONSTRUCTOR_OVERLOAD(IdValuePair, 0)
CONSTRUCTOR_OVERLOAD(IdValuePair, 1, GlobalId const&, double)
PROPERTY(IdValuePair, Id)
PROPERTY(IdValuePair, Value)

CLASS(DurationValuePair)
CONSTRUCTOR_OVERLOAD(DurationValuePair, 0)
CONSTRUCTOR_OVERLOAD(DurationValuePair, 1, double, double)
PROPERTY(DurationValuePair, DurationInSeconds)
PROPERTY(DurationValuePair, Value)

}  // namespace pedflux::jni
