#pragma once

#include "engine/behaviour/compiled/agent_situation.h"
#include "engine/behaviour/compiled/decisions.h"
#include "engine/behaviour/compiled/symbol_table.h"

#include <pedflux/agent_tests.h>

#include <functional>
#include <vector>

/// Agent tests compiled for a simulation. Each kind is compiled and answered in one place, in test_program.cpp.
namespace pedflux::engine {

/// One question of a test about an agent.
using TestQuestion = std::function<bool(TestSituation const& situation)>;

/// A test with all tests that it is made of or names.
struct TestProgram {
    Decisions<TestQuestion> decisions;
    DecisionIndex entry = YES;
    std::vector<SymbolIndex> events;  ///< the events whose activity is asked for
};

/// Compiles a test. Named tests are those of the project at this moment.
/// @throws Exception when a name leads back to itself or to nothing, or when the tests are too many or nest too deep
TestProgram compile(AgentTest const& test, Document const& project, SymbolTable& symbols);

/// Whether an agent passes.
bool passes(TestProgram const& program, TestSituation const& situation);

/// A number of [0, 1), uniform over agents, steps and tests of chance. It is the key's numbers, mixed one after the
/// other by the finalizer of SplitMix64 (Steele, Lea, Flood, "Fast Splittable Pseudorandom Number Generators", 2014).
double draw(ChanceKey const& key, SymbolIndex number);

}  // namespace pedflux::engine
