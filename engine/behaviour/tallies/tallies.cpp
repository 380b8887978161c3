#include "engine/behaviour/tallies/tally_states.h"
#include "engine/model/accessors.h"
#include "engine/model/node_kind.h"

#include <pedflux/tallies.h>

#include <type_traits>

namespace pedflux {

using engine::change;
using engine::get;
using engine::make_node;
using engine::set;

using Tallies = std::vector<std::shared_ptr<Tally>>;

Tally::Tally(engine::NodePointer node) : node_(std::move(node)) {}
Tally::Tally(Tally const& other) : node_(engine::copy_of(engine::node_of(other))) {}
Tally::~Tally() = default;

int Tally::GetTallyTypeId() { return engine::type_of(*this); }
std::shared_ptr<Tally> Tally::Clone() { return engine::clone_of(*this); }
int Tally::GetChildTallyCount() { return static_cast<int>(engine::children_of(*this).size()); }
std::shared_ptr<Tally> Tally::GetChildTally(int index) { return engine::child_of(*this, index); }
Tallies Tally::GetChildTallies() { return engine::children_of(*this); }
Tallies Tally::GetAllNestedChildTallies() { return engine::nested_children_of(*this); }

/// A tally of a single value.
#define OF_ONE(Class, Type, Name)                                                                     \
    Class::Class(Type const& value)                                                                   \
        : Tally(make_node<Tally, engine::Class##State>([&](auto& state) { state.value = value; })) {} \
    PROPERTY(Class, Type, Name, value)

/// A tally of a list of objects, or of one of them.
#define OF_OBJECTS(Class, Name)                \
    OF_ONE(Class, std::vector<GlobalId>, Name) \
    Class::Class(GlobalId const& object) : Class(std::vector{object}) {}

/// A tally of a list of tallies.
#define OF_TALLIES(Class)                                                                               \
    Class::Class(Tallies const& tallies)                                                                \
        : Tally(make_node<Tally, engine::Class##State>([&](auto& state) { state.value = tallies; })) {} \
    Class::Class(std::shared_ptr<Tally> const& first, std::shared_ptr<Tally> const& second)             \
        : Class(Tallies{first, second}) {}                                                              \
    void Class::AddChildTally(std::shared_ptr<Tally> const& tally) {                                    \
        change<engine::Class##State>(*this, [&](auto& state) { state.value.push_back(tally); });        \
    }                                                                                                   \
    void Class::ClearChildTallies() { SetChildTallies({}); }                                            \
    void Class::SetChildTally(int index, std::shared_ptr<Tally> const& tally) {                         \
        change<engine::Class##State>(*this, [&](auto& state) {                                          \
            state.value[engine::checked_index(state, "child", index, state.value.size())] = tally;      \
        });                                                                                             \
    }                                                                                                   \
    void Class::SetChildTallies(Tallies const& tallies) {                                               \
        change<engine::Class##State>(*this, [&](auto& state) { state.value = tallies; });               \
    }

/// A tally of a first and a second one.
#define OF_TWO(Class)                                                                       \
    Class::Class(std::shared_ptr<Tally> const& first, std::shared_ptr<Tally> const& second) \
        : Tally(make_node<Tally, engine::Class##State>([&](auto& state) {                   \
              state.first = first;                                                          \
              state.second = second;                                                        \
          })) {}                                                                            \
    PROPERTY(Class, std::shared_ptr<Tally>, FirstTally, first)                              \
    PROPERTY(Class, std::shared_ptr<Tally>, SecondTally, second)

OF_OBJECTS(AreaPopulationTally, Areas)
OF_OBJECTS(ServerAvailableCapacityTally, Servers)
OF_OBJECTS(ServerQueueAndApproachTally, Servers)
OF_OBJECTS(ServerQueueTally, Servers)
OF_OBJECTS(SurfaceAreaTally, WalkableObjects)
OF_ONE(NamedTally, GlobalId, TallyObject)
OF_ONE(TransitionTally, std::shared_ptr<Transition>, Transition)
OF_TALLIES(AddTally)
OF_TALLIES(MaxTally)
OF_TALLIES(MinTally)
OF_TWO(SubtractTally)
OF_TWO(MultiplyTally)

VariableTally::VariableTally(double value)
    : Tally(make_node<Tally, engine::VariableTallyState>([&](auto& state) { state.value = value; })) {}
double VariableTally::GetValue() const { return get(*this, &engine::VariableTallyState::value); }
void VariableTally::SetValue(double value) { set(*this, &engine::VariableTallyState::value, value); }

ScaleTally::ScaleTally(std::shared_ptr<Tally> const& tally, double scaleValue)
    : Tally(make_node<Tally, engine::ScaleTallyState>([&](auto& state) {
          state.tally = tally;
          state.scale = scaleValue;
      })) {}
PROPERTY(ScaleTally, std::shared_ptr<pedflux::Tally>, Tally, tally)
VALUE_PROPERTY(ScaleTally, double, ScaleValue, scale)

DivideTally::DivideTally(std::shared_ptr<Tally> const& numerator, std::shared_ptr<Tally> const& denominator,
                         ZeroOverZeroValue zeroOverZero)
    : Tally(make_node<Tally, engine::DivideTallyState>([&](auto& state) {
          state.numerator = numerator;
          state.denominator = denominator;
          state.zero_over_zero = zeroOverZero;
      })) {}
PROPERTY(DivideTally, std::shared_ptr<Tally>, NumeratorTally, numerator)
PROPERTY(DivideTally, std::shared_ptr<Tally>, DenominatorTally, denominator)
VALUE_PROPERTY(DivideTally, pedflux::ZeroOverZeroValue, ZeroOverZeroValue, zero_over_zero)

namespace engine {

template <>
std::span<KindOfNode<Tally> const* const> kinds_of<Tally>() {
    static KindOfNode<Tally> const* const kinds[] = {&node_kind<Tally, AreaPopulationTallyState>(),
                                                     &node_kind<Tally, NamedTallyState>(),
                                                     &node_kind<Tally, ServerAvailableCapacityTallyState>(),
                                                     &node_kind<Tally, ServerQueueAndApproachTallyState>(),
                                                     &node_kind<Tally, ServerQueueTallyState>(),
                                                     &node_kind<Tally, SurfaceAreaTallyState>(),
                                                     &node_kind<Tally, TransitionTallyState>(),
                                                     &node_kind<Tally, VariableTallyState>(),
                                                     &node_kind<Tally, ScaleTallyState>(),
                                                     &node_kind<Tally, SubtractTallyState>(),
                                                     &node_kind<Tally, MultiplyTallyState>(),
                                                     &node_kind<Tally, DivideTallyState>(),
                                                     &node_kind<Tally, AddTallyState>(),
                                                     &node_kind<Tally, MaxTallyState>(),
                                                     &node_kind<Tally, MinTallyState>()};
    return kinds;
}

}  // namespace engine
}  // namespace pedflux
