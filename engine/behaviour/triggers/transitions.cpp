#include "engine/behaviour/triggers/transition_states.h"
#include "engine/model/accessors.h"
#include "engine/model/node_kind.h"

#include <pedflux/transitions.h>

#include <utility>

namespace pedflux {

using engine::AnyOfTransitionState;
using engine::BetweenObjectsTransitionState;
using engine::change;
using engine::get;
using engine::make_node;
using engine::set;

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
AnyOfTransition::AnyOfTransition(std::vector<std::shared_ptr<Transition>> const& children)
    : Transition(make_node<Transition, AnyOfTransitionState>([&](auto& state) { state.children = children; })) {}
void AnyOfTransition::AddChildTransition(std::shared_ptr<Transition> const& child) {
    change<AnyOfTransitionState>(*this, [&](auto& state) { state.children.push_back(child); });
}
void AnyOfTransition::ClearChildTransitions() { SetChildTransitions({}); }
void AnyOfTransition::SetChildTransition(int index, std::shared_ptr<Transition> const& child) {
    change<AnyOfTransitionState>(*this, [&](auto& state) {
        state.children[engine::checked_index(state, "child", index, state.children.size())] = child;
    });
}
void AnyOfTransition::SetChildTransitions(std::vector<std::shared_ptr<Transition>> const& children) {
    change<AnyOfTransitionState>(*this, [&](auto& state) { state.children = children; });
}

BetweenObjectsTransition::BetweenObjectsTransition(GlobalId const& from, GlobalId const& to)
    : Transition(make_node<Transition, BetweenObjectsTransitionState>([&](auto& state) {
          state.from = from;
          state.to = to;
      })) {}
GlobalId BetweenObjectsTransition::GetFromObject() { return get(*this, &BetweenObjectsTransitionState::from); }
void BetweenObjectsTransition::SetFromObject(GlobalId const& from) {
    set(*this, &BetweenObjectsTransitionState::from, from);
}
GlobalId BetweenObjectsTransition::GetToObject() { return get(*this, &BetweenObjectsTransitionState::to); }
void BetweenObjectsTransition::SetToObject(GlobalId const& to) { set(*this, &BetweenObjectsTransitionState::to, to); }

#define TRANSITION(Name, type, member, Member, rule)                                                                \
    Name##Transition::Name##Transition(GlobalId const& member)                                                      \
        : Transition(                                                                                               \
              make_node<Transition, engine::Name##TransitionState>([&](auto& state) { state.member = member; })) {} \
    PROPERTY(Name##Transition, GlobalId, Member, member)
PEDFLUX_TRANSITIONS_OF_AN_OBJECT(TRANSITION)
#undef TRANSITION

namespace engine {

void BetweenObjectsTransitionState::check(Subject const& subject, BetweenObjectsTransitionState const& self) {
    if (subject.owner.node != nullptr || !self.from.InternalEquals(self.to)) return;
    Subject{subject.owner, subject.property.empty() ? "toObject" : subject.property + ".toObject"}.refuse(
        "another object than fromObject", GlobalId(self.to).GetString() + " as well");
}

template <>
std::span<KindOfNode<Transition> const* const> kinds_of<Transition>() {
#define KIND(Name, ...) &node_kind<Transition, Name##TransitionState>(),
    static KindOfNode<Transition> const* const kinds[] = {KIND(AnyOf) KIND(BetweenObjects)
                                                              PEDFLUX_TRANSITIONS_OF_AN_OBJECT(KIND)};
#undef KIND
    return kinds;
}

}  // namespace engine
}  // namespace pedflux
