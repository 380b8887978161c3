#pragma once

#include "engine/behaviour/triggers/trigger_program.h"

#include <cstdint>
#include <deque>
#include <vector>

/// Triggers and ranges while a simulation runs.
namespace pedflux::engine {

/// A trigger or range in one frame. An instant holds in the frame in which it fires; an interval fires in the frame in
/// which it begins to hold, a range in that in which a span begins.
struct Moment {
    bool fires = false;
    bool holds = false;
};

/// What triggers ask about a frame; who runs them answers.
struct TriggerFacts {
    TriggerFacts() = default;
    TriggerFacts(TriggerFacts const&) = delete;
    TriggerFacts& operator=(TriggerFacts const&) = delete;
    virtual ~TriggerFacts() = default;

    /// Whether somebody of an event is still to come or there. Asked about events that have started.
    virtual bool has_people(EventIndex event) const = 0;
    /// @param way BALL_TO_BOX or BOX_TO_BALL
    virtual bool is_gate_open(SymbolIndex gate, GateStateDirection way) const = 0;
    /// @param point ENTRANCE or EXIT
    virtual bool is_server_open(SymbolIndex server, ServerAccessPoint point) const = 0;
    virtual double tally(SymbolIndex tally) const = 0;
    /// How often a transition was made since the frame before.
    virtual std::int64_t transitions(SymbolIndex transition) const = 0;
};

class TriggerRun {
  public:
    /// The plan outlives the run.
    explicit TriggerRun(TriggerProgram const& plan);

    /// One frame; the first one is that of the start.
    void step(TriggerFacts const& facts);

    Moment operator[](MomentIndex moment) const { return running_[moment].now; }
    /// The frames at which an event has started so far.
    std::vector<std::int64_t> const& starts(EventIndex event) const { return starts_[event]; }
    /// Whether an event has started and not ended.
    bool is_active(EventIndex event, TriggerFacts const& facts) const;
    /// No when it is certain that a moment never fires again.
    bool may_fire_again(MomentIndex moment) const;

  private:
    struct Running {
        Moment now{};
        std::int64_t mark = -1;  ///< the frame of the firing that counts
        std::int64_t count = 0;
        bool held = false;                                    ///< of a child, in the frame before
        std::deque<std::pair<std::int64_t, bool>> history{};  ///< of a child: when it changed, and to what
    };
    struct Evaluation;

    TriggerProgram const& plan_;
    std::int64_t frame_ = -1;
    std::vector<Running> running_;
    std::vector<std::vector<std::int64_t>> starts_;  ///< of each event
};

}  // namespace pedflux::engine
