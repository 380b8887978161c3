#pragma once

#include "engine/behaviour/object_rules.h"
#include "engine/model/check.h"
#include "engine/model/enumerations.h"
#include "engine/model/node.h"

#include <pedflux/tallies.h>
#include <pedflux/transitions.h>

#include <memory>
#include <string_view>
#include <vector>

/// The states of tallies: see engine/model/node.h.
namespace pedflux::engine {

PEDFLUX_NAMES(ZeroOverZeroValue, {{ZeroOverZeroValue::ZERO, "ZERO"},
                                  {ZeroOverZeroValue::ONE, "ONE"},
                                  {ZeroOverZeroValue::INFINITE, "INFINITE"}});

inline constexpr RefersTo A_TALLY_OBJECT = refers_to_kind<ObjectType::TALLY_OBJECT>("a tally object");
inline constexpr RefersTo A_WALKABLE_OBJECT =
    refers_to<WalkableState>("a floor, link, stair, ramp or other walkable object");

/// The state of a tally of one value: its kind, the type of the value, its name in files, and its rule if it has one.
#define TALLY_OF(Class, KIND, Value, name, ...)                 \
    struct Class##State : NodeState {                           \
        static constexpr TallyType TYPE = TallyType::KIND;      \
        static constexpr std::string_view NAME = #Class;        \
        using Handle = Class;                                   \
                                                                \
        Value value{};                                          \
                                                                \
        template <class Self, class Field>                      \
        static void fields(Self& self, Field&& field) {         \
            field(name, self.value __VA_OPT__(, ) __VA_ARGS__); \
        }                                                       \
    };

TALLY_OF(AreaPopulationTally, AREA_POPULATION, std::vector<GlobalId>, "areas", AN_AREA)
TALLY_OF(NamedTally, NAMED, GlobalId, "tallyObject", A_TALLY_OBJECT)
TALLY_OF(ServerAvailableCapacityTally, SERVER_AVAILABLE_CAPACITY, std::vector<GlobalId>, "servers", A_SERVER)
TALLY_OF(ServerQueueAndApproachTally, SERVER_QUEUE_AND_APPROACH, std::vector<GlobalId>, "servers", A_SERVER)
TALLY_OF(ServerQueueTally, SERVER_QUEUE, std::vector<GlobalId>, "servers", A_SERVER)
TALLY_OF(SurfaceAreaTally, SURFACE_AREA, std::vector<GlobalId>, "walkableObjects", A_WALKABLE_OBJECT)
TALLY_OF(TransitionTally, TRANSITION, std::shared_ptr<Transition>, "transition", must_be_given)
TALLY_OF(VariableTally, VARIABLE, double, "value")
TALLY_OF(AddTally, ADD, std::vector<std::shared_ptr<Tally>>, "tallies", must_be_given)
TALLY_OF(MaxTally, MAX, std::vector<std::shared_ptr<Tally>>, "tallies", must_be_given)
TALLY_OF(MinTally, MIN, std::vector<std::shared_ptr<Tally>>, "tallies", must_be_given)
#undef TALLY_OF

struct ScaleTallyState : NodeState {
    static constexpr TallyType TYPE = TallyType::SCALE;
    static constexpr std::string_view NAME = "ScaleTally";
    using Handle = ScaleTally;

    std::shared_ptr<Tally> tally;
    double scale = 1;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("tally", self.tally, must_be_given);
        field("scaleValue", self.scale);
    }
};

struct TwoTalliesState : NodeState {
    std::shared_ptr<Tally> first;
    std::shared_ptr<Tally> second;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("firstTally", self.first, must_be_given);
        field("secondTally", self.second, must_be_given);
    }
};

struct SubtractTallyState : TwoTalliesState {
    static constexpr TallyType TYPE = TallyType::SUBTRACT;
    static constexpr std::string_view NAME = "SubtractTally";
    using Handle = SubtractTally;
};

struct MultiplyTallyState : TwoTalliesState {
    static constexpr TallyType TYPE = TallyType::MULTIPLY;
    static constexpr std::string_view NAME = "MultiplyTally";
    using Handle = MultiplyTally;
};

struct DivideTallyState : NodeState {
    static constexpr TallyType TYPE = TallyType::DIVIDE;
    static constexpr std::string_view NAME = "DivideTally";
    using Handle = DivideTally;

    std::shared_ptr<Tally> numerator;
    std::shared_ptr<Tally> denominator;
    ZeroOverZeroValue zero_over_zero = ZeroOverZeroValue::ZERO;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("numeratorTally", self.numerator, must_be_given);
        field("denominatorTally", self.denominator, must_be_given);
        field("zeroOverZeroValue", self.zero_over_zero);
    }
};

}  // namespace pedflux::engine
