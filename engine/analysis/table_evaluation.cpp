#include "engine/analysis/table_evaluation.h"

#include "engine/analysis/encounters.h"
#include "engine/analysis/origin_destination.h"
#include "engine/analysis/query_context.h"
#include "engine/analysis/table_builder.h"
#include "engine/analysis/transitions.h"
#include "engine/analysis/trips.h"
#include "engine/base/checks.h"
#include "engine/results/agent_data.h"
#include "engine/results/level_of_service.h"

#include <array>
#include <cmath>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

using TablePointer = std::shared_ptr<TableData const>;

/// What is known of a person within the time range.
struct Walk {
    int frames = 0;
    double length = 0;   ///< metres
    double density = 0;  ///< added up over the frames
    double greatest_density = 0;
    std::optional<AgentFrame> last;
};

std::vector<Walk> walks_of(QueryContext& context) {
    std::vector<Walk> walks(context.reader().agents().size());
    auto const [first, last] = context.range();
    for (int frame = first; frame <= last; ++frame) {
        for (auto const& person : context.reader().frame(frame)) {
            auto& walk = walks[person.agent];
            if (walk.last) {
                walk.length += static_cast<double>(
                    std::hypot(person.x - walk.last->x, person.y - walk.last->y, person.z - walk.last->z));
            }
            ++walk.frames;
            walk.density += static_cast<double>(person.density);
            walk.greatest_density = std::max(walk.greatest_density, static_cast<double>(person.density));
            walk.last = person;
        }
    }
    return walks;
}

TablePointer summary(QueryContext& context) {
    TableBuilder table({"Origin", "Destination", "Profile", "Start [s]", "End [s]", "Duration [s]", "Arrived",
                        "Distance [m]", "Mean speed [m/s]", "Mean density [1/m2]", "Maximum density [1/m2]"});
    auto const walks = walks_of(context);
    auto const selected = context.selected();
    for (std::uint32_t agent = 0; agent < walks.size(); ++agent) {
        auto const& walk = walks[agent];
        if (!selected[agent]) continue;
        auto const& person = context.reader().agents()[agent];
        int const end = departure_of(context.reader(), person).value_or(person.last_frame);
        double const time_walked = context.seconds(walk.frames - 1);
        table.add(std::to_string(agent), context.name_of(person.origin), context.name_of(person.destination),
                  context.name_of(person.profile), context.clock(person.first_frame), context.clock(end),
                  context.seconds(end - person.first_frame), person.arrived ? 1 : 0, walk.length,
                  time_walked > 0 ? walk.length / time_walked : 0.0, walk.density / walk.frames, walk.greatest_density);
    }
    return table.table();
}

TablePointer trip_times(QueryContext& context) {
    auto const& trip = dynamic_cast<OnTrip const&>(context.query()).trip;
    auto const trips =
        trip ? trips_of(TripAccess::path(*trip), context.places(), context.visits()) : whole_trips_of(context.reader());
    auto const selected = context.selected();
    TableBuilder table({"Start [s]", "End [s]", "Duration [s]"});
    for (auto const& made : trips) {
        if (!selected[made.agent] || !context.is_in_range(made.start) || !context.is_in_range(made.end)) continue;
        table.add(std::to_string(made.agent), context.clock(made.start), context.clock(made.end),
                  context.seconds(made.end - made.start));
    }
    return table.table();
}

TablePointer area_times(QueryContext& context) {
    std::vector<RunPlace> areas;
    for (auto const& area : dynamic_cast<InAreas const&>(context.query()).areas) areas.push_back(context.place(area));
    auto const selected = context.selected();
    auto const [first, last] = context.range();
    TableBuilder table({"Area", "Start [s]", "End [s]", "Duration [s]"});
    for (std::uint32_t agent = 0; agent < selected.size(); ++agent) {
        if (!selected[agent]) continue;
        auto const& person = context.reader().agents()[agent];
        for (auto const& area : areas) {
            for (auto const& visit : visits_of(context.places(), person, context.visits()[agent], area.area)) {
                int const start = std::max(visit.enter, first);
                int const end = std::min(visit.exit.value_or(context.reader().last_frame() + 1), last + 1);
                if (start >= end) continue;
                table.add(std::to_string(agent), area.name, context.clock(start), context.clock(end),
                          context.seconds(end - start));
            }
        }
    }
    return table.table();
}

TablePointer level_of_service_times(QueryContext& context) {
    std::vector<std::array<int, 6>> frames(context.reader().agents().size());
    auto const [first, last] = context.range();
    for (int frame = first; frame <= last; ++frame) {
        for (auto const& person : context.reader().frame(frame)) {
            auto const standard = standard_of(context.reader().surfaces()[person.surface].kind);
            auto const level = level_of_service(static_cast<double>(person.density), standard).GetLevel();
            ++frames[person.agent]
                    [static_cast<std::size_t>(static_cast<int>(level) - static_cast<int>(LevelOfServiceValue::A))];
        }
    }
    auto const selected = context.selected();
    TableBuilder table({"A [s]", "B [s]", "C [s]", "D [s]", "E [s]", "F [s]"});
    for (std::size_t agent = 0; agent < frames.size(); ++agent) {
        if (!selected[agent]) continue;
        std::vector<Cell> cells;
        for (int const count : frames[agent]) cells.emplace_back(context.seconds(count));
        table.add(std::to_string(agent), cells);
    }
    return table.table();
}

TablePointer transitions(QueryContext& context) {
    auto const& transition = dynamic_cast<AtTransition const&>(context.query()).transition;
    if (!transition) refuse(fmt::format("{} needs a transition", title_of(context.query())));
    auto const selected = context.selected();
    auto const& surfaces = context.reader().surfaces();
    auto const name = [&](SurfaceIndex surface) {
        return surface < surfaces.size() ? surfaces[surface].name : std::string();
    };
    TableBuilder table({"Time [s]", "From", "To"});
    for (auto const& crossing : crossings_at(*transition, context.places(), context.visits())) {
        if (!selected[crossing.agent] || !context.is_in_range(crossing.frame)) continue;
        table.add(std::to_string(crossing.agent), context.clock(crossing.frame), name(crossing.from),
                  name(crossing.to));
    }
    return table.table();
}

using Evaluate = TablePointer (*)(QueryContext& context);

Evaluate evaluation_of(TableQueryType type) {
#define CASE(Query, Queries, TYPE, made, evaluation, ...) \
    case TableQueryType::TYPE:                            \
        return evaluation;
    switch (type) { PEDFLUX_TABLE_QUERIES(CASE) }
#undef CASE
    return nullptr;
}

}  // namespace

std::shared_ptr<TableData const> table_of(Document const& document, TableQueryState const& query, TableQueryType type) {
    auto const evaluate = evaluation_of(type);
    if (!evaluate) refuse_unevaluated(query);
    QueryContext context(document, query);
    return evaluate(context);
}

}  // namespace pedflux::engine
