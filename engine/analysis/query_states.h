#pragma once

#include "engine/analysis/color_scale.h"
#include "engine/model/codec.h"
#include "engine/model/enumerations.h"
#include "engine/model/rules.h"
#include "engine/model/scene_states.h"
#include "engine/model/simulation_run_state.h"
#include "engine/model/state.h"

#include <pedflux/graph_queries.h>
#include <pedflux/map_queries.h>
#include <pedflux/maps.h>

#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The states of queries. Maps that a query has found are kept with it; they are no part of what is saved.
namespace pedflux::engine {

PEDFLUX_NAMES(ColorTransition, {{ColorTransition::STEPS, "STEPS"}, {ColorTransition::GRADUAL, "GRADUAL"}});
PEDFLUX_NAMES(LevelOfServiceColorFunctionTypeId,
              {{LevelOfServiceColorFunctionTypeId::FRUIN_BY_OBJECT, "FRUIN_BY_OBJECT"},
               {LevelOfServiceColorFunctionTypeId::FRUIN_WALKWAY, "FRUIN_WALKWAY"},
               {LevelOfServiceColorFunctionTypeId::FRUIN_STAIRWAY, "FRUIN_STAIRWAY"},
               {LevelOfServiceColorFunctionTypeId::FRUIN_PLATFORM, "FRUIN_PLATFORM"},
               {LevelOfServiceColorFunctionTypeId::IATA_WAIT_CIRCULATE, "IATA_WAIT_CIRCULATE"}});

template <>
struct SharedValue<ColorFunction> {
    using Value = ColorScale;
    static ColorScale const& value(ColorFunction const& function) { return ColorFunctionAccess::scale(function); }
    static std::shared_ptr<ColorFunction> make(ColorScale const& scale);
};

/// Seconds after midnight; both belong to it.
struct TimeSpan {
    int start = 0;
    int end = std::numeric_limits<int>::max();

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("start", self.start, NOT_NEGATIVE);
        field("end", self.end, NOT_NEGATIVE);
    }
};

inline constexpr RefersTo A_RUN = refers_to<SimulationRunState>("a simulation run");
inline constexpr RefersTo WALKABLES = refers_to<WalkableState>("a floor, link, stair, ramp or other walkable object");

struct MapQueryState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::MAP_QUERY;

    GlobalId run;
    std::vector<GlobalId> display_objects;
    std::vector<std::shared_ptr<Map>> maps;  ///< found and kept; empty until evaluated

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("simulationRun", self.run, A_RUN);
        field("mapDisplayObjects", self.display_objects, WALKABLES);
    }
};

struct DensityMapQueryState : MapQueryState {
    std::shared_ptr<ColorFunction> custom_colors;  ///< never changed; empty: the scale below
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

struct TimedDensityMapQueryState : DensityMapQueryState {
    TimeSpan time;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        DensityMapQueryState::fields(self, field);
        field("timeRange", self.time);
    }
};

struct AverageDensityMapQueryState : TimedDensityMapQueryState {
    static constexpr std::string_view NAME = "AverageDensityMapQuery";
    using Face = AverageDensityMapQuery;
};

struct MaxDensityMapQueryState : TimedDensityMapQueryState {
    static constexpr std::string_view NAME = "MaxDensityMapQuery";
    using Face = MaxDensityMapQuery;
};

struct NonZeroAverageDensityMapQueryState : TimedDensityMapQueryState {
    static constexpr std::string_view NAME = "NonZeroAverageDensityMapQuery";
    using Face = NonZeroAverageDensityMapQuery;
};

struct ExperiencedDensityMapQueryState : TimedDensityMapQueryState {
    static constexpr std::string_view NAME = "ExperiencedDensityMapQuery";
    using Face = ExperiencedDensityMapQuery;
};

struct InstantaneousDensityMapQueryState : DensityMapQueryState {
    static constexpr std::string_view NAME = "InstantaneousDensityMapQuery";
    using Face = InstantaneousDensityMapQuery;
};

struct AgentCountMapQueryState : MapQueryState {
    static constexpr std::string_view NAME = "AgentCountMapQuery";
    using Face = AgentCountMapQuery;

    std::shared_ptr<ColorFunction> colors;  ///< never changed; empty unless set
    TimeSpan time;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        MapQueryState::fields(self, field);
        field("colorFunction", self.colors);
        field("timeRange", self.time);
    }
};

struct GraphQueryState : ObjectState {
    static constexpr ObjectType TYPE = ObjectType::GRAPH_QUERY;

    GlobalId run;
    TimeSpan time;
    std::string title;
    std::string horizontal_label = "Time [s]";
    std::string vertical_label;
    int window = 1;  ///< seconds
    bool show_legend = true;
    bool show_metadata = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        ObjectState::fields(self, field);
        field("simulationRun", self.run, A_RUN);
        field("timeRange", self.time);
        field("title", self.title);
        field("horizontalLabel", self.horizontal_label);
        field("verticalLabel", self.vertical_label);
        field("windowSizeInSeconds", self.window, AT_LEAST_ONE);
        field("showLegend", self.show_legend);
        field("showMetadata", self.show_metadata);
    }
};

struct PopulationCountGraphQueryState : GraphQueryState {
    static constexpr std::string_view NAME = "PopulationCountGraphQuery";
    using Face = PopulationCountGraphQuery;

    std::vector<GlobalId> areas;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        GraphQueryState::fields(self, field);
        field("areas", self.areas, RefersTo{"a walkable object or a zone", is_area});
    }
    static bool is_area(ObjectState const& object) {
        return dynamic_cast<WalkableState const*>(&object) || dynamic_cast<ZoneState const*>(&object);
    }
};

}  // namespace pedflux::engine
