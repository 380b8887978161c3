#include "bindings/table.h"

#include <pedflux/identifiers.h>
#include <pedflux/objects.h>
#include <pedflux/selection.h>

namespace pedflux::jni {

CLASS(Selection)
METHOD(Selection, add, Add)
METHOD(Selection, remove, Remove)
METHOD(Selection, toggle, Toggle)
SET(Selection, Object)
IS(Selection, Selected)
SET(Selection, Objects)
GET(Selection, SelectedObjects)
METHOD(Selection, clear, Clear)
GET(Selection, Count)
IS(Selection, Empty)

}  // namespace pedflux::jni
