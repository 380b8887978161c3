#include "engine/analysis/trips.h"

#include <algorithm>
#include <optional>

namespace pedflux::engine {

namespace {

std::optional<int> moment_of(Visit const& visit, TripBoundaryMethod boundary) {
    return boundary == TripBoundaryMethod::ENTER ? std::optional(visit.enter) : visit.exit;
}

/// The visits of each place of a path, by one person.
using VisitsOfPath = std::vector<std::vector<Visit>>;

/// The first trip that starts at a frame or later.
std::optional<TripMade> next_trip(TripPath const& path, VisitsOfPath const& visits, int not_before) {
    auto const& starts = visits.front();
    auto const start = std::ranges::find_if(starts, [&](Visit const& visit) {
        auto const moment = moment_of(visit, path.start);
        return moment && *moment >= not_before;
    });
    if (start == starts.end()) return std::nullopt;
    TripMade trip;
    trip.start = *moment_of(*start, path.start);
    int reached = start->enter;
    for (std::size_t place = 1; place + 1 < visits.size(); ++place) {
        auto const next =
            std::ranges::find_if(visits[place], [&](Visit const& visit) { return visit.enter >= reached; });
        if (next == visits[place].end()) return std::nullopt;
        reached = next->enter;
    }
    auto const end = std::ranges::find_if(visits.back(), [&](Visit const& visit) {
        auto const moment = moment_of(visit, path.end);
        return visit.enter >= reached && moment && *moment > trip.start;
    });
    if (end == visits.back().end()) return std::nullopt;
    trip.end = *moment_of(*end, path.end);
    return trip;
}

}  // namespace

std::vector<TripMade> trips_of(TripPath const& path, RunPlaces const& places, Visits const& visits) {
    std::vector<Area> areas;
    for (auto const& node : path.nodes) areas.push_back(places[node.place].area);
    std::vector<TripMade> trips;
    for (std::uint32_t agent = 0; agent < visits.size(); ++agent) {
        VisitsOfPath of_path;
        for (auto const& area : areas) {
            of_path.push_back(visits_of(places, places.reader().agents()[agent], visits[agent], area));
        }
        int not_before = 0;
        while (auto trip = next_trip(path, of_path, not_before)) {
            trip->agent = agent;
            trips.push_back(*trip);
            not_before = trip->end;
        }
    }
    return trips;
}

std::vector<TripMade> whole_trips_of(RunReader const& reader) {
    std::vector<TripMade> trips;
    for (std::uint32_t agent = 0; agent < reader.agents().size(); ++agent) {
        auto const& person = reader.agents()[agent];
        if (person.arrived) trips.push_back({agent, person.first_frame, person.last_frame + 1});
    }
    return trips;
}

}  // namespace pedflux::engine
