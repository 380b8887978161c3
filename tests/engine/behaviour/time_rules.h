#pragma once

#include "engine/behaviour/access/access_rule_states.h"
#include "engine/behaviour/events/time_reference.h"
#include "engine/behaviour/triggers/transition_states.h"
#include "engine/behaviour/triggers/trigger_range_states.h"
#include "engine/behaviour/triggers/trigger_states.h"
#include "tests/engine/behaviour/agent_rules.h"

#include <memory>
#include <string>
#include <vector>

/// What the tests of triggers, transitions and access rules have in common.
namespace pedflux::engine {

struct SomeCordonState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::CORDON;
    static constexpr std::string_view NAME = "SomeCordon";
    using Handle = SimObject;
};

struct TimeRules : AgentRules {
    GlobalId cordon = document.add<SomeCordonState>("Cordon").id;

    static std::vector<Kind const*> kinds() {
        auto const known = known_kinds();
        std::vector<Kind const*> all(known.begin(), known.end());
        all.insert(all.end(), {&kind_of<SomeCordonState>(), &kind_of<TriggerObjectState>(), &kind_of<TimeObjectState>(),
                               &kind_of<GateAccessState>(), &kind_of<ServerAccessState>(), &kind_of<TokenState>()});
        return all;
    }

    /// The document after it was saved and opened, without a warning and equal.
    std::unique_ptr<Document> reopened() const {
        auto opened = from_text(to_text(document), kinds());
        EXPECT_THAT(differences(document, *opened), testing::IsEmpty());
        EXPECT_THAT(opened->open_warnings, testing::IsEmpty());
        return opened;
    }
};

}  // namespace pedflux::engine
