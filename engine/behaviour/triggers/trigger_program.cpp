#include "engine/behaviour/triggers/trigger_program.h"

#include "engine/behaviour/events/event_states.h"
#include "engine/behaviour/named_rules.h"
#include "engine/behaviour/triggers/trigger_range_states.h"
#include "engine/behaviour/triggers/trigger_states.h"
#include "engine/model/node.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <utility>

namespace pedflux::engine {

/// The compilation of one trigger or range with all that it is made of.
struct TriggerCompiler::Compilation {
    TriggerCompiler& compiler;
    NamedRules<TriggerObjectState> named{compiler.project_};
    RuleExtent extent{};

    TriggerProgram& plan() { return compiler.plan_; }
    std::int64_t frames(int seconds) { return std::int64_t{seconds} * plan().frame_rate; }
    bool is_instant(MomentIndex moment) { return plan().moments[moment].instant; }

    MomentIndex append(MomentRule rule, bool instant) {
        plan().moments.push_back({std::move(rule), instant});
        return static_cast<MomentIndex>(plan().moments.size() - 1);
    }
    MomentIndex instant(MomentRule rule) { return append(std::move(rule), true); }
    MomentIndex interval(MomentRule rule) { return append(std::move(rule), false); }

    MomentIndex trigger(Trigger const& trigger) {
        CountedRule const counted(extent, "Trigger");
        require_shallow(node_of(trigger));
        return trigger_kind(trigger);
    }

    std::vector<MomentIndex> children(Trigger const& trigger) {
        std::vector<MomentIndex> moments;
        for (auto const& child : children_of(trigger)) moments.push_back(this->trigger(*child));
        return moments;
    }

    SymbolIndex tally(std::shared_ptr<Tally> const& tally) {
        return SymbolTable::add(compiler.mentions_.tallies, tally);
    }

    MomentIndex at_second(std::int64_t seconds) {
        if (seconds < 0) return instant(moment::Never{});
        return instant(moment::AtFrame{seconds * plan().frame_rate});
    }

    MomentIndex clock(ClockInRangeTriggerState const& state) {
        auto const& settings = compiler.project_.settings;
        auto const time = TimeReferenceAccess::time(*state.time);
        switch (time.frame) {
            case TimeReferenceFrame::ABSOLUTE:
                return interval(moment::Clock{state.comparison, time.seconds, NO_EVENT});
            case TimeReferenceFrame::AFTER_SIMULATION_START:
                return interval(
                    moment::Clock{state.comparison, std::int64_t{settings.start_time} + time.seconds, NO_EVENT});
            case TimeReferenceFrame::BEFORE_SIMULATION_END:
                return interval(moment::Clock{
                    state.comparison, std::int64_t{settings.start_time} + settings.duration - time.seconds, NO_EVENT});
            case TimeReferenceFrame::AFTER_EVENT_START:
                break;
        }
        auto const event = compiler.add_event(time.event.value_or(GlobalId()));
        return interval(moment::Clock{state.comparison, time.seconds, event});
    }

    MomentIndex transition_count(TransitionCountTriggerState const& state) {
        auto const child = trigger(*state.child);
        auto const transition = SymbolTable::add(compiler.mentions_.transitions, state.transition);
        return instant(moment::TransitionCount{child, transition, state.target, state.loop});
    }

    MomentIndex all_of(std::vector<MomentIndex> children) {
        bool const is_moment = std::ranges::any_of(children, [&](auto child) { return is_instant(child); });
        return append(moment::AllOf{std::move(children)}, is_moment);
    }
    MomentIndex any_of(std::vector<MomentIndex> children) {
        bool const is_moment = std::ranges::any_of(children, [&](auto child) { return is_instant(child); });
        return append(moment::AnyOf{std::move(children)}, is_moment);
    }

    MomentIndex trigger_kind(Trigger const& node) {
        auto const& settings = compiler.project_.settings;
        auto const only_child = [&] { return trigger(*children_of(node).front()); };
        switch (static_cast<TriggerType>(type_of(node))) {
            case TriggerType::ABSOLUTE_TIME:
                return at_second(std::int64_t{state_of<AbsoluteTimeTriggerState>(node).seconds} - settings.start_time);
            case TriggerType::SIMULATION_START:
                return at_second(state_of<SimulationStartTriggerState>(node).offset);
            case TriggerType::SIMULATION_END:
                return at_second(std::int64_t{settings.duration} - state_of<SimulationEndTriggerState>(node).offset);
            case TriggerType::CLOCK_IN_RANGE:
                return clock(state_of<ClockInRangeTriggerState>(node));
            case TriggerType::EVENT_ACTIVE: {
                auto const& state = state_of<EventActiveTriggerState>(node);
                return interval(moment::EventActive{compiler.add_event(state.event), state.activity});
            }
            case TriggerType::EVENT_START_TIME: {
                auto const& state = state_of<EventStartTimeTriggerState>(node);
                return instant(moment::AfterEventStart{compiler.add_event(state.event), frames(state.offset)});
            }
            case TriggerType::GATE_STATE: {
                auto const& state = state_of<GateStateTriggerState>(node);
                return interval(moment::Gate{compiler.mentions_.object(state.gate), state.direction, state.access});
            }
            case TriggerType::TALLY: {
                auto const& state = state_of<TallyTriggerState>(node);
                auto const first = tally(state.first);
                return interval(moment::Tallies{first, state.comparison, tally(state.second)});
            }
            case TriggerType::SERVER_STATE: {
                auto const& state = state_of<ServerStateTriggerState>(node);
                return interval(moment::Server{compiler.mentions_.object(state.server), state.point, state.access});
            }
            case TriggerType::NAMED:
                return named.follow(state_of<NamedTriggerState>(node).trigger_object,
                                    [&](TriggerObjectState const& object) { return trigger(*object.trigger); });
            case TriggerType::NEVER:
                return interval(moment::Never{});
            case TriggerType::BEGINNING_OF:
                return instant(moment::BeginningOf{only_child()});
            case TriggerType::END_OF:
                return instant(moment::EndOf{only_child()});
            case TriggerType::WHENEVER:
                return instant(moment::Whenever{only_child()});
            case TriggerType::NOT:
                return interval(moment::NoneOf{{only_child()}});
            case TriggerType::NONE_OF:
                return interval(moment::NoneOf{children(node)});
            case TriggerType::ALL_OF:
                return all_of(children(node));
            case TriggerType::ANY_OF:
                return any_of(children(node));
            case TriggerType::DURATION: {
                auto const duration = frames(state_of<DurationTriggerState>(node).duration);
                return interval(moment::Spans{only_child(), {{0, duration}}, true});
            }
            case TriggerType::DELAYED: {
                auto const child = only_child();
                return append(moment::Delayed{child, frames(state_of<DelayedTriggerState>(node).delay)},
                              is_instant(child));
            }
            case TriggerType::BLOCKING:
                return instant(moment::Blocking{only_child(), frames(state_of<BlockingTriggerState>(node).interval)});
            case TriggerType::PERIODIC: {
                auto const& state = state_of<PeriodicTriggerState>(node);
                return instant(moment::Periodic{only_child(), frames(state.period), state.count.value_or(0)});
            }
            case TriggerType::TRANSITION_COUNT:
                return transition_count(state_of<TransitionCountTriggerState>(node));
        }
        throw Exception("Trigger: there is no kind " + std::to_string(type_of(node)));
    }

    MomentIndex range(TriggerRange const& range) {
        switch (static_cast<TriggerRangeType>(type_of(range))) {
            case TriggerRangeType::ALL_SIMULATION:
                return interval(moment::Always{});
            case TriggerRangeType::BOUNDED: {
                auto const& state = state_of<BoundedTriggerRangeState>(range);
                auto const start = trigger(*state.start);
                return interval(moment::Bounded{start, trigger(*state.end)});
            }
            case TriggerRangeType::OVER_DURATION: {
                auto const& state = state_of<OverDurationTriggerRangeState>(range);
                return interval(moment::Spans{trigger(*state.start), {{0, frames(state.duration)}}, true});
            }
            case TriggerRangeType::SCHEDULED: {
                auto const& state = state_of<ScheduledTriggerRangeState>(range);
                moment::Spans spans{trigger(*state.start), {}, false};
                for (auto const& [offset, duration] : state.intervals) {
                    spans.spans.push_back({frames(offset), frames(offset) + frames(duration)});
                }
                return interval(std::move(spans));
            }
            case TriggerRangeType::WHENEVER:
                return trigger(*state_of<WheneverTriggerRangeState>(range).start);
        }
        throw Exception("TriggerRange: there is no kind " + std::to_string(type_of(range)));
    }
};

TriggerCompiler::TriggerCompiler(Document const& project, SymbolTable& symbols)
    : project_(project), mentions_(symbols) {
    plan_.frame_rate = project.settings.frame_rate;
    plan_.start_time = project.settings.start_time;
}

MomentIndex TriggerCompiler::add(Trigger const& trigger) { return Compilation{*this}.trigger(trigger); }
MomentIndex TriggerCompiler::add(TriggerRange const& range) { return Compilation{*this}.range(range); }

EventIndex TriggerCompiler::add_event(GlobalId const& id) {
    for (EventIndex i = 0; i < plan_.events.size(); ++i) {
        if (plan_.events[i].id.InternalEquals(id)) return i;
    }
    auto const* const object = project_.find(id);
    if (object == nullptr) throw Exception("The project has no event with the identifier " + GlobalId(id).GetString());
    // An event can wait for others that wait for it, so it is there before its own start is compiled.
    auto const event = static_cast<EventIndex>(plan_.events.size());
    plan_.events.push_back({id, 0});
    auto const* const with_people = dynamic_cast<EventState const*>(object);
    auto const* const broadcast = dynamic_cast<BroadcastState const*>(object);
    if (!with_people && !broadcast) {
        throw Exception(title_of(*object) + " has no start that other rules of a simulation could follow");
    }
    MomentIndex start = 0;
    if (!object->enabled) {
        start = Compilation{*this}.instant(moment::Never{});
    } else {
        start = broadcast ? add(*broadcast->trigger_range) : add(*with_people->start_trigger);
    }
    plan_.moments[start].starts = event;
    plan_.events[event].start = start;
    plan_.events[event].lasts = broadcast != nullptr;
    return event;
}

}  // namespace pedflux::engine
