#include "engine/analysis/origin_destination.h"

#include "engine/analysis/table_builder.h"
#include "engine/analysis/table_evaluation.h"
#include "engine/base/checks.h"

#include <functional>
#include <map>
#include <set>
#include <utility>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

using State = OriginDestinationMatrixTableQueryState;

State const& query_of(QueryContext const& context) { return dynamic_cast<State const&>(context.query()); }

/// Whether a time from one frame to another counts.
bool counts_in_range(QueryContext const& context, int start, int end) {
    switch (query_of(context).counted) {
        case AgentCountIfInRangeType::START_IN_RANGE:
            return context.is_in_range(start);
        case AgentCountIfInRangeType::END_IN_RANGE:
            return context.is_in_range(end);
        case AgentCountIfInRangeType::START_AND_END_IN_RANGE:
            return context.is_in_range(start) && context.is_in_range(end);
        case AgentCountIfInRangeType::ANY_PART_IN_RANGE:
            break;
    }
    auto const& time = context.query().time;
    return context.clock(start) <= time.end && context.clock(end) >= time.start;
}

/// The persons that the filter selects; without a filter also those that no frame shows.
std::vector<bool> selected_in(QueryContext& context) {
    return query_of(context).filter ? context.selected() : std::vector(context.reader().agents().size(), true);
}

/// Travel times in seconds between two places, by their names.
using Times = std::map<std::pair<std::string, std::string>, std::vector<double>>;
using Value = std::function<Cell(std::vector<double> const&)>;

Cell count_of(std::vector<double> const& times) { return static_cast<int>(times.size()); }

/// The matrix of some rows and columns, or the list of what there is.
std::shared_ptr<TableData const> table_of(QueryContext const& context, std::vector<std::string> const& origins,
                                          std::vector<std::string> const& destinations, Times const& times,
                                          std::string const& what, Value const& value) {
    if (query_of(context).output == OriginDestinationMatrixTableOutput::LIST) {
        TableBuilder list({"Origin", "Destination", what});
        int row = 0;
        for (auto const& [ends, taken] : times)
            list.add(std::to_string(++row), {ends.first, ends.second, value(taken)});
        return list.table();
    }
    TableBuilder matrix(destinations);
    for (auto const& origin : origins) {
        std::vector<Cell> cells;
        for (auto const& destination : destinations) {
            auto const found = times.find({origin, destination});
            cells.push_back(value(found == times.end() ? std::vector<double>() : found->second));
        }
        matrix.add(origin, cells);
    }
    return matrix.table();
}

std::shared_ptr<TableData const> between_portals(QueryContext& context, std::string const& what, Value const& value) {
    std::vector<std::string> names;
    for (auto const& portal : portals_of(context.document(), dynamic_cast<BetweenPortals const&>(context.query()))) {
        names.push_back(context.name_of(portal));
    }
    std::set<std::string> const known(names.begin(), names.end());
    auto const selected = selected_in(context);
    Times times;
    for (std::size_t agent = 0; agent < selected.size(); ++agent) {
        auto const& person = context.reader().agents()[agent];
        int const departure = person.last_frame + 1;
        auto const from = context.name_of(person.origin);
        auto const to = context.name_of(person.destination);
        bool const counts = selected[agent] && person.arrived && known.contains(from) && known.contains(to) &&
                            counts_in_range(context, person.first_frame, departure);
        if (counts) times[{from, to}].push_back(context.seconds(departure - person.first_frame));
    }
    return table_of(context, names, names, times, what, value);
}

}  // namespace

std::shared_ptr<TableData const> counts_between_portals(QueryContext& context) {
    return between_portals(context, "Persons", count_of);
}

std::shared_ptr<TableData const> times_between_portals(QueryContext& context) {
    auto const type = dynamic_cast<Aggregated const&>(context.query()).aggregation;
    return between_portals(context, "Time [s]", [type](std::vector<double> const& times) {
        return times.empty() ? Cell(std::string()) : Cell(aggregated(times, type));
    });
}

std::shared_ptr<TableData const> counts_across_area(QueryContext& context) {
    auto const& area_id = dynamic_cast<AcrossArea const&>(context.query()).area;
    if (!area_id) refuse(fmt::format("{} needs a floor or a zone", title_of(context.query())));
    auto const area = context.place(*area_id);
    auto const& surfaces = context.reader().surfaces();
    auto const selected = selected_in(context);
    Times times;
    std::set<std::string> origins;
    std::set<std::string> destinations;
    for (std::size_t agent = 0; agent < selected.size(); ++agent) {
        auto const& person = context.reader().agents()[agent];
        auto const& visits = context.visits()[agent];
        if (!selected[agent]) continue;
        for (auto const& visit : visits_of(context.places(), person, visits, area.area)) {
            if (!visit.exit || !counts_in_range(context, visit.enter, *visit.exit)) continue;
            std::string from = context.name_of(person.origin);
            std::string to = context.name_of(person.destination);
            for (auto const& there : visits) {
                if (there.last < visit.enter) from = surfaces[there.surface].name;
            }
            auto const next =
                std::ranges::find_if(visits, [&](SurfaceVisit const& there) { return there.first >= *visit.exit; });
            if (next != visits.end()) to = surfaces[next->surface].name;
            if (next == visits.end() && !person.arrived) continue;
            origins.insert(from);
            destinations.insert(to);
            times[{from, to}].push_back(context.seconds(*visit.exit - visit.enter));
        }
    }
    return table_of(context, {origins.begin(), origins.end()}, {destinations.begin(), destinations.end()}, times,
                    "Persons", count_of);
}

}  // namespace pedflux::engine
