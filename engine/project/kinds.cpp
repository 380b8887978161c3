#include "engine/project/kinds.h"

#include "engine/model/state.h"
#include "engine/project/kind_list.h"

namespace pedflux::engine {

// kind_list.h has the list.
#define DECLARE(Name) struct Name##State;
PEDFLUX_KINDS(DECLARE)

Kinds object_kinds() {
#define ENTRY(Name) &kind_of<Name##State>(),
    static Kind const* const table[] = {PEDFLUX_KINDS(ENTRY)};
    return table;
}

}  // namespace pedflux::engine
