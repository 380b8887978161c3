#pragma once

#include "engine/behaviour/object_rules.h"
#include "engine/model/check.h"
#include "engine/model/enumerations.h"
#include "engine/model/node.h"
#include "engine/model/node_table.h"

#include <pedflux/tallies.h>
#include <pedflux/transitions.h>

#include <memory>
#include <string_view>
#include <vector>

/// The states of tallies: see engine/model/node.h and tally_table.def.
namespace pedflux::engine {

PEDFLUX_NAMES(ZeroOverZeroValue, {{ZeroOverZeroValue::ZERO, "ZERO"},
                                  {ZeroOverZeroValue::ONE, "ONE"},
                                  {ZeroOverZeroValue::INFINITE, "INFINITE"}});

inline constexpr RefersTo A_WALKABLE_OBJECT =
    refers_to<WalkableState>("a floor, link, stair, ramp or other walkable object");

#define TALLY(Class, type, ...)              \
    struct Class##State : NodeState {        \
        PEDFLUX_KIND(TallyType, Class, type) \
        PEDFLUX_PROPERTIES(__VA_ARGS__)      \
    };
#include "engine/behaviour/tallies/tally_table.def"

}  // namespace pedflux::engine
