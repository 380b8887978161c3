#include "engine/behaviour/triggers/trigger_run.h"

#include "engine/behaviour/condition_names.h"

#include <algorithm>

namespace pedflux::engine {

namespace {

bool gate_is(moment::Gate const& rule, TriggerFacts const& facts) {
    auto const is = [&](GateStateDirection way) {
        return facts.is_gate_open(rule.gate, way) == (rule.access == AgentAccess::OPEN);
    };
    switch (rule.direction) {
        case GateStateDirection::BOTH_WAYS:
            return is(GateStateDirection::BALL_TO_BOX) && is(GateStateDirection::BOX_TO_BALL);
        case GateStateDirection::EITHER_WAY:
            return is(GateStateDirection::BALL_TO_BOX) || is(GateStateDirection::BOX_TO_BALL);
        case GateStateDirection::BALL_TO_BOX:
        case GateStateDirection::BOX_TO_BALL:
            break;
    }
    return is(rule.direction);
}

bool server_is(moment::Server const& rule, TriggerFacts const& facts) {
    auto const is = [&](ServerAccessPoint point) {
        return facts.is_server_open(rule.server, point) == (rule.access == AgentAccess::OPEN);
    };
    if (rule.point != ServerAccessPoint::ENTRANCE_AND_EXIT) return is(rule.point);
    return is(ServerAccessPoint::ENTRANCE) && is(ServerAccessPoint::EXIT);
}

}  // namespace

/// One moment in one frame: an overload for each rule tells whether it holds and, of instants, whether it fires.
struct TriggerRun::Evaluation {
    TriggerRun const& run;
    TriggerFacts const& facts;
    MomentIndex index;
    Running& own;

    std::int64_t frame() const { return run.frame_; }
    std::int64_t clock() const { return run.plan_.start_time + frame() / run.plan_.frame_rate; }
    Moment child(MomentIndex child) const { return run[child]; }
    bool is_instant(MomentIndex child) const { return run.plan_.moments[child].instant; }
    /// Whether an interval among the children has ended, after which nothing is repeated or counted.
    bool has_ended(MomentIndex moment) const { return !is_instant(moment) && !child(moment).holds; }

    static Moment at(bool fires) { return {fires, fires}; }
    Moment during(bool holds) const { return {holds && !own.now.holds, holds}; }

    Moment operator()(moment::Never) const { return {}; }
    Moment operator()(moment::Always) const { return during(true); }
    Moment operator()(moment::AtFrame const& rule) const { return at(frame() == rule.frame); }
    Moment operator()(moment::Clock const& rule) const {
        auto time = rule.seconds;
        if (rule.event != NO_EVENT) {
            if (run.starts(rule.event).empty()) return {};
            time += run.plan_.start_time + run.starts(rule.event).back() / run.plan_.frame_rate;
        }
        return during(compares(clock(), rule.comparison, time));
    }
    Moment operator()(moment::EventActive const& rule) const {
        return during(run.is_active(rule.event, facts) == (rule.activity == EventStateActivity::ACTIVE));
    }
    Moment operator()(moment::AfterEventStart const& rule) const {
        return at(std::ranges::binary_search(run.starts(rule.event), frame() - rule.delay));
    }
    Moment operator()(moment::Gate const& rule) const { return during(gate_is(rule, facts)); }
    Moment operator()(moment::Server const& rule) const { return during(server_is(rule, facts)); }
    Moment operator()(moment::Tallies const& rule) const {
        return during(compares(facts.tally(rule.first), rule.comparison, facts.tally(rule.second)));
    }

    /// What an instant or an interval says of the children that it is made of.
    Moment made_of(bool yes) const { return run.plan_.moments[index].instant ? at(yes) : during(yes); }
    Moment operator()(moment::AllOf const& rule) const {
        return made_of(std::ranges::all_of(rule.children, [&](auto each) { return child(each).holds; }));
    }
    Moment operator()(moment::AnyOf const& rule) const {
        bool const is_moment = run.plan_.moments[index].instant;
        return made_of(std::ranges::any_of(
            rule.children, [&](auto each) { return is_moment ? child(each).fires : child(each).holds; }));
    }
    Moment operator()(moment::NoneOf const& rule) const {
        return during(std::ranges::none_of(rule.children, [&](auto each) { return child(each).holds; }));
    }

    Moment operator()(moment::BeginningOf const& rule) const { return at(child(rule.child).fires); }
    Moment operator()(moment::EndOf const& rule) const {
        bool const held = std::exchange(own.held, child(rule.child).holds);
        return at(held && !own.held);
    }
    Moment operator()(moment::Whenever const& rule) const { return at(child(rule.child).holds); }

    Moment operator()(moment::Delayed const& rule) const {
        bool const holds = child(rule.child).holds;
        if (std::exchange(own.held, holds) != holds) own.history.emplace_back(frame(), holds);
        bool then = own.count != 0;
        while (!own.history.empty() && own.history.front().first <= frame() - rule.delay) {
            then = own.history.front().second;
            own.history.pop_front();
        }
        own.count = then ? 1 : 0;
        return made_of(then);
    }
    Moment operator()(moment::Blocking const& rule) const {
        if (!child(rule.child).fires || (own.mark >= 0 && frame() - own.mark < rule.interval)) return {};
        own.mark = frame();
        return at(true);
    }
    Moment operator()(moment::Periodic const& rule) const {
        if (child(rule.child).fires) {
            own.mark = frame();
            own.count = 1;
            return at(true);
        }
        if (has_ended(rule.child)) own.mark = -1;
        if (own.mark < 0 || (frame() - own.mark) % rule.period != 0) return {};
        if (rule.count > 0 && own.count == rule.count) return {};
        ++own.count;
        return at(true);
    }
    Moment operator()(moment::TransitionCount const& rule) const {
        bool reached = false;
        if (own.mark >= 0) {
            own.count += facts.transitions(rule.transition);
            reached = own.count >= rule.target;
            own.count %= rule.target;
        }
        if ((reached && !rule.loop) || has_ended(rule.child)) own.mark = -1;
        if (child(rule.child).fires) {
            own.mark = frame();
            own.count = 0;
        }
        return at(reached);
    }

    Moment operator()(moment::Spans const& rule) const {
        if (child(rule.child).fires) own.mark = frame();
        if (own.mark < 0) return {};
        auto const since = frame() - own.mark;
        bool const holds =
            std::ranges::any_of(rule.spans, [&](auto const& span) { return span.from <= since && since < span.until; });
        if (rule.prolongs) return during(holds);
        bool const begins =
            std::ranges::any_of(rule.spans, [&](auto const& span) { return span.from == since && since < span.until; });
        return {begins, holds};
    }
    Moment operator()(moment::Bounded const& rule) const {
        bool const goes_on = own.now.holds && !child(rule.end).fires;
        bool const begins = !goes_on && child(rule.start).fires;
        return {begins, goes_on || begins};
    }
};

TriggerRun::TriggerRun(TriggerProgram const& plan)
    : plan_(plan), running_(plan.moments.size()), starts_(plan.events.size()) {}

void TriggerRun::step(TriggerFacts const& facts) {
    ++frame_;
    for (MomentIndex i = 0; i < running_.size(); ++i) {
        auto& own = running_[i];
        own.now = std::visit(Evaluation{*this, facts, i, own}, plan_.moments[i].rule);
        auto const event = plan_.moments[i].starts;
        if (event != NO_EVENT && own.now.fires) starts_[event].push_back(frame_);
    }
}

bool TriggerRun::is_active(EventIndex event, TriggerFacts const& facts) const {
    if (plan_.events[event].lasts) return running_[plan_.events[event].start].now.holds;
    return !starts_[event].empty() && facts.has_people(event);
}

bool TriggerRun::may_fire_again(MomentIndex index) const {
    auto const& own = running_[index];
    auto const may = [this](MomentIndex child) { return may_fire_again(child); };
    auto const& rule = plan_.moments[index].rule;
    if (std::holds_alternative<moment::Never>(rule)) return false;
    if (std::holds_alternative<moment::Always>(rule)) return frame_ < 0;
    if (auto const* const at = std::get_if<moment::AtFrame>(&rule)) return frame_ < at->frame;
    if (auto const* const clock = std::get_if<moment::Clock>(&rule); clock && clock->event == NO_EVENT) {
        auto const now = plan_.start_time + frame_ / plan_.frame_rate;
        // Once the time has passed, nothing changes any more.
        return frame_ < 0 || now <= clock->seconds;
    }
    if (auto const* const all = std::get_if<moment::AllOf>(&rule)) {
        return !plan_.moments[index].instant || std::ranges::all_of(all->children, [&](MomentIndex child) {
            return !plan_.moments[child].instant || may(child);
        });
    }
    if (auto const* const any = std::get_if<moment::AnyOf>(&rule)) return std::ranges::any_of(any->children, may);
    if (auto const* const blocking = std::get_if<moment::Blocking>(&rule)) return may(blocking->child);
    if (auto const* const beginning = std::get_if<moment::BeginningOf>(&rule)) return may(beginning->child);
    if (auto const* const delayed = std::get_if<moment::Delayed>(&rule)) {
        return !own.history.empty() || may(delayed->child);
    }
    if (auto const* const periodic = std::get_if<moment::Periodic>(&rule)) {
        return may(periodic->child) || (own.mark >= 0 && (periodic->count == 0 || own.count < periodic->count));
    }
    if (auto const* const after = std::get_if<moment::AfterEventStart>(&rule)) {
        auto const& event = plan_.events[after->event];
        bool const is_coming = !starts_[after->event].empty() && starts_[after->event].back() + after->delay > frame_;
        // Events that wait for each other may start for ever.
        return is_coming || event.start > index || may(event.start);
    }
    return true;
}

}  // namespace pedflux::engine
