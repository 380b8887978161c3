#pragma once

#include "engine/analysis/graph_query_list.h"
#include "engine/analysis/query_states.h"

#include <pedflux/graph_queries.h>
#include <pedflux/transitions.h>

#include <memory>
#include <string>
#include <vector>

namespace pedflux::engine {

struct GraphQueryState : MadeOf<QueryState, Timed> {
    static constexpr ObjectType TYPE = ObjectType::GRAPH_QUERY;

    std::string title;
    std::string horizontal_label = "Time [s]";
    std::string vertical_label;
    int window = 1;  ///< seconds
    bool show_legend = true;
    bool show_metadata = false;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        MadeOf::fields(self, field);
        field("title", self.title);
        field("horizontalLabel", self.horizontal_label);
        field("verticalLabel", self.vertical_label);
        field("windowSizeInSeconds", self.window, at_least_one);
        field("showLegend", self.show_legend);
        field("showMetadata", self.show_metadata);
    }
};

PEDFLUX_QUERY_PART(OfAreas, std::vector<GlobalId>, areas, {}, "areas", self.areas, walkable_areas)
/// Immutable; setters replace it.
PEDFLUX_QUERY_PART(OfTransitions, std::vector<std::shared_ptr<Transition>>, transitions, {}, "transitions",
                   self.transitions, must_be_given)
/// Immutable; setters replace it. Empty: the default colours.
PEDFLUX_QUERY_PART(InSpeedColors, std::shared_ptr<ColorFunction>, colors, {}, "speedRatioColorFunction", self.colors)
PEDFLUX_QUERY_PART(OfTallies, std::vector<GlobalId>, tallies, {}, "tallyObjects", self.tallies,
                   refers_to_kind<ObjectType::TALLY_OBJECT>("a tally object"))
PEDFLUX_QUERY_PART(OfVolumes, std::vector<GlobalId>, volumes, {}, "volumes", self.volumes,
                   refers_to_kind<ObjectType::VOLUME>("a volume"))

PEDFLUX_GRAPH_QUERIES(PEDFLUX_QUERY_STATE)

}  // namespace pedflux::engine
