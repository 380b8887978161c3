#pragma once

#include "engine/behaviour/population/population.h"
#include "engine/model/enumerations.h"
#include "engine/model/field_type.h"
#include "engine/model/rules.h"

#include <pedflux/timetables.h>

#include <memory>
#include <utility>
#include <vector>

// Trips as plain data, for the filters and queries that ask who makes one.
namespace pedflux::engine {

PEDFLUX_NAMES(TripBoundaryMethod, {{TripBoundaryMethod::ENTER, "ENTER"}, {TripBoundaryMethod::EXIT, "EXIT"}});

/// One place of a trip. A way may lead over a place twice, so trips are no lists of different identifiers.
struct TripNode {
    GlobalId place;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("place", self.place, RefersTo{"a floor, connection, portal or zone", Population::is_place});
    }
};

struct TripPath {
    std::vector<TripNode> nodes;
    TripBoundaryMethod start = TripBoundaryMethod::ENTER;
    TripBoundaryMethod end = TripBoundaryMethod::ENTER;

    template <class Self, class Field>
    static void fields(Self& self, Field&& field) {
        field("nodes", self.nodes);
        field("startNodeType", self.start);
        field("endNodeType", self.end);
    }
};

struct TripAccess {
    static TripPath const& path(Trip const& trip) { return *trip.path_; }
    /// Throws Exception as the SDK's constructors do.
    static std::shared_ptr<Trip> make(TripPath path) { return std::shared_ptr<Trip>(new Trip(std::move(path))); }
};

template <>
struct SharedValue<Trip> {
    using Value = TripPath;
    static TripPath const& value(Trip const& trip) { return TripAccess::path(trip); }
    static std::shared_ptr<Trip> make(TripPath const& path) { return TripAccess::make(path); }
};

}  // namespace pedflux::engine
