#pragma once

#include "engine/navigation/navigation_input.h"
#include "engine/simulation/floor_plan.h"

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

/// Where people come from or go to: a portal, or an area of one or more regions.
struct Place {
    GlobalId id;
    std::string title;
    std::uint32_t doorway = no_place;              ///< of a portal, its number in the floor plan
    std::vector<navigation::RegionIndex> regions;  ///< of an area
    navigation::DestinationIndex destination = navigation::none;

    bool is_outside = false;  ///< of the object, which is a zone

    bool is_portal() const { return doorway != no_place; }
};

/// The places of a building. What is no portal becomes a place when somebody asks for it.
class Places {
  public:
    /// The portals, in the order of the plan's doorways.
    Places(Document const& document, FloorPlan const& plan);

    std::size_t size() const { return places_.size(); }
    Place const& operator[](PlaceIndex place) const { return places_[place]; }
    Place& operator[](PlaceIndex place) { return places_[place]; }

    /// The place of an object: a portal, a floor, a connection or a zone that takes part. Throws Exception for others.
    PlaceIndex of(GlobalId const& object);
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
    std::vector<Area> areas_;  ///< all objects that can become places
};

/// The place as routes know it.
navigation::Destination destination_of(Place const& place, FloorPlan const& plan);

}  // namespace pedflux::engine
