#pragma once

#include "engine/navigation/navigation_input.h"
#include "engine/simulation/world/floor_plan.h"

#include <pedflux/identifiers.h>

#include <cstdint>
#include <limits>
#include <string>
#include <unordered_map>
#include <vector>

namespace pedflux::engine {

class Document;

using PlaceIndex = std::uint32_t;
inline constexpr PlaceIndex no_place = std::numeric_limits<PlaceIndex>::max();

/// Where agents come from or go to: a portal, a server, or an area of one or more regions. A dispatch stands for the
/// one of its sinks that is chosen when an agent seeks it.
struct Place {
    GlobalId id;
    std::string title;
    std::uint32_t doorway = no_place;              ///< of a portal, its number in the floor plan
    std::vector<navigation::RegionIndex> regions;  ///< of an area
    bool is_outside = false;                       ///< of the object, which is a zone
    std::uint32_t server = no_place;               ///< its number in the floor plan
    std::uint32_t dispatch = no_place;             ///< its number among the enabled ones

    bool is_portal() const { return doorway != no_place; }
    bool is_server() const { return server != no_place; }
    bool is_dispatch() const { return dispatch != no_place; }
};

/// The places of a building. Areas become places when they are first asked for.
class Places {
  public:
    /// The portals, in the order of the plan's doorways, the servers and the dispatches.
    Places(Document const& document, FloorPlan const& plan);

    std::size_t size() const { return places_.size(); }
    Place const& operator[](PlaceIndex place) const { return places_[place]; }

    /// The place of an object: a portal, a floor, a connection or a zone that takes part. Throws Exception for others.
    PlaceIndex of(GlobalId const& object);
    /// The place of a server that agents can go to. Throws Exception for others.
    PlaceIndex server(GlobalId const& object) const;
    /// The place of a server or dispatch. Throws Exception for others.
    PlaceIndex process_start(GlobalId const& object) const;
    /// All regions that do not belong to a zone. Throws Exception when there are none.
    PlaceIndex outside_of(GlobalId const& zone);
    /// The region of a walkable object, or `none`.
    navigation::RegionIndex region_of(GlobalId const& object) const;

  private:
    struct Area {
        GlobalId id;
        std::string title;
        std::vector<navigation::RegionIndex> regions;
    };

    std::vector<Place> places_;
    navigation::RegionIndex region_count_ = 0;
    std::vector<Area> areas_;                   ///< all objects that can become places
    std::vector<std::string> server_problems_;  ///< why a server cannot be reached; empty when it can
};

/// The place as a destination of routes.
navigation::Destination destination_of(Place const& place, FloorPlan const& plan);

}  // namespace pedflux::engine
