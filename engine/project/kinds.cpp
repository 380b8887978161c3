#include "engine/project/kinds.h"

#include "engine/model/state.h"
#include "engine/project/all_kinds.h"

namespace pedflux::engine {

#define DECLARE(Class, ...) struct Class##State;
PEDFLUX_KINDS(DECLARE)

Kinds object_kinds() {
#define ENTRY(Class, ...) &kind_of<Class##State>(),
    static Kind const* const table[] = {PEDFLUX_KINDS(ENTRY)};
    return table;
}

}  // namespace pedflux::engine
