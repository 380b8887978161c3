#pragma once

#include "engine/behaviour/symbol_table.h"
#include "engine/model/document.h"

#include <pedflux/conditions.h>
#include <pedflux/identifiers.h>
#include <pedflux/triggers.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <unordered_map>
#include <variant>
#include <vector>

/// Triggers and ranges compiled for a simulation: one flat list in which each stands after those that it is made of.
/// Times are counted in frames since the start, so that seconds never drift.
namespace pedflux::engine {

/// A place in the list of moments.
using MomentIndex = std::uint32_t;
/// A place in the list of events.
using EventIndex = std::uint32_t;
inline constexpr EventIndex NO_EVENT = std::numeric_limits<EventIndex>::max();

/// What a trigger or range comes down to.
namespace moment {

struct Never {};
struct Always {};
struct AtFrame {
    std::int64_t frame;
};
/// Compares the clock with a time; with one after an event's start if there is an event.
struct Clock {
    ComparisonType comparison;
    std::int64_t seconds;  ///< after midnight, or after the event's start
    EventIndex event;
};
struct EventActive {
    EventIndex event;
    EventStateActivity activity;
};
struct AfterEventStart {
    EventIndex event;
    std::int64_t delay;
};
struct Gate {
    SymbolIndex gate;
    GateStateDirection direction;
    AgentAccess access;
};
struct Server {
    SymbolIndex server;
    ServerAccessPoint point;
    AgentAccess access;
};
struct Tallies {
    SymbolIndex first;
    ComparisonType comparison;
    SymbolIndex second;
};
struct AllOf {
    std::vector<MomentIndex> children;
};
struct AnyOf {
    std::vector<MomentIndex> children;
};
struct NoneOf {
    std::vector<MomentIndex> children;
};
struct BeginningOf {
    MomentIndex child;
};
struct EndOf {
    MomentIndex child;
};
struct Whenever {
    MomentIndex child;
};
struct Delayed {
    MomentIndex child;
    std::int64_t delay;
};
struct Blocking {
    MomentIndex child;
    std::int64_t interval;
};
struct Periodic {
    MomentIndex child;
    std::int64_t period;
    std::int64_t count;  ///< 0: endless
};
struct TransitionCount {
    MomentIndex child;
    SymbolIndex transition;
    std::int64_t target;
    bool loop;
};
/// Spans after each firing of the child; a firing meanwhile begins them anew.
struct Spans {
    struct Span {
        std::int64_t from;
        std::int64_t until;
    };
    MomentIndex child;
    std::vector<Span> spans;
    bool prolongs;  ///< what a firing begins anew goes on, rather than being another span
};
struct Bounded {
    MomentIndex start;
    MomentIndex end;
};

}  // namespace moment

using MomentRule =
    std::variant<moment::Never, moment::Always, moment::AtFrame, moment::Clock, moment::EventActive,
                 moment::AfterEventStart, moment::Gate, moment::Server, moment::Tallies, moment::AllOf, moment::AnyOf,
                 moment::NoneOf, moment::BeginningOf, moment::EndOf, moment::Whenever, moment::Delayed,
                 moment::Blocking, moment::Periodic, moment::TransitionCount, moment::Spans, moment::Bounded>;

struct PlannedMoment {
    MomentRule rule;
    bool instant = false;          ///< it fires at moments, rather than holding for spans of time
    EventIndex starts = NO_EVENT;  ///< the event that it starts
};

/// An event as others ask about it. It starts when its moment fires.
struct PlannedEvent {
    GlobalId id;
    MomentIndex start;
    bool lasts = false;  ///< it is active while its moment holds; otherwise those who run the simulation know
};

struct TriggerProgram {
    int frame_rate = 1;
    int start_time = 0;  ///< seconds after midnight
    std::vector<PlannedMoment> moments;
    std::vector<PlannedEvent> events;  ///< the enabled ones that were asked for
};

/// Compiles triggers, ranges and the starts of events. What they compare and count is mentioned. Named triggers are
/// those of the project at this moment.
class TriggerCompiler {
  public:
    TriggerCompiler(Document const& project, SymbolTable& symbols);

    /// @throws Exception when it depends on something that simulations do not have: the start of a dispatch
    MomentIndex add(Trigger const& trigger);
    MomentIndex add(TriggerRange const& range);
    /// An event with people or a broadcast. One that is disabled never starts.
    EventIndex add_event(GlobalId const& event);

    TriggerProgram take() { return std::move(plan_); }

  private:
    struct Compilation;

    Document const& project_;
    SymbolTable& mentions_;
    TriggerProgram plan_;
};

}  // namespace pedflux::engine
