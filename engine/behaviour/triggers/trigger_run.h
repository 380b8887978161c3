#pragma once

#include "engine/behaviour/triggers/trigger_program.h"

#include <cstdint>
#include <deque>
#include <vector>

/// Triggers and ranges while a simulation runs.
namespace pedflux::engine {

/// The state of the simulation in a frame, as triggers see it.
struct TriggerFacts {
    TriggerFacts() = default;
    TriggerFacts(TriggerFacts const&) = delete;
    TriggerFacts& operator=(TriggerFacts const&) = delete;
    virtual ~TriggerFacts() = default;

    /// Whether an event still has agents in the simulation or to come. Asked for events that have started.
    virtual bool has_people(EventIndex event) const = 0;
    /// @param way BALL_TO_BOX or BOX_TO_BALL
    virtual bool is_gate_open(SymbolIndex gate, GateStateDirection way) const = 0;
    /// @param point ENTRANCE or EXIT
    virtual bool is_server_open(SymbolIndex server, ServerAccessPoint point) const = 0;
    virtual double tally(SymbolIndex tally) const = 0;
    /// How often a transition was made since the frame before.
    virtual std::int64_t transitions(SymbolIndex transition) const = 0;
};

/// What a moment remembers from frame to frame.
struct MomentMemory {
    Moment now{};
    std::int64_t mark = -1;  ///< the frame of the firing that counts
    std::int64_t count = 0;
    bool held = false;                                    ///< of a child, in the frame before
    std::deque<std::pair<std::int64_t, bool>> history{};  ///< of a child: when it changed, and to what
};

class TriggerRun {
  public:
    /// The program outlives the run.
    explicit TriggerRun(TriggerProgram const& program);

    /// One frame; the first one is that of the start.
    void step(TriggerFacts const& facts);

    Moment operator[](MomentIndex moment) const { return memories_[moment].now; }
    /// Frames since the start; -1 before the first one.
    std::int64_t frame() const { return frame_; }
    /// The frames at which an event has started so far.
    std::vector<std::int64_t> const& starts(EventIndex event) const { return starts_[event]; }
    /// The moment at which an event starts.
    MomentIndex start_of(EventIndex event) const { return program_.events[event].start; }
    /// Whether an event has started and not ended.
    bool is_active(EventIndex event, TriggerFacts const& facts) const;
    /// No when it is certain that a moment never fires again.
    bool may_fire_again(MomentIndex moment) const;

  private:
    TriggerProgram const& program_;
    std::int64_t frame_ = -1;
    std::vector<MomentMemory> memories_;
    std::vector<std::vector<std::int64_t>> starts_;  ///< of each event
};

/// One moment in the frame that is being stepped.
struct MomentStep {
    TriggerRun const& run;
    TriggerFacts const& facts;
    MomentMemory& own;

    std::int64_t frame() const { return run.frame(); }
    /// What an instant is that fires, or does not.
    static Moment at(bool fires) { return {fires, fires}; }
    /// What an interval is that holds, or does not.
    Moment during(bool holds) const { return {holds && !own.now.holds, holds}; }
};

}  // namespace pedflux::engine
