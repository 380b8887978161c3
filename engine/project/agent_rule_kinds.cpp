#include "engine/behaviour/filters/agent_filter_states.h"
#include "engine/behaviour/tests/agent_test_states.h"
#include "engine/project/kind_list.h"
#include "engine/project/kind_table.h"

#include <pedflux/agent_filters.h>
#include <pedflux/agent_tests.h>

namespace pedflux {

PEDFLUX_AGENT_RULE_KINDS(OBJECT_KIND)

}  // namespace pedflux
