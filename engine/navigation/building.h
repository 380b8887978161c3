#pragma once

#include "engine/navigation/waypoints.h"

#include <string>
#include <vector>

namespace pedflux::engine::navigation {

/// A region as routing uses it. Waypoints are numbered within the region; adding `first_waypoint` gives their numbers
/// in the building.
struct RegionMap {
    std::string name;
    double length_factor = 1;
    /// The walkable area and the part of it that keeps the clearance from walls. The `_reach` variants are grown by
    /// `line_tolerance`.
    Polygons walkable;
    Polygons walkable_reach;
    Polygons clear;
    Polygons clear_reach;
    Mesh walkable_mesh;
    Mesh clear_mesh;
    std::vector<PortalEdge> portal_edges;
    Waypoints waypoints;
    std::uint32_t first_waypoint = 0;
};

/// All regions and their connections. Only the passages of connections ever change.
struct Building {
    std::vector<RegionMap> regions;
    std::vector<Connection> connections;
    /// For each waypoint of the building its region and, for a portal point, the matching point in the other region.
    std::vector<RegionIndex> region_of;
    std::vector<std::uint32_t> opposite;
};

/// Throws Exception naming the object that cannot be walked. Destinations only matter as lines where the edge of a
/// region is no wall.
Building building_of(NavigationInput const& input);

/// Throws Exception when the destination lies nowhere in its regions.
void check_destination(Building const& building, Destination const& destination);

inline Waypoint const& waypoint_of(Building const& building, std::uint32_t waypoint) {
    RegionMap const& region = building.regions[building.region_of[waypoint]];
    return region.waypoints.all[waypoint - region.first_waypoint];
}

inline PortalEdge const& portal_edge_of(Building const& building, std::uint32_t waypoint) {
    return building.regions[building.region_of[waypoint]].portal_edges[waypoint_of(building, waypoint).portal_edge];
}

inline bool is_open(PortalEdge const& portal_edge, Passage const& passage) {
    return portal_edge.forward ? passage.open_forward : passage.open_backward;
}

}  // namespace pedflux::engine::navigation
