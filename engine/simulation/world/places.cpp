#include "engine/simulation/world/places.h"

#include "engine/base/checks.h"
#include "engine/behaviour/area.h"
#include "engine/behaviour/events/event_states.h"
#include "engine/model/document.h"

#include <algorithm>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

SurfaceTable surface_table_of(FloorPlan const& plan) {
    SurfaceTable table;
    for (auto const& surface : plan.surfaces) table.ids.push_back(surface.id);
    for (auto const& joint : plan.joints) table.joins.emplace_back(joint.connection, joint.floor);
    return table;
}

std::vector<navigation::RegionIndex> regions_of(ZoneState const& zone, SurfaceTable const& table) {
    auto const surfaces = surfaces_of(zone, table);
    std::vector<navigation::RegionIndex> regions;
    for (navigation::RegionIndex region = 0; region < surfaces.size(); ++region) {
        if (surfaces[region]) regions.push_back(region);
    }
    return regions;
}

}  // namespace

Places::Places(Document const& document, FloorPlan const& plan)
    : region_count_(static_cast<navigation::RegionIndex>(plan.surfaces.size())) {
    for (std::size_t i = 0; i < plan.doorways.size(); ++i) {
        places_.push_back({plan.doorways[i].id, plan.doorways[i].title, static_cast<std::uint32_t>(i), {}});
    }
    for (std::size_t i = 0; i < plan.servers.size(); ++i) {
        Place server{plan.servers[i].id, plan.servers[i].title, no_place, {}};
        server.server = static_cast<std::uint32_t>(i);
        places_.push_back(std::move(server));
        server_problems_.push_back(plan.servers[i].problem);
    }
    std::uint32_t number = 0;
    for (auto const* const state : document.objects<DispatchState>()) {
        if (!state->enabled) continue;
        Place dispatch{state->id, title_of(*state), no_place, {}};
        dispatch.dispatch = number++;
        places_.push_back(std::move(dispatch));
    }
    for (navigation::RegionIndex region = 0; region < plan.surfaces.size(); ++region) {
        auto const& id = plan.surfaces[region].id;
        areas_.push_back({id, title_of(*document.find(id)), {region}});
    }
    auto const table = surface_table_of(plan);
    for (auto const* const zone : document.objects<ZoneState>()) {
        areas_.push_back({zone->id, title_of(*zone), regions_of(*zone, table)});
    }
}

PlaceIndex Places::of(GlobalId const& object) {
    auto const is_object = [&](auto const& other) { return other.id.InternalEquals(object); };
    auto const is_place = [&](Place const& other) {
        return !other.is_outside && !other.is_server() && !other.is_dispatch() && is_object(other);
    };
    if (auto const place = std::ranges::find_if(places_, is_place); place != places_.end()) {
        return static_cast<PlaceIndex>(place - places_.begin());
    }
    auto const area = std::ranges::find_if(areas_, is_object);
    if (area == areas_.end()) {
        refuse(fmt::format("'{}' is no enabled portal, walkable object or zone of the simulated project",
                           GlobalId(object).GetString()));
    }
    if (area->regions.empty()) refuse(fmt::format("{} has no member that people can walk on", area->title));
    places_.push_back({area->id, area->title, no_place, area->regions});
    return static_cast<PlaceIndex>(places_.size() - 1);
}

PlaceIndex Places::server(GlobalId const& object) const {
    auto const is_server = [&](Place const& place) { return place.is_server() && place.id.InternalEquals(object); };
    auto const found = std::ranges::find_if(places_, is_server);
    if (found == places_.end()) {
        refuse(fmt::format("'{}' is no enabled server or dispatch of the simulated project",
                           GlobalId(object).GetString()));
    }
    if (auto const& problem = server_problems_[found->server]; !problem.empty()) refuse(problem);
    return static_cast<PlaceIndex>(found - places_.begin());
}

PlaceIndex Places::process_start(GlobalId const& object) const {
    auto const is_meant = [&](Place const& place) { return place.is_dispatch() && place.id.InternalEquals(object); };
    auto const found = std::ranges::find_if(places_, is_meant);
    return found == places_.end() ? server(object) : static_cast<PlaceIndex>(found - places_.begin());
}

PlaceIndex Places::outside_of(GlobalId const& zone) {
    auto const is_outside = [&](Place const& other) { return other.is_outside && other.id.InternalEquals(zone); };
    if (auto const found = std::ranges::find_if(places_, is_outside); found != places_.end()) {
        return static_cast<PlaceIndex>(found - places_.begin());
    }
    Place const inside = places_[of(zone)];
    Place outside{inside.id, fmt::format("the outside of {}", inside.title), no_place, {}};
    outside.is_outside = true;
    for (navigation::RegionIndex region = 0; region < region_count_; ++region) {
        if (std::ranges::find(inside.regions, region) == inside.regions.end()) outside.regions.push_back(region);
    }
    if (outside.regions.empty()) {
        refuse(fmt::format("{} is all of the building, so nobody can go out of it", inside.title));
    }
    places_.push_back(std::move(outside));
    return static_cast<PlaceIndex>(places_.size() - 1);
}

navigation::RegionIndex Places::region_of(GlobalId const& object) const {
    // Walkable objects come first, each at the number of its region.
    auto const found = std::ranges::find_if(
        areas_, [&](Area const& area) { return area.regions.size() == 1 && area.id.InternalEquals(object); });
    return found == areas_.end() ? navigation::none : found->regions.front();
}

navigation::Destination destination_of(Place const& place, FloorPlan const& plan) {
    navigation::Destination destination{place.title, {}, {}};
    if (place.is_portal()) destination.lines.push_back(plan.doorways[place.doorway].line);
    if (place.is_server()) destination.lines = lines_to_go_to(plan.servers[place.server], plan);
    for (auto const region : place.regions) {
        for (auto const& polygon : plan.surfaces[region].walkable) destination.areas.push_back({region, polygon});
    }
    return destination;
}

}  // namespace pedflux::engine
