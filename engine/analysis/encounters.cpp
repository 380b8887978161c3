#include "engine/analysis/encounters.h"

#include "engine/analysis/proximity.h"
#include "engine/analysis/table_builder.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace pedflux::engine {

namespace {

/// Two persons who are close to each other from the first frame to the last.
struct Encounter {
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    int first = 0;
    int last = 0;
};

using Pair = std::pair<std::uint32_t, std::uint32_t>;

/// The encounters that last long enough, by start and then by person.
std::vector<Encounter> encounters_of(QueryContext& context, OfEncounters const& query) {
    Proximity const proximity(context.reader(), query.distance, query.ignore_obstacles);
    std::map<Pair, Encounter> open;
    std::vector<Encounter> found;
    auto const close = [&](Encounter const& encounter) {
        if (context.seconds(encounter.last + 1 - encounter.first) >= query.min_duration) found.push_back(encounter);
    };
    auto const [first, last] = context.range();
    for (int frame = first; frame <= last; ++frame) {
        auto const persons = context.reader().frame(frame);
        for (auto const& [i, j] : proximity.pairs(persons)) {
            Encounter const now{persons[i].agent, persons[j].agent, frame, frame};
            auto const [known, is_new] = open.try_emplace({now.a, now.b}, now);
            auto& encounter = known->second;
            if (!is_new && context.seconds(frame - encounter.last - 1) > query.max_gap) {
                close(encounter);
                encounter = now;
            }
            encounter.last = frame;
        }
    }
    for (auto const& [pair, encounter] : open) close(encounter);
    std::ranges::sort(found, {}, [](Encounter const& one) { return std::tuple(one.first, one.a, one.b); });
    return found;
}

}  // namespace

std::shared_ptr<TableData const> encounters(QueryContext& context) {
    auto const& query = dynamic_cast<OfEncounters const&>(context.query());
    auto const selected = context.selected();
    auto found = encounters_of(context, query);
    std::erase_if(found, [&](Encounter const& one) { return !selected[one.a] || !selected[one.b]; });
    auto const duration = [&](Encounter const& one) { return context.seconds(one.last + 1 - one.first); };

    if (query.view == AgentProximityTableViewType::BY_AGENT) {
        struct Sum {
            std::set<std::uint32_t> others;
            int encounters = 0;
            double duration = 0;
        };
        std::map<std::uint32_t, Sum> sums;
        for (auto const& one : found) {
            for (auto const& [agent, other] : {Pair{one.a, one.b}, Pair{one.b, one.a}}) {
                auto& sum = sums[agent];
                sum.others.insert(other);
                ++sum.encounters;
                sum.duration += duration(one);
            }
        }
        TableBuilder table({"Persons", "Interactions", "Duration [s]"});
        for (auto const& [agent, sum] : sums) {
            table.add(std::to_string(agent), static_cast<int>(sum.others.size()), sum.encounters, sum.duration);
        }
        return table.table();
    }

    bool const one_way = query.view == AgentProximityTableViewType::ONE_WAY_INTERACTIONS;
    auto const subjects = one_way ? context.selected_by(query.subjects) : selected;
    auto const targets = one_way ? context.selected_by(query.targets) : selected;
    TableBuilder table({"With", "Start [s]", "End [s]", "Duration [s]"});
    auto const add = [&](std::uint32_t agent, std::uint32_t other, Encounter const& one) {
        if (!subjects[agent] || !targets[other]) return;
        table.add(std::to_string(agent), static_cast<int>(other), context.clock(one.first), context.clock(one.last + 1),
                  duration(one));
    };
    for (auto const& one : found) {
        add(one.a, one.b, one);
        if (one_way) add(one.b, one.a, one);
    }
    return table.table();
}

}  // namespace pedflux::engine
