#pragma once

#include "engine/behaviour/distributions/distribution_handle.h"
#include "engine/behaviour/filters/agent_filter_states.h"
#include "engine/behaviour/tests/agent_test_states.h"
#include "engine/model/codec.h"
#include "engine/model/document.h"
#include "engine/model/kind.h"
#include "engine/model/saving.h"
#include "engine/scene/scene_states.h"

#include <pedflux/exception.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// What the tests of agent filters and of agent tests have in common.
namespace pedflux::engine {

/// Objects that rules can name, with no more to them than their kind and its base.
#define STAND_IN(Class, KIND, Base)                          \
    struct Class##State : Base {                             \
        static constexpr ObjectType TYPE = ObjectType::KIND; \
        static constexpr std::string_view NAME = #Class;     \
        using Handle = SimObject;                            \
                                                             \
        template <class Self, class Field>                   \
        static void fields(Self& self, Field&& field) {      \
            ObjectState::fields(self, field);                \
        }                                                    \
    };
STAND_IN(SomePortal, PORTAL, NetworkObjectState)
STAND_IN(SomeLink, LINK, ConnectionState)
STAND_IN(SomeVolume, VOLUME, SceneState)
STAND_IN(SomeServer, SERVER, ObjectState)
STAND_IN(SomeToken, TOKEN, ObjectState)
STAND_IN(SomeProfile, PROFILE, ObjectState)
STAND_IN(SomeJourney, JOURNEY, ObjectState)
STAND_IN(SomeBroadcast, BROADCAST, ObjectState)
#undef STAND_IN

inline Kinds known_kinds() {
    static Kind const* const kinds[] = {&kind_of<SomePortalState>(),        &kind_of<SomeLinkState>(),
                                        &kind_of<SomeVolumeState>(),        &kind_of<SomeServerState>(),
                                        &kind_of<SomeTokenState>(),         &kind_of<SomeProfileState>(),
                                        &kind_of<SomeJourneyState>(),       &kind_of<SomeBroadcastState>(),
                                        &kind_of<AgentFilterObjectState>(), &kind_of<AgentTestObjectState>()};
    return kinds;
}

struct AgentRules : testing::Test {
    Document document;
    GlobalId portal = document.add<SomePortalState>("Portal").id;
    GlobalId exit = document.add<SomePortalState>("Exit").id;
    GlobalId link = document.add<SomeLinkState>("Link").id;
    GlobalId volume = document.add<SomeVolumeState>("Volume").id;
    GlobalId server = document.add<SomeServerState>("Server").id;
    GlobalId token = document.add<SomeTokenState>("Token").id;
    GlobalId profile = document.add<SomeProfileState>("Profile").id;
    GlobalId journey = document.add<SomeJourneyState>("Journey").id;
    GlobalId broadcast = document.add<SomeBroadcastState>("Broadcast").id;

    template <class State>
    std::shared_ptr<typename State::Handle> create(std::string const& name) {
        return std::static_pointer_cast<typename State::Handle>(document.handle_of(document.add<State>(name)));
    }
};

template <class Base>
using NodePointerOf = std::shared_ptr<Base>;
template <class Base>
using NodeList = std::vector<NodePointerOf<Base>>;

template <class Base>
Json written(NodePointerOf<Base> const& rule) {
    return json_of<NodePointerOf<Base>>(rule);
}

/// Every kind of the family is there once, and no field of it has the value that a new one has.
template <class Base>
void expect_one_of_each_kind(NodeList<Base> const& rules) {
    std::map<std::string_view, int> count;
    for (auto const* const kind : kinds_of<Base>()) count[kind->name] = 0;
    for (auto const& rule : rules) {
        auto const& kind = *node_of(*rule).kind;
        ++count[kind.name];
        Json fresh = Json::object();
        write_fields(fields_in(*kind.make()), fresh);
        Json const filled = written(rule);
        for (auto const& [name, value] : fresh.items()) EXPECT_NE(filled[name], value) << kind.name << ": " << name;
    }
    for (auto const& [name, times] : count) EXPECT_EQ(times, 1) << name;
}

template <class Base>
void expect_distinct_numbers() {
    std::map<int, std::string_view> numbers;
    for (auto const* const kind : kinds_of<Base>()) {
        auto const [entry, is_new] = numbers.emplace(kind->type, kind->name);
        EXPECT_TRUE(is_new) << entry->second << " and " << kind->name << " share " << kind->type;
    }
}

/// A clone is of the same class, equal and shares no node.
template <class Base>
void expect_clones(NodeList<Base> const& rules) {
    std::function<void(NodeState const&, std::vector<NodeState const*>&)> const collect =
        [&](NodeState const& node, std::vector<NodeState const*>& nodes) {
            nodes.push_back(&node);
            visit_nodes(fields_in(node), [&](HeldNode const& held) { collect(held.node, nodes); });
        };
    for (auto const& rule : rules) {
        auto const clone = rule->Clone();
        auto const& face = *rule;
        auto const& cloned_face = *clone;
        EXPECT_EQ(typeid(face), typeid(cloned_face));
        EXPECT_EQ(written(rule), written(clone));
        std::vector<NodeState const*> nodes;
        std::vector<NodeState const*> cloned;
        collect(node_of(*rule), nodes);
        collect(node_of(*clone), cloned);
        ASSERT_EQ(nodes.size(), cloned.size());
        for (auto const* const node : cloned) EXPECT_THAT(nodes, testing::Not(testing::Contains(node)));
    }
}

}  // namespace pedflux::engine
