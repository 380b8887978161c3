#include "engine/behaviour/tests/test_program.h"

#include "engine/base/hashing.h"
#include "engine/behaviour/named_rules.h"
#include "engine/behaviour/tests/agent_test_states.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <array>
#include <span>

namespace pedflux::engine {

namespace {

class Compiler {
  public:
    Compiler(Document const& project, SymbolTable& symbols, TestProgram& plan)
        : named_(project), mentions_(symbols), plan_(plan) {}

    DecisionIndex append(AgentTest const& test, DecisionIndex yes, DecisionIndex no) {
        CountedRule const counted(extent_, "AgentTest");
        return append_kind(test, yes, no);
    }

  private:
    DecisionIndex append_kind(AgentTest const& test, DecisionIndex yes, DecisionIndex no);

    template <class Question>
    DecisionIndex question(Question const& question, DecisionIndex yes, DecisionIndex no) {
        plan_.decisions.push_back({question, yes, no});
        return static_cast<DecisionIndex>(plan_.decisions.size() - 1);
    }

    ask::Objects objects(std::vector<GlobalId> const& ids) {
        auto const first = static_cast<std::uint32_t>(plan_.objects.size());
        for (auto const& id : ids) plan_.objects.push_back(mentions_.object(id));
        return {first, static_cast<std::uint32_t>(ids.size())};
    }

    NamedRules<AgentTestObjectState> named_;
    SymbolTable& mentions_;
    TestProgram& plan_;
    RuleExtent extent_;
};

DecisionIndex Compiler::append_kind(AgentTest const& test, DecisionIndex yes, DecisionIndex no) {
    auto const append_child = [&](std::shared_ptr<AgentTest> const& child, DecisionIndex if_yes, DecisionIndex if_no) {
        return append(*child, if_yes, if_no);
    };
    auto const any_object = [&](auto relation, std::vector<GlobalId> const& ids) {
        return question(ask::AnyObject{relation, objects(ids)}, yes, no);
    };
    switch (static_cast<AgentTestType>(type_of(test))) {
        case AgentTestType::ALWAYS_TRUE:
            return yes;
        case AgentTestType::AGE: {
            auto const& state = state_of<AgeTestState>(test);
            return question(ask::Age{state.age, state.comparison}, yes, no);
        }
        case AgentTestType::RANDOM_CHANCE:
            return question(ask::Chance{state_of<RandomChanceTestState>(test).chance, mentions_.chances++}, yes, no);
        case AgentTestType::CREATED_BY:
            return any_object(&TestSituation::was_created_by, state_of<CreatedByTestState>(test).objects);
        case AgentTestType::ENTERED_AT:
            return any_object(&TestSituation::entered_at, state_of<EnteredAtTestState>(test).objects);
        case AgentTestType::IN_AREA:
            return any_object(&TestSituation::is_in, state_of<InAreaTestState>(test).objects);
        case AgentTestType::PROFILE:
            return any_object(&TestSituation::has_profile, state_of<ProfileTestState>(test).objects);
        case AgentTestType::INITIAL_EXIT:
            return question(ask::InitialExit{objects(state_of<InitialExitTestState>(test).objects)}, yes, no);
        case AgentTestType::TOKEN: {
            auto const& state = state_of<TokenTestState>(test);
            return question(ask::Tokens{objects(state.objects), state.quantifier}, yes, no);
        }
        case AgentTestType::EVENT_ACTIVE: {
            auto const& state = state_of<EventActiveTestState>(test);
            return question(ask::Events{objects(state.objects), state.quantifier, state.activity}, yes, no);
        }
        case AgentTestType::GATE_STATE: {
            auto const& state = state_of<GateStateTestState>(test);
            return question(ask::Gates{objects(state.objects), state.quantifier, state.direction, state.access}, yes,
                            no);
        }
        case AgentTestType::SERVER_STATE: {
            auto const& state = state_of<ServerStateTestState>(test);
            return question(ask::Servers{objects(state.objects), state.quantifier, state.point, state.access}, yes, no);
        }
        case AgentTestType::TALLY: {
            auto const& state = state_of<TallyTestState>(test);
            auto const first = SymbolTable::add(mentions_.tallies, copy_of(state.first));
            auto const second = SymbolTable::add(mentions_.tallies, copy_of(state.second));
            return question(ask::Tallies{first, state.comparison, second}, yes, no);
        }
        case AgentTestType::TIME: {
            auto const& state = state_of<TimeTestState>(test);
            auto const time = SymbolTable::add(mentions_.times, SharedValue<TimeReference>::value(*state.time));
            return question(ask::Time{time, state.comparison}, yes, no);
        }
        case AgentTestType::NAMED:
            return named_.follow(state_of<NamedTestState>(test).object,
                                 [&](AgentTestObjectState const& object) { return append(*object.test, yes, no); });
        case AgentTestType::NOT:
            return append(*state_of<NotTestState>(test).child, no, yes);
        case AgentTestType::COMPOUND: {
            auto const& state = state_of<CompoundTestState>(test);
            auto const children = std::array{state.first, state.second};
            return state.combination == BooleanOperator::AND ? append_all_of(children, yes, no, append_child)
                                                             : append_any_of(children, yes, no, append_child);
        }
        case AgentTestType::ALL_OF:
            return append_all_of(state_of<TestListState>(test).children, yes, no, append_child);
        case AgentTestType::ANY_OF:
            return append_any_of(state_of<TestListState>(test).children, yes, no, append_child);
        case AgentTestType::NONE_OF:
            return append_none_of(state_of<TestListState>(test).children, yes, no, append_child);
    }
    throw Exception("AgentTest: kind " + std::to_string(type_of(test)) + " cannot be evaluated");
}

/// Answers the questions of one plan about one agent.
struct Answers {
    std::vector<SymbolIndex> const& objects;
    TestSituation const& situation;

    bool operator()(ask::Age const& age) const {
        bool const is_older = situation.age() >= age.seconds;
        return is_older == (age.comparison == AgentAgeComparison::OLDER_THAN);
    }
    bool operator()(ask::Chance const& chance) const {
        return draw(situation.chance_key(), chance.number) < chance.chance;
    }
    bool operator()(ask::AnyObject const& any) const {
        return holds(any.objects, LogicQuantifier::ANY_OF,
                     [&](SymbolIndex object) { return (situation.*any.relation)(object); });
    }
    bool operator()(ask::InitialExit const& exit) const {
        return holds(exit.portals, LogicQuantifier::ANY_OF,
                     [&](SymbolIndex portal) { return situation.initial_exit_is(portal); });
    }
    bool operator()(ask::Tokens const& held) const {
        return holds(held.tokens, held.quantifier, [&](SymbolIndex token) { return situation.holds(token); });
    }
    bool operator()(ask::Events const& events) const {
        return holds(events.events, events.quantifier, [&](SymbolIndex event) {
            return situation.is_active(event) == (events.activity == EventStateActivity::ACTIVE);
        });
    }
    bool operator()(ask::Gates const& gates) const {
        bool const open = gates.access == AgentAccess::OPEN;
        return holds(gates.gates, gates.quantifier, [&](SymbolIndex gate) {
            bool const forth = situation.is_gate_open(gate, GateStateDirection::BALL_TO_BOX) == open;
            bool const back = situation.is_gate_open(gate, GateStateDirection::BOX_TO_BALL) == open;
            switch (gates.direction) {
                case GateStateDirection::BOTH_WAYS:
                    return forth && back;
                case GateStateDirection::BALL_TO_BOX:
                    return forth;
                case GateStateDirection::BOX_TO_BALL:
                    return back;
                case GateStateDirection::EITHER_WAY:
                    break;
            }
            return forth || back;
        });
    }
    bool operator()(ask::Servers const& servers) const {
        bool const open = servers.access == AgentAccess::OPEN;
        return holds(servers.servers, servers.quantifier, [&](SymbolIndex server) {
            bool const entrance = situation.is_server_open(server, ServerAccessPoint::ENTRANCE) == open;
            bool const exit = situation.is_server_open(server, ServerAccessPoint::EXIT) == open;
            return (servers.point == ServerAccessPoint::EXIT || entrance) &&
                   (servers.point == ServerAccessPoint::ENTRANCE || exit);
        });
    }
    bool operator()(ask::Tallies const& tallies) const {
        return compares(situation.tally(tallies.first), tallies.comparison, situation.tally(tallies.second));
    }
    bool operator()(ask::Time const& time) const {
        bool const is_before = situation.clock() < situation.time(time.time);
        return is_before == (time.comparison == TimeComparison::BEFORE);
    }

  private:
    template <class Predicate>
    bool holds(ask::Objects part, LogicQuantifier quantifier, Predicate const& predicate) const {
        auto const list = std::span(objects).subspan(part.first, part.count);
        switch (quantifier) {
            case LogicQuantifier::ALL_OF:
                return std::ranges::all_of(list, predicate);
            case LogicQuantifier::ANY_OF:
                return std::ranges::any_of(list, predicate);
            case LogicQuantifier::NONE_OF:
                break;
        }
        return std::ranges::none_of(list, predicate);
    }
};

}  // namespace

TestProgram compile(AgentTest const& test, Document const& project, SymbolTable& symbols) {
    require_shallow(node_of(test));
    TestProgram plan;
    plan.entry = Compiler(project, symbols, plan).append(test, YES, NO);
    return plan;
}

bool passes(TestProgram const& plan, TestSituation const& situation) {
    Answers const answers{plan.objects, situation};
    return decide(plan.decisions, plan.entry,
                  [&](TestQuestion const& question) { return std::visit(answers, question); });
}

double draw(ChanceKey const& key, SymbolIndex number) {
    return unit_interval(mixed({key.seed, key.agent, key.step, std::uint64_t{number}}));
}

}  // namespace pedflux::engine
