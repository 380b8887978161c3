#pragma once

#include "engine/base/list_checks.h"
#include "engine/model/check.h"
#include "engine/model/enumerations.h"
#include "engine/model/node.h"

#include <pedflux/wait_styles.h>

#include <string_view>
#include <vector>

/// The states of wait styles: see engine/model/node.h.
namespace pedflux::engine {

PEDFLUX_NAMES(WaitStyleTypeId, {{WaitStyleTypeId::STAND_STILL, "STAND_STILL"},
                                {WaitStyleTypeId::SPREAD_OUT, "SPREAD_OUT"},
                                {WaitStyleTypeId::ASSIGNED_WAIT_SPACE, "ASSIGNED_WAIT_SPACE"},
                                {WaitStyleTypeId::LOWEST_COST_WAIT_SPACE, "LOWEST_COST_WAIT_SPACE"}});

struct StandStillWaitStyleState : NodeState {
    static constexpr WaitStyleTypeId TYPE = WaitStyleTypeId::STAND_STILL;
    static constexpr std::string_view NAME = "StandStillWaitStyle";
    using Handle = StandStillWaitStyle;

    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

struct SpreadOutWaitStyleState : NodeState {
    static constexpr WaitStyleTypeId TYPE = WaitStyleTypeId::SPREAD_OUT;
    static constexpr std::string_view NAME = "SpreadOutWaitStyle";
    using Handle = SpreadOutWaitStyle;

    template <class Self, class Field>
    static void fields(Self&, Field&&) {}
};

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
    static constexpr WaitStyleTypeId TYPE = WaitStyleTypeId::ASSIGNED_WAIT_SPACE;
    static constexpr std::string_view NAME = "AssignedWaitSpaceWaitStyle";
    using Handle = AssignedWaitSpaceWaitStyle;

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
    static constexpr WaitStyleTypeId TYPE = WaitStyleTypeId::LOWEST_COST_WAIT_SPACE;
    static constexpr std::string_view NAME = "LowestCostWaitSpaceWaitStyle";
    using Handle = LowestCostWaitSpaceWaitStyle;
};

}  // namespace pedflux::engine
