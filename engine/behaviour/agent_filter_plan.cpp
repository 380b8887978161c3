#include "engine/behaviour/agent_filter_plan.h"

#include "engine/behaviour/filters/agent_filter_states.h"
#include "engine/behaviour/named_rules.h"

#include <pedflux/exception.h>

#include <array>
#include <memory>
#include <string>

namespace pedflux::engine {

namespace {

class Compiler {
  public:
    Compiler(Document const& project, SymbolTable& symbols, FilterPlan& plan)
        : named_(project), mentions_(symbols), plan_(plan) {}

    DecisionIndex append(AgentFilter const& filter, DecisionIndex yes, DecisionIndex no) {
        CountedRule const counted(extent_, "AgentFilter");
        return append_kind(filter, yes, no);
    }

  private:
    DecisionIndex append_kind(AgentFilter const& filter, DecisionIndex yes, DecisionIndex no);

    template <class Question>
    DecisionIndex question(Question const& question, DecisionIndex yes, DecisionIndex no) {
        plan_.decisions.push_back({question, yes, no});
        return static_cast<DecisionIndex>(plan_.decisions.size() - 1);
    }

    DecisionIndex ever(AgentFilter const& filter, DecisionIndex yes, DecisionIndex no) {
        plan_.ever.push_back(append(filter, YES, NO));
        return question(ask::Ever{plan_.ever.size() - 1}, yes, no);
    }

    NamedRules<AgentFilterObjectState> named_;
    SymbolTable& mentions_;
    FilterPlan& plan_;
    RuleExtent extent_;
};

DecisionIndex Compiler::append_kind(AgentFilter const& filter, DecisionIndex yes, DecisionIndex no) {
    using Situation = FilterSituation;
    auto const append_child = [&](std::shared_ptr<AgentFilter> const& child, DecisionIndex if_yes,
                                  DecisionIndex if_no) { return append(*child, if_yes, if_no); };
    auto const related = [&](bool (Situation::*relation)(SymbolIndex) const, SymbolIndex other) {
        return question(ask::Related{relation, other}, yes, no);
    };
    auto const related_object = [&](bool (Situation::*relation)(SymbolIndex) const, GlobalId const& object) {
        return related(relation, mentions_.object(object));
    };
    auto const within = [&](double (Situation::*quantity)() const) {
        auto const& range = state_of<FilterRangeState>(filter);
        ask::Within asked{quantity};
        asked.min = range.min.value_or(asked.min);
        asked.max = range.max.value_or(asked.max);
        return question(asked, yes, no);
    };
    switch (static_cast<AgentFilterType>(type_of(filter))) {
        case AgentFilterType::ALL_AGENTS:
            return yes;
        case AgentFilterType::ACTIVITY:
            return question(ask::Activity{state_of<ActivityFilterState>(filter).value}, yes, no);
        case AgentFilterType::END_STATE:
            return question(ask::EndState{state_of<EndStateFilterState>(filter).value}, yes, no);
        case AgentFilterType::AT_SERVER:
            return related_object(&Situation::is_at, state_of<AtServerFilterState>(filter).value);
        case AgentFilterType::CREATED_BY:
            return related_object(&Situation::was_created_by, state_of<CreatedByFilterState>(filter).value);
        case AgentFilterType::ENTERED_AT:
            return related_object(&Situation::entered_at, state_of<EnteredAtFilterState>(filter).value);
        case AgentFilterType::EXITED_AT:
            return related_object(&Situation::exited_at, state_of<ExitedAtFilterState>(filter).value);
        case AgentFilterType::IN_AREA:
            return related_object(&Situation::is_in, state_of<InAreaFilterState>(filter).value);
        case AgentFilterType::PROFILE:
            return related_object(&Situation::has_profile, state_of<ProfileFilterState>(filter).value);
        case AgentFilterType::TOKEN:
            return related_object(&Situation::holds, state_of<TokenFilterState>(filter).value);
        case AgentFilterType::AT_TRANSITION: {
            auto const& transition = state_of<AtTransitionFilterState>(filter).value;
            return related(&Situation::makes, SymbolTable::add(mentions_.transitions, copy_of(transition)));
        }
        case AgentFilterType::IN_TRIP:
            return related(&Situation::is_on,
                           SymbolTable::add(mentions_.trips, state_of<InTripFilterState>(filter).value));
        case AgentFilterType::LOCAL_DENSITY:
            return within(&Situation::local_density);
        case AgentFilterType::SPEED:
            return within(&Situation::speed);
        case AgentFilterType::PROXIMITY: {
            auto const& state = state_of<ProximityFilterState>(filter);
            return question(ask::Proximity{state.distance, state.ignore_barriers}, yes, no);
        }
        case AgentFilterType::NAMED:
            return named_.follow(state_of<NamedFilterState>(filter).value,
                                 [&](AgentFilterObjectState const& object) { return append(*object.filter, yes, no); });
        case AgentFilterType::NOT:
            return append(*state_of<NotFilterState>(filter).value, no, yes);
        case AgentFilterType::IS_EVER:
            return ever(*state_of<IsEverFilterState>(filter).value, yes, no);
        case AgentFilterType::COMPOUND: {
            auto const& state = state_of<CompoundFilterState>(filter);
            auto const children = std::array{state.first, state.second};
            return state.combination == BooleanOperator::AND ? append_all_of(children, yes, no, append_child)
                                                             : append_any_of(children, yes, no, append_child);
        }
        case AgentFilterType::ALL_OF:
            return append_all_of(state_of<FilterListState>(filter).children, yes, no, append_child);
        case AgentFilterType::ANY_OF:
            return append_any_of(state_of<FilterListState>(filter).children, yes, no, append_child);
        case AgentFilterType::NONE_OF:
            return append_none_of(state_of<FilterListState>(filter).children, yes, no, append_child);
    }
    throw Exception("AgentFilter: kind " + std::to_string(type_of(filter)) + " cannot be evaluated");
}

/// Answers the questions of one plan about one agent.
struct Answers {
    FilterSituation const& situation;
    std::span<std::uint8_t const> memory;

    bool operator()(ask::Activity const& asked) const { return situation.activity() == asked.activity; }
    bool operator()(ask::EndState const& asked) const { return situation.end_state() == asked.state; }
    bool operator()(ask::Related const& asked) const { return (situation.*asked.relation)(asked.other); }
    bool operator()(ask::Within const& asked) const {
        double const quantity = (situation.*asked.quantity)();
        return asked.min <= quantity && quantity <= asked.max;
    }
    bool operator()(ask::Proximity const& asked) const {
        return situation.has_neighbor_within(asked.distance, asked.ignore_barriers);
    }
    bool operator()(ask::Ever const& asked) const { return memory[asked.number] != 0; }
};

bool selects_from(FilterPlan const& plan, DecisionIndex entry, Answers const& answers) {
    return decide(plan.decisions, entry, [&](FilterQuestion const& question) { return std::visit(answers, question); });
}

}  // namespace

FilterPlan compile(AgentFilter const& filter, Document const& project, SymbolTable& symbols) {
    require_shallow(node_of(filter));
    FilterPlan plan;
    plan.entry = Compiler(project, symbols, plan).append(filter, YES, NO);
    return plan;
}

void observe(FilterPlan const& plan, FilterSituation const& situation, EverSelected memory) {
    for (std::size_t number = 0; number < plan.ever.size(); ++number) {
        if (memory[number] == 0) memory[number] = selects_from(plan, plan.ever[number], {situation, memory}) ? 1 : 0;
    }
}

bool selects(FilterPlan const& plan, FilterSituation const& situation, std::span<std::uint8_t const> memory) {
    return selects_from(plan, plan.entry, {situation, memory});
}

}  // namespace pedflux::engine
