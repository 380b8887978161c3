#include "engine/behaviour/tests/test_program.h"

#include "engine/base/hashing.h"
#include "engine/behaviour/compiled/named_rules.h"
#include "engine/behaviour/tests/agent_test_states.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

/// Objects by their numbers.
using Objects = std::vector<SymbolIndex>;

template <class Predicate>
bool holds(Objects const& objects, LogicQuantifier quantifier, Predicate const& predicate) {
    switch (quantifier) {
        case LogicQuantifier::ALL_OF:
            return std::ranges::all_of(objects, predicate);
        case LogicQuantifier::ANY_OF:
            return std::ranges::any_of(objects, predicate);
        case LogicQuantifier::NONE_OF:
            break;
    }
    return std::ranges::none_of(objects, predicate);
}

bool is_gate(GateStateTestState const& state, SymbolIndex gate, TestSituation const& situation) {
    bool const open = state.access == AgentAccess::OPEN;
    bool const forth = situation.is_gate_open(gate, GateStateDirection::BALL_TO_BOX) == open;
    bool const back = situation.is_gate_open(gate, GateStateDirection::BOX_TO_BALL) == open;
    switch (state.direction) {
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
}

bool is_server(ServerStateTestState const& state, SymbolIndex server, TestSituation const& situation) {
    bool const open = state.access == AgentAccess::OPEN;
    bool const entrance = situation.is_server_open(server, ServerAccessPoint::ENTRANCE) == open;
    bool const exit = situation.is_server_open(server, ServerAccessPoint::EXIT) == open;
    return (state.point == ServerAccessPoint::EXIT || entrance) && (state.point == ServerAccessPoint::ENTRANCE || exit);
}

class Compiler {
  public:
    Compiler(Document const& project, SymbolTable& symbols, TestProgram& program)
        : named_(project), symbols_(symbols), program_(program) {}

    DecisionIndex append(AgentTest const& test, DecisionIndex yes, DecisionIndex no) {
        CountedRule const counted(extent_, "AgentTest");
        return append_kind(test, yes, no);
    }

  private:
    DecisionIndex append_kind(AgentTest const& test, DecisionIndex yes, DecisionIndex no);

    Objects objects(std::vector<GlobalId> const& ids) {
        Objects found;
        for (auto const& id : ids) found.push_back(symbols_.object(id));
        return found;
    }

    NamedRules<AgentTestObjectState> named_;
    SymbolTable& symbols_;
    TestProgram& program_;
    RuleExtent extent_;
};

DecisionIndex Compiler::append_kind(AgentTest const& test, DecisionIndex yes, DecisionIndex no) {
    auto const append_child = [&](std::shared_ptr<AgentTest> const& child, DecisionIndex if_yes, DecisionIndex if_no) {
        return append(*child, if_yes, if_no);
    };
    auto const question = [&](TestQuestion asked) {
        program_.decisions.push_back({std::move(asked), yes, no});
        return static_cast<DecisionIndex>(program_.decisions.size() - 1);
    };
    // Whether the agent has to do with one of the objects in a way.
    auto const any_object = [&](auto relation, std::vector<GlobalId> const& ids) {
        return question([relation, objects = objects(ids)](TestSituation const& situation) {
            return std::ranges::any_of(objects, [&](SymbolIndex object) { return (situation.*relation)(object); });
        });
    };
    switch (static_cast<AgentTestType>(type_of(test))) {
        case AgentTestType::ALWAYS_TRUE:
            return yes;
        case AgentTestType::AGE: {
            auto const& state = state_of<AgeTestState>(test);
            return question([age = state.age, comparison = state.comparison](TestSituation const& situation) {
                bool const is_older = situation.age() >= age;
                return is_older == (comparison == AgentAgeComparison::OLDER_THAN);
            });
        }
        case AgentTestType::RANDOM_CHANCE:
            return question([chance = state_of<RandomChanceTestState>(test).chance,
                             number = symbols_.chances++](TestSituation const& situation) {
                return draw(situation.chance_key(), number) < chance;
            });
        case AgentTestType::CREATED_BY:
            return any_object(&TestSituation::was_created_by, state_of<CreatedByTestState>(test).objects);
        case AgentTestType::ENTERED_AT:
            return any_object(&TestSituation::entered_at, state_of<EnteredAtTestState>(test).objects);
        case AgentTestType::IN_AREA:
            return any_object(&TestSituation::is_in, state_of<InAreaTestState>(test).objects);
        case AgentTestType::PROFILE:
            return any_object(&TestSituation::has_profile, state_of<ProfileTestState>(test).objects);
        case AgentTestType::INITIAL_EXIT:
            return any_object(&TestSituation::initial_exit_is, state_of<InitialExitTestState>(test).objects);
        case AgentTestType::TOKEN: {
            auto const& state = state_of<TokenTestState>(test);
            return question(
                [tokens = objects(state.objects), quantifier = state.quantifier](TestSituation const& situation) {
                    return holds(tokens, quantifier, [&](SymbolIndex token) { return situation.holds(token); });
                });
        }
        case AgentTestType::EVENT_ACTIVE: {
            auto const& state = state_of<EventActiveTestState>(test);
            auto const events = objects(state.objects);
            program_.events.insert(program_.events.end(), events.begin(), events.end());
            bool const active = state.activity == EventStateActivity::ACTIVE;
            return question([events, active, quantifier = state.quantifier](TestSituation const& situation) {
                return holds(events, quantifier,
                             [&](SymbolIndex event) { return situation.is_active(event) == active; });
            });
        }
        case AgentTestType::GATE_STATE: {
            auto const& state = state_of<GateStateTestState>(test);
            return question([state, gates = objects(state.objects)](TestSituation const& situation) {
                return holds(gates, state.quantifier,
                             [&](SymbolIndex gate) { return is_gate(state, gate, situation); });
            });
        }
        case AgentTestType::SERVER_STATE: {
            auto const& state = state_of<ServerStateTestState>(test);
            return question([state, servers = objects(state.objects)](TestSituation const& situation) {
                return holds(servers, state.quantifier,
                             [&](SymbolIndex server) { return is_server(state, server, situation); });
            });
        }
        case AgentTestType::TALLY: {
            auto const& state = state_of<TallyTestState>(test);
            auto const first = SymbolTable::add(symbols_.tallies, copy_of(state.first));
            auto const second = SymbolTable::add(symbols_.tallies, copy_of(state.second));
            return question([first, second, comparison = state.comparison](TestSituation const& situation) {
                return compares(situation.tally(first), comparison, situation.tally(second));
            });
        }
        case AgentTestType::TIME: {
            auto const& state = state_of<TimeTestState>(test);
            auto const time = SymbolTable::add(symbols_.times, SharedValue<TimeReference>::value(*state.time));
            return question([time, comparison = state.comparison](TestSituation const& situation) {
                bool const is_before = situation.clock() < situation.time(time);
                return is_before == (comparison == TimeComparison::BEFORE);
            });
        }
        case AgentTestType::NAMED:
            return named_.follow(state_of<NamedTestState>(test).object,
                                 [&](AgentTestObjectState const& object) { return append(*object.test, yes, no); });
        case AgentTestType::NOT:
            return append(*state_of<NotTestState>(test).child, no, yes);
        case AgentTestType::COMPOUND:
            return state_of<CompoundTestState>(test).combination == BooleanOperator::AND
                       ? append_all_of(children_of(test), yes, no, append_child)
                       : append_any_of(children_of(test), yes, no, append_child);
        case AgentTestType::ALL_OF:
            return append_all_of(children_of(test), yes, no, append_child);
        case AgentTestType::ANY_OF:
            return append_any_of(children_of(test), yes, no, append_child);
        case AgentTestType::NONE_OF:
            return append_none_of(children_of(test), yes, no, append_child);
    }
    throw Exception(fmt::format("AgentTest: kind {} cannot be evaluated", type_of(test)));
}

}  // namespace

TestProgram compile(AgentTest const& test, Document const& project, SymbolTable& symbols) {
    require_shallow(node_of(test));
    TestProgram program;
    program.entry = Compiler(project, symbols, program).append(test, YES, NO);
    return program;
}

bool passes(TestProgram const& program, TestSituation const& situation) {
    return decide(program.decisions, program.entry, [&](TestQuestion const& question) { return question(situation); });
}

double draw(ChanceKey const& key, SymbolIndex number) {
    return unit_interval(mixed({key.seed, key.agent, key.step, std::uint64_t{number}}));
}

}  // namespace pedflux::engine
