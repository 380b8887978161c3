#include "engine/behaviour/triggers/transition_states.h"
#include "engine/model/node_handles.h"

#include <pedflux/transitions.h>

#include <utility>

#include <fmt/format.h>

namespace pedflux {

using engine::change;

Transition::Transition(engine::NodePointer node) : node_(std::move(node)) {}
Transition::Transition(Transition const& other) : node_(engine::copy_of(engine::node_of(other))) {}
Transition::~Transition() = default;

int Transition::GetTransitionType() { return engine::type_of(*this); }
std::shared_ptr<Transition> Transition::Clone() { return engine::clone_of(*this); }
bool Transition::IsValidChild(std::shared_ptr<Transition> const& child) {
    return GetTransitionType() == static_cast<int>(TransitionType::ANY_OF) && engine::may_hold(*this, child);
}
int Transition::GetChildTransitionCount() { return static_cast<int>(engine::children_of(*this).size()); }
std::vector<std::shared_ptr<Transition>> Transition::GetChildTransitions() { return engine::children_of(*this); }
std::shared_ptr<Transition> Transition::GetChildTransition(int index) { return engine::child_of(*this, index); }

std::shared_ptr<Transition> Transition::AnyOf(std::vector<std::shared_ptr<Transition>> const& children) {
    return std::make_shared<AnyOfTransition>(children);
}
std::shared_ptr<Transition> Transition::AreaEnter(GlobalId const& area) {
    return std::make_shared<EnterAreaTransition>(area);
}
std::shared_ptr<Transition> Transition::AreaExit(GlobalId const& area) {
    return std::make_shared<ExitAreaTransition>(area);
}
std::shared_ptr<Transition> Transition::AtPortal(GlobalId const& portal) {
    return std::make_shared<AtPortalTransition>(portal);
}
std::shared_ptr<Transition> Transition::ChannelTransition(GlobalId const& from, GlobalId const& to) {
    return std::make_shared<BetweenObjectsTransition>(from, to);
}
std::shared_ptr<Transition> Transition::ServerEnter(GlobalId const& server) {
    return std::make_shared<EnterServerTransition>(server);
}
std::shared_ptr<Transition> Transition::ServerExit(GlobalId const& server) {
    return std::make_shared<ExitServerTransition>(server);
}
std::shared_ptr<Transition> Transition::SimEnter(GlobalId const& object) {
    return std::make_shared<EnterSimulationTransition>(object);
}
std::shared_ptr<Transition> Transition::SimExit(GlobalId const& object) {
    return std::make_shared<ExitSimulationTransition>(object);
}

AnyOfTransition::AnyOfTransition(std::shared_ptr<Transition> const& first, std::shared_ptr<Transition> const& second)
    : AnyOfTransition(std::vector{first, second}) {}

/// A list of transitions that make one up.
#define PEDFLUX_ACCESS_CHILDREN(Class, Type, Name, member)                                           \
    void Class::AddChildTransition(std::shared_ptr<Transition> const& child) {                       \
        change<engine::Class##State>(*this, [&](auto& state) { state.member.push_back(child); });    \
    }                                                                                                \
    void Class::ClearChildTransitions() { SetChildTransitions({}); }                                 \
    void Class::SetChildTransition(int index, std::shared_ptr<Transition> const& child) {            \
        change<engine::Class##State>(*this, [&](auto& state) {                                       \
            state.member[engine::checked_index(state, "child", index, state.member.size())] = child; \
        });                                                                                          \
    }                                                                                                \
    void Class::SetChildTransitions(Type const& children) {                                          \
        change<engine::Class##State>(*this, [&](auto& state) { state.member = children; });          \
    }

#define TRANSITION(Class, type, ...)                    \
    PEDFLUX_CONSTRUCTOR(Transition, Class, __VA_ARGS__) \
    PEDFLUX_ACCESSORS(Class, __VA_ARGS__)
#include "engine/behaviour/triggers/transition_table.def"

namespace engine {

void BetweenObjectsTransitionState::check(Subject const& subject, BetweenObjectsTransitionState const& self) {
    if (subject.owner.node != nullptr || !self.from.InternalEquals(self.to)) return;
    Subject{subject.owner, subject.property.empty() ? "toObject" : subject.property + ".toObject"}.refuse(
        "another object than fromObject", fmt::format("{} as well", GlobalId(self.to).GetString()));
}

template <>
std::span<KindOfNode<Transition> const* const> kinds_of<Transition>() {
    static KindOfNode<Transition> const* const kinds[] = {
#define TRANSITION(Class, ...) &node_kind<Transition, Class##State>(),
#include "engine/behaviour/triggers/transition_table.def"
    };
    return kinds;
}

}  // namespace engine
}  // namespace pedflux
