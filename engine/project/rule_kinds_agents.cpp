#include "engine/behaviour/filters/agent_filter_states.h"
#include "engine/behaviour/tests/agent_test_states.h"
#include "engine/project/kind_table.h"

#include <pedflux/agent_filters.h>
#include <pedflux/agent_tests.h>

namespace pedflux {

KIND(AgentFilterObject, AgentFilterObjects)
KIND(AgentTestObject, AgentTestObjects)

}  // namespace pedflux
