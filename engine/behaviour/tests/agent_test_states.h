#pragma once

#include "engine/behaviour/condition_names.h"
#include "engine/behaviour/events/time_reference.h"
#include "engine/behaviour/filters/agent_filter_states.h"
#include "engine/behaviour/object_rules.h"
#include "engine/model/enumerations.h"
#include "engine/model/node.h"
#include "engine/model/node_table.h"

#include <pedflux/agent_tests.h>
#include <pedflux/tallies.h>

#include <limits>
#include <memory>
#include <string_view>
#include <vector>

/// The states of agent tests: see engine/model/node.h and agent_test_table.def.
namespace pedflux::engine {

PEDFLUX_NAMES(AgentAgeComparison,
              {{AgentAgeComparison::YOUNGER_THAN, "YOUNGER_THAN"}, {AgentAgeComparison::OLDER_THAN, "OLDER_THAN"}});
PEDFLUX_NAMES(LogicQuantifier, {{LogicQuantifier::ALL_OF, "ALL_OF"},
                                {LogicQuantifier::ANY_OF, "ANY_OF"},
                                {LogicQuantifier::NONE_OF, "NONE_OF"}});
PEDFLUX_NAMES(TimeComparison, {{TimeComparison::BEFORE, "BEFORE"}, {TimeComparison::AFTER, "AFTER"}});

inline constexpr Range SINGLE_PRECISION_SECONDS{0, static_cast<double>(std::numeric_limits<float>::max()), "s"};
inline constexpr Range A_PROBABILITY{0, 1};

#define AGENT_TEST(Class, type, ...)             \
    struct Class##State : NodeState {            \
        PEDFLUX_KIND(AgentTestType, Class, type) \
        PEDFLUX_PROPERTIES(__VA_ARGS__)          \
    };
#include "engine/behaviour/tests/agent_test_table.def"

struct AgentTestObjectState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::AGENT_TEST_OBJECT;
    static constexpr std::string_view NAME = "AgentTestObject";
    using Handle = AgentTestObject;

    std::shared_ptr<AgentTest> test = std::make_shared<AlwaysTrueTest>();  ///< replaced, never changed

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("agentTest", self.test, must_be_given);
    }
};

}  // namespace pedflux::engine
