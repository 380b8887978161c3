#pragma once

#include "engine/behaviour/compiled/symbol_table.h"
#include "engine/model/document.h"

#include <pedflux/distributions.h>
#include <pedflux/identifiers.h>
#include <pedflux/tallies.h>
#include <pedflux/triggers.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

/// Tallies, tally objects and tally changes compiled for a simulation: flat lists whose elements refer to each other by
/// their places. Times are counted in frames, so that periods of seconds never drift.
namespace pedflux::engine {

/// A place in one of the program's lists.
using TallyIndex = std::uint32_t;

/// The measures of walkable objects and volumes.
enum class PlaceMeasure {
#define TALLY(...)
#define TALLY_OF_PLACES(Class, type, ...) type,
#include "engine/behaviour/tallies/tally_table.def"
};
/// The measures of servers.
enum class ServerMeasure {
#define TALLY(...)
#define TALLY_OF_SERVERS(Class, type, ...) type,
#include "engine/behaviour/tallies/tally_table.def"
};
/// How often a transition is made, by its number in the symbol table.
struct TransitionMeasure {
    SymbolIndex transition;
};

/// What a simulation measures in every frame.
struct TallyMeasure {
    std::variant<PlaceMeasure, ServerMeasure, TransitionMeasure> kind;
    std::vector<SymbolIndex> objects;  ///< the areas, servers or walkable objects
};

/// One step of an expression in postfix order.
struct TallyOperation {
    enum class Step {
        MEASURE,  ///< pushes the value of a measure
        OBJECT,   ///< pushes the value of a tally object
        NUMBER,   ///< pushes `number`
        COMBINE,  ///< replaces the last operands by one value, from the last one to the first
    };
    /// @param parameter the operation's `number`
    using Combination = double (*)(double first, double second, double parameter);

    Step step;
    TallyIndex index = 0;  ///< of the measure or the tally object; for COMBINE the number of operands
    double number = 0;
    Combination combination = nullptr;
};

/// A part of the program's operations.
struct TallyExpression {
    TallyIndex first = 0;
    TallyIndex count = 0;
};

/// When a value is reset by itself.
struct TallyResetRule {
    enum class When { NEVER, EVERY_FRAME, EVERY_INTERVAL, GREATER_OR_EQUAL, LESS_OR_EQUAL };

    When when = When::NEVER;
    std::int64_t interval = 0;   ///< frames
    TallyExpression compared{};  ///< with the value
};

struct PlannedTally {
    GlobalId id;
    bool enabled = true;  ///< otherwise the value stays where it started
    TallyValueType type = TallyValueType::VARIABLE;
    TallyExpression expression{};
    bool counts_down = false;
    bool whole_window = false;
    std::int64_t window = 0;  ///< frames
    double min = std::numeric_limits<double>::lowest();
    double max = std::numeric_limits<double>::max();
    std::optional<double> start;
    std::shared_ptr<Distribution> default_value;
    TallyResetRule reset;
};

struct PlannedTallyChange {
    GlobalId id;
    std::shared_ptr<TriggerRange> range;
    std::vector<TallyIndex> tallies;
    bool resets = false;
    bool adds = false;
    std::int64_t period = 0;                     ///< frames between additions; 0: once
    std::int64_t cycle = 0;                      ///< frames; 0: no cycling
    std::shared_ptr<Distribution> distribution;  ///< of what is added; none: the expression's value
    TallyExpression expression{};
    bool integers = false;
    bool skip_first = false;
};

struct TallyProgram {
    int frame_rate = 1;  ///< frames per second
    std::vector<TallyMeasure> measures;
    std::vector<TallyOperation> operations;
    std::vector<PlannedTally> tallies;        ///< in the order of the project
    std::vector<TallyIndex> order;            ///< of evaluation: each after those that it is made of
    std::vector<PlannedTallyChange> changes;  ///< the enabled ones, in the order of the project
    std::vector<TallyExpression> compared;    ///< the tallies of the symbol table, by their numbers

    /// The place of a tally object; none if the project had no such object.
    std::optional<TallyIndex> find(GlobalId const& id) const;
};

/// Values that grow beyond all numbers stay at the largest one.
double nearest_finite(double number);

/// Compiles the tally objects and tally changes of a project, and the tallies of the symbol table, to which areas,
/// servers and transitions are added in turn.
TallyProgram compile_tallies(Document const& project, SymbolTable& symbols);

}  // namespace pedflux::engine
