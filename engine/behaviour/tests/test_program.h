#pragma once

#include "engine/behaviour/agent_situation.h"
#include "engine/behaviour/decisions.h"
#include "engine/behaviour/symbol_table.h"

#include <pedflux/agent_tests.h>

#include <cstdint>
#include <variant>
#include <vector>

/// Agent tests compiled for a simulation.
namespace pedflux::engine {

struct TestProgram;

/// The questions that a test comes down to.
namespace ask {

/// A part of the plan's list of objects.
struct Objects {
    std::uint32_t first;
    std::uint32_t count;
};

struct Age {
    double seconds;
    AgentAgeComparison comparison;
};
struct Chance {
    double chance;
    SymbolIndex number;  ///< tells the tests of chance of a simulation apart
};
/// Whether the agent has to do with one of the objects in a way.
struct AnyObject {
    bool (TestSituation::*relation)(SymbolIndex object) const;
    Objects objects;
};
struct InitialExit {
    Objects portals;
};
struct Tokens {
    Objects tokens;
    LogicQuantifier quantifier;
};
struct Events {
    Objects events;
    LogicQuantifier quantifier;
    EventStateActivity activity;
};
struct Gates {
    Objects gates;
    LogicQuantifier quantifier;
    GateStateDirection direction;
    AgentAccess access;
};
struct Servers {
    Objects servers;
    LogicQuantifier quantifier;
    ServerAccessPoint point;
    AgentAccess access;
};
struct Tallies {
    SymbolIndex first;
    ComparisonType comparison;
    SymbolIndex second;
};
struct Time {
    SymbolIndex time;
    TimeComparison comparison;
};

}  // namespace ask

using TestQuestion = std::variant<ask::Age, ask::Chance, ask::AnyObject, ask::InitialExit, ask::Tokens, ask::Events,
                                  ask::Gates, ask::Servers, ask::Tallies, ask::Time>;

/// A test with all tests that it is made of or names.
struct TestProgram {
    Decisions<TestQuestion> decisions;
    std::vector<SymbolIndex> objects;  ///< that the questions' lists are parts of
    DecisionIndex entry = YES;
};

/// Compiles a test. Named tests are those of the project at this moment.
/// @throws Exception when a name leads back to itself or to nothing, or when the tests are too many or nest too deep
TestProgram compile(AgentTest const& test, Document const& project, SymbolTable& symbols);

/// Whether an agent passes.
bool passes(TestProgram const& plan, TestSituation const& situation);

/// A number of [0, 1), uniform over agents, steps and tests of chance. It is the key's numbers, mixed one after the
/// other by the finalizer of SplitMix64 (Steele, Lea, Flood, "Fast Splittable Pseudorandom Number Generators", 2014).
double draw(ChanceKey const& key, SymbolIndex number);

}  // namespace pedflux::engine
