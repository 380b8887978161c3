#pragma once

#include <pedflux/api.h>
#include <pedflux/identifiers.h>
#include <pedflux/objects.h>

#include <memory>
#include <string>
#include <vector>

namespace pedflux {

namespace engine {
struct TripAccess;
struct TripPath;
}  // namespace engine

/// The moment at a place from which, or until which, a trip counts.
enum class TripBoundaryMethod : int {
    ENTER = 0,  ///< when the person comes to the place
    EXIT = 1,   ///< when the person leaves it
};

/// A way through the network by the places that it leads over, in this order: where it starts, what lies between, where
/// it ends. A person makes the trip by visiting them one after the other, whatever it crosses between them. A trip
/// never changes.
///
/// Start and end can be the same place: from its `ENTER` to its `EXIT` the trip is the stay there.
class PEDFLUX_API Trip {
  public:
    /// @param nodes floors, connections, portals or zones; at least one. One alone is both start and end.
    /// @throws Exception for an empty list and for an invalid identifier
    Trip(std::vector<GlobalId> const& nodes, TripBoundaryMethod startType, TripBoundaryMethod endType);
    /// The trip from one place to another by any way.
    /// @throws Exception for an invalid identifier
    Trip(GlobalId start, GlobalId end, TripBoundaryMethod startType, TripBoundaryMethod endType);
    ~Trip();
    Trip(Trip const&) = delete;
    Trip& operator=(Trip const&) = delete;

    /// The places of the trip, the start first and the end last.
    std::vector<GlobalId> GetNodeGlobalIds();
    TripBoundaryMethod GetStartNodeType();
    TripBoundaryMethod GetEndNodeType();

  private:
    friend engine::TripAccess;
    explicit Trip(engine::TripPath path);

    std::unique_ptr<engine::TripPath const> const path_;
};

}  // namespace pedflux
