#include "engine/behaviour/filters/filter_program.h"

#include "engine/base/checks.h"
#include "engine/behaviour/compiled/named_rules.h"
#include "engine/behaviour/filters/agent_filter_states.h"

#include <string>
#include <utility>

namespace pedflux::engine {

namespace {

class Compiler {
  public:
    explicit Compiler(Document const& project) : project_(project), named_(project) {}

    FilterProgram program_of(AgentFilter const& filter) {
        auto outer = std::exchange(program_, {});
        program_.entry = append(filter, YES, NO);
        return std::exchange(program_, std::move(outer));
    }

  private:
    DecisionIndex append(AgentFilter const& filter, DecisionIndex yes, DecisionIndex no) {
        CountedRule const counted(extent_, "AgentFilter");
        return append_kind(filter, yes, no);
    }
    DecisionIndex append_kind(AgentFilter const& filter, DecisionIndex yes, DecisionIndex no);

    DecisionIndex append_named(GlobalId const& id, DecisionIndex yes, DecisionIndex no) {
        if (!project_.find<AgentFilterObjectState>(id)) {
            refuse("A filter names an agent filter object that the project does not have");
        }
        return named_.follow(id, [&](AgentFilterObjectState const& object) { return append(*object.filter, yes, no); });
    }

    Document const& project_;
    NamedRules<AgentFilterObjectState> named_;
    RuleExtent extent_;
    FilterProgram program_;
};

DecisionIndex Compiler::append_kind(AgentFilter const& filter, DecisionIndex yes, DecisionIndex no) {
    auto const kind = static_cast<AgentFilterType>(type_of(filter));
    auto const append_child = [&](std::shared_ptr<AgentFilter> const& child, DecisionIndex if_yes,
                                  DecisionIndex if_no) { return append(*child, if_yes, if_no); };
    auto const question = [&](FilterQuestion asked) {
        program_.kinds.insert(kind);
        program_.decisions.push_back({std::move(asked), yes, no});
        return static_cast<DecisionIndex>(program_.decisions.size() - 1);
    };
    // Whether something holds for the agent and an object, trip or the like.
    auto const relation = [&](auto holds, SymbolIndex other) {
        return question([holds, other](FilterSituation const& situation) { return (situation.*holds)(other); });
    };
    auto const in_range = [&](auto value, FilterRangeState const& range) {
        return question([value, min = range.min, max = range.max](FilterSituation const& situation) {
            double const found = (situation.*value)();
            return (!min || found >= *min) && (!max || found <= *max);
        });
    };
    auto& symbols = program_.symbols;
    switch (kind) {
        case AgentFilterType::ALL_AGENTS:
            return yes;
        case AgentFilterType::PROFILE:
            return relation(&FilterSituation::has_profile, symbols.object(state_of<ProfileFilterState>(filter).value));
        case AgentFilterType::CREATED_BY:
            return relation(&FilterSituation::was_created_by,
                            symbols.object(state_of<CreatedByFilterState>(filter).value));
        case AgentFilterType::ENTERED_AT:
            return relation(&FilterSituation::entered_at, symbols.object(state_of<EnteredAtFilterState>(filter).value));
        case AgentFilterType::EXITED_AT:
            return relation(&FilterSituation::exited_at, symbols.object(state_of<ExitedAtFilterState>(filter).value));
        case AgentFilterType::IN_AREA: {
            auto const area = symbols.object(state_of<InAreaFilterState>(filter).value);
            program_.areas.push_back(area);
            return relation(&FilterSituation::is_in, area);
        }
        case AgentFilterType::TOKEN:
            return relation(&FilterSituation::holds, symbols.object(state_of<TokenFilterState>(filter).value));
        case AgentFilterType::AT_SERVER:
            return relation(&FilterSituation::is_at_server,
                            symbols.object(state_of<AtServerFilterState>(filter).value));
        case AgentFilterType::IN_TRIP:
            return relation(&FilterSituation::is_on_trip,
                            SymbolTable::add(program_.trips, state_of<InTripFilterState>(filter).value));
        case AgentFilterType::AT_TRANSITION:
            return relation(&FilterSituation::makes_transition,
                            SymbolTable::add(symbols.transitions, state_of<AtTransitionFilterState>(filter).value));
        case AgentFilterType::PROXIMITY: {
            auto const& state = state_of<ProximityFilterState>(filter);
            return relation(&FilterSituation::is_close_to_others,
                            SymbolTable::add(program_.proximities, {state.distance, state.ignore_barriers}));
        }
        case AgentFilterType::IS_EVER:
            return relation(&FilterSituation::ever_passes,
                            SymbolTable::add(program_.ever, program_of(*state_of<IsEverFilterState>(filter).value)));
        case AgentFilterType::ACTIVITY:
            return question([activity = state_of<ActivityFilterState>(filter).value](FilterSituation const& situation) {
                return situation.activity() == activity;
            });
        case AgentFilterType::END_STATE:
            return question([end = state_of<EndStateFilterState>(filter).value](FilterSituation const& situation) {
                return situation.end_state() == end;
            });
        case AgentFilterType::LOCAL_DENSITY:
            return in_range(&FilterSituation::density, state_of<LocalDensityFilterState>(filter));
        case AgentFilterType::SPEED:
            return in_range(&FilterSituation::speed, state_of<SpeedFilterState>(filter));
        case AgentFilterType::NAMED:
            return append_named(state_of<NamedFilterState>(filter).value, yes, no);
        case AgentFilterType::NOT:
            return append(*state_of<NotFilterState>(filter).value, no, yes);
        case AgentFilterType::COMPOUND:
            return state_of<CompoundFilterState>(filter).combination == BooleanOperator::AND
                       ? append_all_of(children_of(filter), yes, no, append_child)
                       : append_any_of(children_of(filter), yes, no, append_child);
        case AgentFilterType::ALL_OF:
            return append_all_of(children_of(filter), yes, no, append_child);
        case AgentFilterType::ANY_OF:
            return append_any_of(children_of(filter), yes, no, append_child);
        case AgentFilterType::NONE_OF:
            return append_none_of(children_of(filter), yes, no, append_child);
    }
    refuse("A stored run does not tell whom a " + std::string(node_of(filter).kind->name) + " selects");
}

}  // namespace

FilterProgram compile(AgentFilter const& filter, Document const& project) {
    require_shallow(node_of(filter));
    return Compiler(project).program_of(filter);
}

bool passes(FilterProgram const& program, FilterSituation const& situation) {
    return decide(program.decisions, program.entry,
                  [&](FilterQuestion const& question) { return question(situation); });
}

}  // namespace pedflux::engine
