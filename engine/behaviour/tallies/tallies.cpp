#include "engine/behaviour/tallies/tally_states.h"
#include "engine/model/node_handles.h"

#include <pedflux/tallies.h>

#include <memory>
#include <span>
#include <vector>

namespace pedflux {

using engine::change;

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

/// A list of tallies that make one up.
#define PEDFLUX_ACCESS_CHILDREN(Class, Type, Name, member)                                           \
    void Class::AddChildTally(std::shared_ptr<Tally> const& tally) {                                 \
        change<engine::Class##State>(*this, [&](auto& state) { state.member.push_back(tally); });    \
    }                                                                                                \
    void Class::ClearChildTallies() { SetChildTallies({}); }                                         \
    void Class::SetChildTally(int index, std::shared_ptr<Tally> const& tally) {                      \
        change<engine::Class##State>(*this, [&](auto& state) {                                       \
            state.member[engine::checked_index(state, "child", index, state.member.size())] = tally; \
        });                                                                                          \
    }                                                                                                \
    void Class::SetChildTallies(Tallies const& tallies) {                                            \
        change<engine::Class##State>(*this, [&](auto& state) { state.member = tallies; });           \
    }

#define TALLY(Class, type, ...)                    \
    PEDFLUX_CONSTRUCTOR(Tally, Class, __VA_ARGS__) \
    PEDFLUX_ACCESSORS(Class, __VA_ARGS__)
#define TALLY_OF_PLACES(Class, type, ...) \
    TALLY(Class, type, __VA_ARGS__)       \
    Class::Class(GlobalId const& object) : Class(std::vector{object}) {}
#define TALLY_OF_SERVERS TALLY_OF_PLACES
#include "engine/behaviour/tallies/tally_table.def"

#define OF_TWO(Class)                                                                       \
    Class::Class(std::shared_ptr<Tally> const& first, std::shared_ptr<Tally> const& second) \
        : Class(Tallies{first, second}) {}
OF_TWO(AddTally)
OF_TWO(MaxTally)
OF_TWO(MinTally)

namespace engine {

template <>
std::span<KindOfNode<Tally> const* const> kinds_of<Tally>() {
    static KindOfNode<Tally> const* const kinds[] = {
#define TALLY(Class, ...) &node_kind<Tally, Class##State>(),
#include "engine/behaviour/tallies/tally_table.def"
    };
    return kinds;
}

}  // namespace engine
}  // namespace pedflux
