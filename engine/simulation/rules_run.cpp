#include "engine/simulation/rules_run.h"

#include "engine/behaviour/event_states.h"
#include "engine/behaviour/tally_object_states.h"
#include "engine/geometry/checks.h"
#include "engine/model/document.h"
#include "engine/simulation/agent_situation_live.h"

#include <algorithm>
#include <iterator>

namespace pedflux::engine {

namespace {

/// Calls compile(), and names the object in what it throws.
template <class Compile>
auto compiled(ObjectState const& object, Compile const& compile) try {
    return compile();
} catch (Exception const& exception) {
    refuse(title_of(object) + ": " + exception.GetMessage());
}

RuleMeasure measure_of(TallyMeasure const& measure, Document const& document, LiveRun& run, Mentions const& mentions) {
    RuleMeasure made;
    std::vector<bool> counted(run.plan.surfaces.size());
    auto const add_area = [&](GlobalId const& id) {
        auto const area = rule_area_of(document, run.plan, run.places, id);
        for (std::size_t i = 0; i < counted.size(); ++i) counted[i] = counted[i] || area.regions[i];
        if (area.volume != no_volume) made.volumes.push_back(area.volume);
    };
    switch (measure.kind) {
        case TallyType::TRANSITION:
            made.transition = measure.transition;
            return made;
        case TallyType::AREA_POPULATION:
        case TallyType::SURFACE_AREA:
            for (auto const object : measure.objects) add_area(mentions.objects[object]);
            break;
        default:
            made.of_servers = measure.kind;
            for (auto const object : measure.objects) {
                auto const server = server_of(run.plan, mentions.objects[object]);
                if (server != no_server) made.servers.push_back(server);
            }
            return made;
    }
    for (navigation::RegionIndex region = 0; region < counted.size(); ++region) {
        if (!counted[region]) continue;
        if (measure.kind == TallyType::AREA_POPULATION) {
            made.regions.push_back(region);
        } else {
            made.constant += area(run.plan.surfaces[region].walkable) * run.plan.inclines[region].length_factor;
        }
    }
    return made;
}

std::size_t passageway_of(LiveRun const& run, GlobalId const& id) {
    auto const region = run.places.region_of(id);
    bool const is_connection = region != navigation::none && region >= run.plan.floor_count;
    return is_connection ? region - run.plan.floor_count : no_passageway;
}

}  // namespace

std::unique_ptr<RulesRun> rules_of(LiveRun& run, Document const& document, Mentions& mentions) {
    RulesPlan plan;
    TriggerCompiler triggers(document, mentions);
    for (auto const* const event : document.objects<EventState>()) {
        if (!event->enabled) continue;
        plan.sources.push_back(compiled(*event, [&] { return triggers.add_event(event->id); }));
    }
    for (auto const* const broadcast : document.objects<BroadcastState>()) {
        if (broadcast->enabled) compiled(*broadcast, [&] { return triggers.add_event(broadcast->id); });
    }
    auto gates = gate_rules_of(document, run.plan, run.rules, triggers);
    auto servers = server_rules_of(document, run.plan, triggers);
    for (auto const* const change : document.objects<TallyChangeState>()) {
        if (!change->enabled) continue;
        plan.change_ranges.push_back(compiled(*change, [&] { return triggers.add(*change->range); }));
    }
    plan.triggers = triggers.take();
    plan.tallies = compile_tallies(document, mentions);
    for (auto const& measure : plan.tallies.measures) {
        plan.measures.push_back(measure_of(measure, document, run, mentions));
    }
    for (auto const& object : mentions.objects) {
        plan.passageways.push_back(passageway_of(run, object));
        plan.servers.push_back(server_of(run.plan, object));
    }
    Crossings crossings(document, run.plan, run.places, mentions.transitions);
    return std::make_unique<RulesRun>(run, std::move(plan), std::move(crossings), std::move(gates), std::move(servers));
}

RulesRun::RulesRun(LiveRun& run, RulesPlan plan, Crossings made_crossings, AccessRules made_gates,
                   AccessRules made_servers)
    : run_(run),
      plan_(std::move(plan)),
      triggers_(plan_.triggers),
      tallies(plan_.tallies, run.seed),
      crossings(std::move(made_crossings)),
      gates(std::move(made_gates)),
      servers(std::move(made_servers)) {
    for (auto const& event : plan_.triggers.events) events_.emplace(event.id, static_cast<EventIndex>(events_.size()));
    for (auto const event : plan_.sources) sources_.push_back({event});
    for (auto& waiting : run.newcomers.by_origin) {
        for (auto& person : waiting) sources_[person.source].planned.push_back(std::move(person));
        waiting.clear();
    }
    for (auto& source : sources_) {
        source.brings_people = !source.planned.empty();
        std::ranges::sort(source.planned, {}, &Newcomer::key);
    }
}

void RulesRun::step() {
    crossings.end_frame();
    triggers_.step(*this);
    for (std::uint32_t i = 0; i < sources_.size(); ++i) {
        if (moment(plan_.triggers.events[sources_[i].event].start).fires) start(i);
    }
    obey_gate_rules(run_);
    obey_server_rules(run_);
    step_tallies();
}

void RulesRun::step_tallies() {
    std::vector<int> population(run_.plan.surfaces.size());
    if (!plan_.measures.empty()) {
        for (auto const& walker : run_.walkers) ++population[walker.region];
    }
    std::vector<double> measures;
    for (auto const& measure : plan_.measures) {
        double value = measure.constant;
        if (measure.transition) value += static_cast<double>(crossings.count(*measure.transition));
        value += count_in(measure, population);
        for (auto const server : measure.servers) value += server_number(run_, server, measure.of_servers);
        measures.push_back(value);
    }
    std::vector<RangeInFrame> ranges;
    for (auto const range : plan_.change_ranges) ranges.push_back({moment(range).holds, moment(range).fires});
    tallies.step(measures, ranges);
}

int RulesRun::count_in(RuleMeasure const& measure, std::vector<int> const& population) const {
    int count = 0;
    for (auto const region : measure.regions) count += population[region];
    if (measure.volumes.empty()) return count;
    for (auto const& walker : run_.walkers) {
        auto const point = point_in_space(run_, walker);
        bool const is_counted = std::ranges::binary_search(measure.regions, walker.region);
        bool const is_inside = std::ranges::any_of(
            measure.volumes, [&](std::size_t volume) { return contains(run_.rules.volumes[volume], point); });
        if (is_inside && !is_counted) ++count;
    }
    return count;
}

Whereabouts RulesRun::whereabouts_of(Walker const& walker) const {
    Whereabouts now{walker.region, walker.position};
    if (!crossings.needs_space()) return now;
    auto const point = point_in_space(run_, walker);
    now.height = point.y - above_ground;
    now.volumes = crossings.volumes_around(point);
    return now;
}

void RulesRun::start(std::uint32_t number) {
    auto& source = sources_[number];
    if (!source.brings_people) return;
    auto const& id = plan_.triggers.events[source.event].id;
    auto people = source.starts == 0 ? std::move(source.planned)
                                     : people_of_start(*run_.project, run_.places, run_.seed, id, number, source.starts,
                                                       run_.newcomers.count);
    if (source.starts > 0) run_.newcomers.count += people.size();
    ++source.starts;
    source.here_or_coming += people.size();
    run_.waiting_to_enter += people.size();
    for (auto& person : people) {
        person.due += run_.seconds();
        auto& waiting = run_.newcomers.by_origin[person.origin];
        // Who is due at the same time comes in the order of the starts.
        auto const later =
            std::ranges::upper_bound(waiting.begin() + static_cast<std::ptrdiff_t>(run_.next_newcomer[person.origin]),
                                     waiting.end(), person.due, {}, &Newcomer::due);
        waiting.insert(later, std::move(person));
    }
}

bool RulesRun::has_people(EventIndex event) const {
    return std::ranges::any_of(
        sources_, [&](Source const& source) { return source.event == event && source.here_or_coming > 0; });
}

bool RulesRun::is_gate_open(MentionIndex gate, GateStateDirection way) const {
    auto const passageway = plan_.passageways[gate];
    if (passageway == no_passageway) return false;
    auto const& state = run_.gates[passageway];
    return way == GateStateDirection::BALL_TO_BOX ? state.ball_to_box : state.box_to_ball;
}

bool RulesRun::is_server_open(MentionIndex server, ServerAccessPoint point) const {
    return is_open(run_, plan_.servers[server], point);
}

std::optional<EventIndex> RulesRun::event_of(GlobalId const& id) const {
    auto const found = events_.find(id);
    if (found == events_.end()) return std::nullopt;
    return found->second;
}

bool RulesRun::is_active(GlobalId const& id) const {
    auto const event = event_of(id);
    return event && triggers_.is_active(*event, *this);
}

std::optional<double> RulesRun::last_start(GlobalId const& id) const {
    auto const event = event_of(id);
    if (!event || triggers_.starts(*event).empty()) return std::nullopt;
    return static_cast<double>(triggers_.starts(*event).back()) / run_.frame_rate;
}

std::size_t RulesRun::start_count(GlobalId const& id) const {
    auto const event = event_of(id);
    return event ? triggers_.starts(*event).size() : 0;
}

bool RulesRun::may_start() const {
    return std::ranges::any_of(sources_, [&](Source const& source) {
        return source.brings_people && triggers_.may_fire_again(plan_.triggers.events[source.event].start);
    });
}

void RulesRun::came_in(Walker const& walker, std::uint32_t doorway) {
    if (crossings.is_any()) crossings.came_in(walker.agent, whereabouts_of(walker), doorway);
}

void RulesRun::went_out(std::uint32_t agent, std::uint32_t doorway) {
    crossings.went_out(agent, doorway);
    auto const source = run_.persons[agent].origin.source;
    if (source != no_source) --sources_[source].here_or_coming;
}

}  // namespace pedflux::engine
