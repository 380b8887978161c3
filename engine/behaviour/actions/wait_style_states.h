#pragma once

#include "engine/base/list_checks.h"
#include "engine/model/check.h"
#include "engine/model/enumerations.h"
#include "engine/model/node.h"
#include "engine/model/node_table.h"

#include <pedflux/wait_styles.h>

#include <array>
#include <string_view>
#include <vector>

/// The states of wait styles: see engine/model/node.h and wait_style_table.def.
namespace pedflux::engine {

template <>
inline constexpr auto value_names<WaitStyleTypeId> = std::to_array<Named<WaitStyleTypeId>>({
#define WAIT_STYLE(Class, type, ...) {WaitStyleTypeId::type, #type},
#include "engine/behaviour/actions/wait_style_table.def"
});

#define WAIT_STYLE(Class, type, ...)               \
    struct Class##State : NodeState {              \
        PEDFLUX_KIND(WaitStyleTypeId, Class, type) \
        PEDFLUX_PROPERTIES(__VA_ARGS__)            \
    };
#define WAIT_STYLE_IN_SPACES(...)
#include "engine/behaviour/actions/wait_style_table.def"

struct WaitInSpacesState : NodeState {
    std::vector<GlobalId> spaces;
    WaitStyleTypeId fallback = WaitStyleTypeId::STAND_STILL;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("waitSpaces", self.spaces, refers_to_kind<ObjectType::WAIT_SPACE>("a wait space"));
        field("fallback", self.fallback);
    }
};

struct AssignedWaitSpaceWaitStyleState : WaitInSpacesState {
    PEDFLUX_KIND(WaitStyleTypeId, AssignedWaitSpaceWaitStyle, ASSIGNED_WAIT_SPACE)

    std::vector<double> weights;  ///< one for each space; none when all have the same chance

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        WaitInSpacesState::fields(self, field);
        field("weights", self.weights, not_negative);
    }
    static void check(Subject const&, AssignedWaitSpaceWaitStyleState const& self) {
        if (!self.weights.empty())
            require_equal_lengths("AssignedWaitSpaceWaitStyle: wait spaces", self.spaces.size(), "weights",
                                  self.weights.size());
    }
};

struct LowestCostWaitSpaceWaitStyleState : WaitInSpacesState {
    PEDFLUX_KIND(WaitStyleTypeId, LowestCostWaitSpaceWaitStyle, LOWEST_COST_WAIT_SPACE)
};

}  // namespace pedflux::engine
