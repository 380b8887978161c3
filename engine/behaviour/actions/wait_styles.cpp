#include "engine/behaviour/actions/wait_style_states.h"
#include "engine/model/node_handles.h"
#include "engine/model/properties.h"

#include <pedflux/wait_styles.h>

namespace pedflux {

using engine::get;
using engine::make_node;
using engine::set;
using engine::WaitInSpacesState;

WaitStyle::WaitStyle(engine::NodePointer node) : node_(std::move(node)) {}
WaitStyle::WaitStyle(WaitStyle const& other) : node_(engine::copy_of(engine::node_of(other))) {}
WaitStyle::~WaitStyle() = default;

WaitStyleTypeId WaitStyle::GetWaitStyleTypeId() { return static_cast<WaitStyleTypeId>(engine::type_of(*this)); }
std::shared_ptr<WaitStyle> WaitStyle::Clone() { return engine::clone_of(*this); }

std::shared_ptr<WaitStyle> WaitStyle::StandStill() { return std::make_shared<StandStillWaitStyle>(); }
std::shared_ptr<WaitStyle> WaitStyle::SpreadOut() { return std::make_shared<SpreadOutWaitStyle>(); }
std::shared_ptr<WaitStyle> WaitStyle::AssignedWaitSpace(std::vector<GlobalId> const& spaces) {
    return std::make_shared<AssignedWaitSpaceWaitStyle>(spaces);
}
std::shared_ptr<WaitStyle> WaitStyle::AssignedWaitSpace(std::vector<GlobalId> const& spaces,
                                                        std::vector<double> const& weights) {
    return std::make_shared<AssignedWaitSpaceWaitStyle>(spaces, weights);
}
std::shared_ptr<WaitStyle> WaitStyle::LowestCostWaitSpace(std::vector<GlobalId> const& spaces) {
    return std::make_shared<LowestCostWaitSpaceWaitStyle>(spaces);
}

#define WAIT_STYLE(Class, type, ...)                   \
    PEDFLUX_CONSTRUCTOR(WaitStyle, Class, __VA_ARGS__) \
    PEDFLUX_ACCESSORS(Class, __VA_ARGS__)
#define WAIT_STYLE_IN_SPACES(...)
#include "engine/behaviour/actions/wait_style_table.def"

AssignedWaitSpaceWaitStyle::AssignedWaitSpaceWaitStyle(std::vector<GlobalId> const& spaces)
    : WaitStyle(
          make_node<WaitStyle, engine::AssignedWaitSpaceWaitStyleState>([&](auto& state) { state.spaces = spaces; })) {}
AssignedWaitSpaceWaitStyle::AssignedWaitSpaceWaitStyle(std::vector<GlobalId> const& spaces,
                                                       std::vector<double> const& weights)
    : WaitStyle(make_node<WaitStyle, engine::AssignedWaitSpaceWaitStyleState>([&](auto& state) {
          engine::require_equal_lengths("AssignedWaitSpaceWaitStyle: wait spaces", spaces.size(), "weights",
                                        weights.size());
          state.spaces = spaces;
          state.weights = weights;
      })) {}
LowestCostWaitSpaceWaitStyle::LowestCostWaitSpaceWaitStyle(std::vector<GlobalId> const& spaces)
    : WaitStyle(make_node<WaitStyle, engine::LowestCostWaitSpaceWaitStyleState>(
          [&](auto& state) { state.spaces = spaces; })) {}

#define WAIT_STYLE(...)
#define WAIT_STYLE_IN_SPACES(Class, ...)                                                                 \
    WaitStyleTypeId Class::GetFallbackWaitStyleId() { return get(*this, &WaitInSpacesState::fallback); } \
    void Class::SetFallbackWaitStyleStandStill() {                                                       \
        set(*this, &WaitInSpacesState::fallback, WaitStyleTypeId::STAND_STILL);                          \
    }                                                                                                    \
    void Class::SetFallbackWaitStyleSpreadOut() {                                                        \
        set(*this, &WaitInSpacesState::fallback, WaitStyleTypeId::SPREAD_OUT);                           \
    }
#include "engine/behaviour/actions/wait_style_table.def"

namespace engine {

template <>
std::span<KindOfNode<WaitStyle> const* const> kinds_of<WaitStyle>() {
    static KindOfNode<WaitStyle> const* const kinds[] = {
#define WAIT_STYLE(Class, ...) &node_kind<WaitStyle, Class##State>(),
#include "engine/behaviour/actions/wait_style_table.def"
    };
    return kinds;
}

}  // namespace engine
}  // namespace pedflux
