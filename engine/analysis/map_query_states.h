#pragma once

#include "engine/analysis/map_query_list.h"
#include "engine/analysis/query_states.h"

#include <pedflux/map_queries.h>
#include <pedflux/maps.h>

#include <memory>
#include <vector>

namespace pedflux::engine {

PEDFLUX_NAMES(LevelOfServiceColorFunctionTypeId,
              {{LevelOfServiceColorFunctionTypeId::FRUIN_BY_OBJECT, "FRUIN_BY_OBJECT"},
               {LevelOfServiceColorFunctionTypeId::FRUIN_WALKWAY, "FRUIN_WALKWAY"},
               {LevelOfServiceColorFunctionTypeId::FRUIN_STAIRWAY, "FRUIN_STAIRWAY"},
               {LevelOfServiceColorFunctionTypeId::FRUIN_PLATFORM, "FRUIN_PLATFORM"},
               {LevelOfServiceColorFunctionTypeId::IATA_WAIT_CIRCULATE, "IATA_WAIT_CIRCULATE"}});

/// The maps of the last evaluation are kept with the query, but not saved.
struct MapQueryState : QueryState {
    static constexpr ObjectType TYPE = ObjectType::MAP_QUERY;

    std::vector<GlobalId> display_objects;
    std::vector<std::shared_ptr<Map>> maps;  ///< of the last evaluation; empty before

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        QueryState::fields(self, field);
        field("mapDisplayObjects", self.display_objects, walkables);
    }
};

struct DensityMapQueryState : MapQueryState {
    std::shared_ptr<ColorFunction> custom_colors;  ///< immutable; empty: the scale below
    LevelOfServiceColorFunctionTypeId scale = LevelOfServiceColorFunctionTypeId::FRUIN_BY_OBJECT;
    ColorTransition transition = ColorTransition::STEPS;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        MapQueryState::fields(self, field);
        field("customColorFunction", self.custom_colors);
        field("levelOfServiceColorFunction", self.scale);
        field("levelOfServiceColorTransition", self.transition);
    }
};

/// Immutable; setters replace it. Empty: blue to red.
PEDFLUX_QUERY_PART(Colored, std::shared_ptr<ColorFunction>, colors, {}, "colorFunction", self.colors)
/// Persons per square metre.
PEDFLUX_QUERY_PART(AboveDensity, double, threshold, = 1.08, "densityThreshold", self.threshold, not_negative)
/// Seconds.
PEDFLUX_QUERY_PART(SampledSometimes, unsigned int, period, = 1, "samplePeriod", self.period, at_least_one)
/// The object to which static maps measure; set when the query is created.
PEDFLUX_QUERY_PART(LeadsTo, GlobalId, object, {}, "object", self.object,
                   refers_to<NetworkObjectState>("a portal, floor, connection or other object that people reach"))

struct CloseTogether {
    double distance = 2;  ///< metres
    bool ignore_barriers = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("distance", self.distance, Range{0, unlimited, "m", true});
        field("ignoreBarriers", self.ignore_barriers);
    }
};

struct StaticMapQueryState : MadeOf<MapQueryState, Colored, LeadsTo> {};

PEDFLUX_MAP_QUERIES(PEDFLUX_QUERY_STATE)

}  // namespace pedflux::engine
