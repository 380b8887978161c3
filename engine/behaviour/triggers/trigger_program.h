#pragma once

#include "engine/behaviour/compiled/symbol_table.h"
#include "engine/model/document.h"

#include <pedflux/identifiers.h>
#include <pedflux/triggers.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

/// Triggers and ranges compiled for a simulation: one flat list in which each stands after those that it is made of.
/// Times are counted in frames since the start, so that seconds never drift.
namespace pedflux::engine {

/// A place in the list of moments.
using MomentIndex = std::uint32_t;
/// A place in the list of events.
using EventIndex = std::uint32_t;
inline constexpr EventIndex NO_EVENT = std::numeric_limits<EventIndex>::max();

/// A trigger or range in one frame. An instant holds in the frame in which it fires; an interval fires in the frame in
/// which it begins to hold, a range in that in which a span begins.
struct Moment {
    bool fires = false;
    bool holds = false;
};

struct MomentMemory;
struct MomentStep;
class TriggerRun;

/// What a trigger or range comes down to. Each kind is compiled and evaluated in one place, in trigger_program.cpp.
struct MomentRule {
    /// What it is in a frame.
    std::function<Moment(MomentStep const& step)> evaluate;
    /// No when it is certain that it never fires again; always yes without.
    std::function<bool(TriggerRun const& run, MomentMemory const& own)> may_fire_again;
};

struct PlannedMoment {
    MomentRule rule;
    bool instant = false;          ///< it fires at moments, rather than holding for spans of time
    EventIndex starts = NO_EVENT;  ///< the event that it starts
};

/// An event as others ask about it. It starts when its moment fires.
struct PlannedEvent {
    GlobalId id;
    MomentIndex start;
    bool lasts = false;  ///< active while its moment holds; otherwise the simulation tells
};

struct TriggerProgram {
    int frame_rate = 1;
    int start_time = 0;  ///< seconds after midnight
    std::vector<PlannedMoment> moments;
    std::vector<PlannedEvent> events;  ///< the enabled ones that were asked for
};

/// Compiles triggers, ranges and the starts of events. What they compare and count is added to the
/// symbol table. Named triggers are those of the project at this moment.
class TriggerCompiler {
  public:
    TriggerCompiler(Document const& project, SymbolTable& symbols);

    /// @throws Exception when it depends on something that simulations do not have: the start of a dispatch
    MomentIndex add(Trigger const& trigger);
    MomentIndex add(TriggerRange const& range);
    /// An event with people or a broadcast. One that is disabled never starts.
    EventIndex add_event(GlobalId const& event);

    TriggerProgram take() { return std::move(program_); }

  private:
    struct Compilation;

    Document const& project_;
    SymbolTable& symbols_;
    TriggerProgram program_;
};

}  // namespace pedflux::engine
