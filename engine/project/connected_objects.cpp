#include "engine/model/check.h"
#include "engine/model/document.h"
#include "engine/scene/goal_lines.h"
#include "engine/scene/scene_states.h"
#include "engine/scene/server_states.h"
#include "engine/simulation/world/contacts.h"
#include "engine/transport/elevator_states.h"

#include <pedflux/project.h>

#include <algorithm>
#include <utility>
#include <vector>

/// Which network objects touch each other, by the same measures as simulations join them. Barriers do not count: they
/// may block a way, but what touches still touches. Objects that are not enabled touch nothing.
namespace pedflux {

namespace engine {

namespace {

struct Level {
    FloorState const* state;
    Polygons area;
    Ground ground;
};

std::vector<Level> levels_of(Document const& document) {
    std::vector<Level> levels;
    for (auto const* const floor : document.objects<FloorState>()) {
        if (!floor->enabled) continue;
        auto const faces = upward_faces_of(*floor);
        if (!faces.empty()) levels.push_back({floor, area_of(faces), Ground(faces)});
    }
    return levels;
}

/// The way from an object to one that it touches.
using Way = std::pair<NetworkObjectState const*, NetworkObjectState const*>;

std::vector<NetworkObjectState const*> floors_at(LineSeg3d end, LineSeg3d other_end, std::vector<Level> const& levels) {
    auto const coming = end_of(end, other_end);
    std::vector<NetworkObjectState const*> floors;
    for (auto const& level : levels) {
        if (!joints_of(coming, level.area, level.ground).empty()) floors.push_back(level.state);
    }
    return floors;
}

void add_connection(ConnectionState const& connection, std::vector<Level> const& levels, std::vector<Way>& ways) {
    auto const ends = end_goal_lines(*connection.geometry);
    auto const at_ball = floors_at(ends.ball, ends.box, levels);
    auto const at_box = floors_at(ends.box, ends.ball, levels);
    auto const add_way = [&](auto const& entrances, auto const& exits) {
        for (auto const* const floor : entrances) ways.emplace_back(floor, &connection);
        for (auto const* const floor : exits) ways.emplace_back(&connection, floor);
    };
    if (connection.direction != ConnectionObjectDirection::BOX_TO_BALL) add_way(at_ball, at_box);
    if (connection.direction != ConnectionObjectDirection::BALL_TO_BOX) add_way(at_box, at_ball);
}

/// An object on several floors joins the one that is nearest in height.
void add_place(NetworkObjectState const& place, LineSeg3d line, std::vector<Level> const& levels,
               std::vector<Way>& ways) {
    FloorState const* nearest = nullptr;
    double least_offset = portal_height_tolerance;
    for (auto const& level : levels) {
        auto const contact = contact_of(line, level.area, level.ground);
        if (!contact || contact->height_offset > least_offset) continue;
        least_offset = contact->height_offset;
        nearest = level.state;
    }
    if (nearest == nullptr) return;
    ways.emplace_back(nearest, &place);
    ways.emplace_back(&place, nearest);
}

/// Elevators join the floors that they serve.
void add_elevator(Document const& document, ElevatorState const& elevator, std::vector<Way>& ways) {
    auto const each_floor = [&](std::vector<GlobalId> const& ids, auto const& add) {
        for (auto const& id : ids) {
            auto const* const floor = document.find<FloorState>(id);
            if (floor != nullptr && floor->enabled) add(floor);
        }
    };
    for (auto const* const side : {&elevator.ball, &elevator.box}) {
        each_floor(side->boarding, [&](FloorState const* floor) { ways.emplace_back(floor, &elevator); });
        each_floor(side->alighting, [&](FloorState const* floor) { ways.emplace_back(&elevator, floor); });
    }
}

std::vector<Way> ways_of(Document const& document) {
    auto const levels = levels_of(document);
    std::vector<Way> ways;
    for (auto const* const connection : document.objects<ConnectionState>()) {
        if (connection->enabled) add_connection(*connection, levels, ways);
    }
    for (auto const* const portal : document.objects<PortalState>()) {
        if (portal->enabled) add_place(*portal, centre_goal_line(*portal->geometry), levels, ways);
    }
    for (auto const* const server : document.objects<ServerState>()) {
        if (server->enabled) add_place(*server, end_goal_lines(*server->geometry).ball, levels, ways);
    }
    for (auto const* const elevator : document.objects<ElevatorState>()) {
        if (elevator->enabled) add_elevator(document, *elevator, ways);
    }
    return ways;
}

/// The objects at the other ends of the ways that leave the object, or that come to it, or both: each once, in the
/// order of creation.
std::vector<GlobalId> connected(Document const& document, GlobalId const& id, bool from, bool to) {
    constexpr auto network_objects = refers_to<NetworkObjectState>("a floor, connection, portal, server or elevator");
    check_value({nullptr, &document}, "object", id, network_objects);
    auto const* const object = document.find<NetworkObjectState>(id);
    std::vector<NetworkObjectState const*> found;
    for (auto const& [start, end] : ways_of(document)) {
        if (from && start == object) found.push_back(end);
        if (to && end == object) found.push_back(start);
    }
    std::vector<GlobalId> ids;
    for (auto const* const other : document.objects<NetworkObjectState>()) {
        if (std::ranges::find(found, other) != found.end()) ids.push_back(other->id);
    }
    return ids;
}

}  // namespace

}  // namespace engine

std::vector<GlobalId> Project::GetNetworkObjectsConnectedFrom(GlobalId const& object) {
    return engine::connected(engine::document_of(*this), object, true, false);
}
std::vector<GlobalId> Project::GetNetworkObjectsConnectedTo(GlobalId const& object) {
    return engine::connected(engine::document_of(*this), object, false, true);
}
std::vector<GlobalId> Project::GetNetworkObjectsConnectedToOrFrom(GlobalId const& object) {
    return engine::connected(engine::document_of(*this), object, true, true);
}

}  // namespace pedflux
