#pragma once

#include "engine/geometry/plane.h"
#include "engine/scene/scene_states.h"
#include "engine/simulation/world/ground.h"

#include <pedflux/vectors.h>

#include <optional>
#include <vector>

/// Where the parts of a building touch: the ends of connections join floors, portals lie on them.
namespace pedflux::engine {

/// How far (metres) a connection reaches beyond its end, and how far above or below a floor its end may be.
inline constexpr double end_reach = 0.1;
inline constexpr double end_height_tolerance = 0.3;
/// How far (metres) a portal may be beside its floor, and above or below it.
inline constexpr double portal_reach = 0.3;
inline constexpr double portal_height_tolerance = 0.5;

/// The faces of an object's mesh that face upwards.
std::vector<Triangle> upward_faces_of(SceneState const& state);

/// The area that faces cover in the plan.
Polygons area_of(std::vector<Triangle> const& faces);

/// One end of a connection as seen from above.
struct ConnectionEnd {
    Segment line;
    Point outward;      ///< across the line, away from the connection, of length 1
    double height = 0;  ///< metres
};
ConnectionEnd end_of(LineSeg3d line, LineSeg3d other_end);

/// The lines end_reach beyond the end on which a connection joins a floor; none when it does not touch it.
std::vector<Segment> joints_of(ConnectionEnd const& end, Polygons const& floor, Ground const& ground);

/// A portal's line as it lies on a floor.
struct PortalContact {
    Segment line;
    double height_offset = 0;  ///< metres between the portal and the floor
};
/// Of several floors, the one with the least offset is the portal's.
std::optional<PortalContact> contact_of(LineSeg3d goal_line, Polygons const& floor, Ground const& ground);

}  // namespace pedflux::engine
