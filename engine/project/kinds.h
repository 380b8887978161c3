#pragma once

#include "engine/model/saving.h"

namespace pedflux::engine {

/// Every kind of object that a project can hold.
Kinds object_kinds();

}  // namespace pedflux::engine
