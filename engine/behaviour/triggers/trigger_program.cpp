#include "engine/behaviour/triggers/trigger_program.h"

#include "engine/behaviour/compiled/named_rules.h"
#include "engine/behaviour/condition_names.h"
#include "engine/behaviour/events/event_states.h"
#include "engine/behaviour/triggers/trigger_range_states.h"
#include "engine/behaviour/triggers/trigger_run.h"
#include "engine/behaviour/triggers/trigger_states.h"
#include "engine/model/node.h"

#include <pedflux/exception.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>

#include <fmt/format.h>

namespace pedflux::engine {

namespace {

using Children = std::vector<MomentIndex>;

/// Frames after each firing of a start during which a range holds.
struct Span {
    std::int64_t from;
    std::int64_t until;
};

/// Seconds after midnight of a frame.
struct Clock {
    std::int64_t start_time;
    std::int64_t frame_rate;
    std::int64_t at(std::int64_t frame) const { return start_time + frame / frame_rate; }
};

bool is_gate(GateStateTriggerState const& state, SymbolIndex gate, TriggerFacts const& facts) {
    auto const is = [&](GateStateDirection way) {
        return facts.is_gate_open(gate, way) == (state.access == AgentAccess::OPEN);
    };
    switch (state.direction) {
        case GateStateDirection::BOTH_WAYS:
            return is(GateStateDirection::BALL_TO_BOX) && is(GateStateDirection::BOX_TO_BALL);
        case GateStateDirection::EITHER_WAY:
            return is(GateStateDirection::BALL_TO_BOX) || is(GateStateDirection::BOX_TO_BALL);
        case GateStateDirection::BALL_TO_BOX:
        case GateStateDirection::BOX_TO_BALL:
            break;
    }
    return is(state.direction);
}

bool is_server(ServerStateTriggerState const& state, SymbolIndex server, TriggerFacts const& facts) {
    auto const is = [&](ServerAccessPoint point) {
        return facts.is_server_open(server, point) == (state.access == AgentAccess::OPEN);
    };
    if (state.point != ServerAccessPoint::ENTRANCE_AND_EXIT) return is(state.point);
    return is(ServerAccessPoint::ENTRANCE) && is(ServerAccessPoint::EXIT);
}

Moment evaluate_never(MomentStep const& /*step*/) { return {}; }
bool fires_no_more(TriggerRun const& /*run*/, MomentMemory const& /*own*/) { return false; }

}  // namespace

/// The compilation of one trigger or range with all that it is made of.
struct TriggerCompiler::Compilation {
    TriggerCompiler& compiler;
    NamedRules<TriggerObjectState> named{compiler.project_};
    RuleExtent extent{};

    TriggerProgram& program() { return compiler.program_; }
    std::int64_t frames(int seconds) { return std::int64_t{seconds} * program().frame_rate; }
    Clock clock() { return {program().start_time, program().frame_rate}; }
    bool is_instant(MomentIndex moment) { return program().moments[moment].instant; }
    /// The place that the next moment gets.
    MomentIndex next() { return static_cast<MomentIndex>(program().moments.size()); }

    MomentIndex append(MomentRule rule, bool instant) {
        auto const index = next();
        program().moments.push_back({std::move(rule), instant});
        return index;
    }
    MomentIndex instant(MomentRule rule) { return append(std::move(rule), true); }
    MomentIndex interval(MomentRule rule) { return append(std::move(rule), false); }
    /// An interval for which nothing has to be remembered.
    template <class Holds>
    MomentIndex interval_while(Holds const& holds) {
        return interval({[holds](MomentStep const& step) { return step.during(holds(step)); }, {}});
    }

    MomentIndex trigger(Trigger const& trigger) {
        CountedRule const counted(extent, "Trigger");
        require_shallow(node_of(trigger));
        return trigger_kind(trigger);
    }
    MomentIndex only_child(Trigger const& trigger) { return this->trigger(*children_of(trigger).front()); }
    Children children(Trigger const& trigger) {
        Children moments;
        for (auto const& child : children_of(trigger)) moments.push_back(this->trigger(*child));
        return moments;
    }

    MomentIndex at_second(std::int64_t seconds) {
        if (seconds < 0) return instant({evaluate_never, fires_no_more});
        auto const frame = seconds * program().frame_rate;
        return instant({[frame](MomentStep const& step) { return step.at(step.frame() == frame); },
                        [frame](TriggerRun const& run, MomentMemory const&) { return run.frame() < frame; }});
    }

    MomentIndex clock_compares(ComparisonType comparison, std::int64_t seconds) {
        return interval({[=, clock = clock()](MomentStep const& step) {
                             return step.during(compares(clock.at(step.frame()), comparison, seconds));
                         },
                         // Once the time has passed, nothing changes any more.
                         [=, clock = clock()](TriggerRun const& run, MomentMemory const&) {
                             return run.frame() < 0 || clock.at(run.frame()) <= seconds;
                         }});
    }

    MomentIndex clock_in_range(ClockInRangeTriggerState const& state) {
        auto const& settings = compiler.project_.settings;
        auto const comparison = state.comparison;
        auto const time = TimeReferenceAccess::time(*state.time);
        switch (time.frame) {
            case TimeReferenceFrame::ABSOLUTE:
                return clock_compares(comparison, time.seconds);
            case TimeReferenceFrame::AFTER_SIMULATION_START:
                return clock_compares(comparison, std::int64_t{settings.start_time} + time.seconds);
            case TimeReferenceFrame::BEFORE_SIMULATION_END:
                return clock_compares(comparison, std::int64_t{settings.start_time} + settings.duration - time.seconds);
            case TimeReferenceFrame::AFTER_EVENT_START:
                break;
        }
        auto const event = compiler.add_event(time.event.value_or(GlobalId()));
        std::int64_t const seconds = time.seconds;
        return interval({[=, clock = clock()](MomentStep const& step) {
                             auto const& starts = step.run.starts(event);
                             if (starts.empty()) return Moment{};
                             auto const start = clock.at(starts.back());
                             return step.during(compares(clock.at(step.frame()), comparison, start + seconds));
                         },
                         {}});
    }

    MomentIndex event_start(EventStartTimeTriggerState const& state) {
        auto const event = compiler.add_event(state.event);
        return instant(
            {[event, delay = frames(state.offset)](MomentStep const& step) {
                 return step.at(std::ranges::binary_search(step.run.starts(event), step.frame() - delay));
             },
             [event, delay = frames(state.offset), index = next()](TriggerRun const& run, MomentMemory const&) {
                 auto const& starts = run.starts(event);
                 bool const is_coming = !starts.empty() && starts.back() + delay > run.frame();
                 // Events that wait for each other may start for ever.
                 auto const start = run.start_of(event);
                 return is_coming || start > index || run.may_fire_again(start);
             }});
    }

    /// An instant as soon as one of its children is.
    MomentIndex all_of(Children const& children) {
        Children instants;
        std::ranges::copy_if(children, std::back_inserter(instants), [&](auto child) { return is_instant(child); });
        auto const all_hold = [children](MomentStep const& step) {
            return std::ranges::all_of(children, [&](auto child) { return step.run[child].holds; });
        };
        if (instants.empty()) return interval_while(all_hold);
        return instant({[all_hold](MomentStep const& step) { return step.at(all_hold(step)); },
                        [instants](TriggerRun const& run, MomentMemory const&) {
                            return std::ranges::all_of(instants, [&](auto child) { return run.may_fire_again(child); });
                        }});
    }
    MomentIndex any_of(Children const& children) {
        auto const may_fire_again = [children](TriggerRun const& run, MomentMemory const&) {
            return std::ranges::any_of(children, [&](auto child) { return run.may_fire_again(child); });
        };
        if (std::ranges::any_of(children, [&](auto child) { return is_instant(child); })) {
            return instant({[children](MomentStep const& step) {
                                return step.at(
                                    std::ranges::any_of(children, [&](auto child) { return step.run[child].fires; }));
                            },
                            may_fire_again});
        }
        return interval({[children](MomentStep const& step) {
                             return step.during(
                                 std::ranges::any_of(children, [&](auto child) { return step.run[child].holds; }));
                         },
                         may_fire_again});
    }
    MomentIndex none_of(Children const& children) {
        return interval_while([children](MomentStep const& step) {
            return std::ranges::none_of(children, [&](auto child) { return step.run[child].holds; });
        });
    }

    MomentIndex beginning_of(MomentIndex child) {
        return instant({[child](MomentStep const& step) { return step.at(step.run[child].fires); },
                        [child](TriggerRun const& run, MomentMemory const&) { return run.may_fire_again(child); }});
    }
    MomentIndex end_of(MomentIndex child) {
        return instant({[child](MomentStep const& step) {
                            bool const held = std::exchange(step.own.held, step.run[child].holds);
                            return step.at(held && !step.own.held);
                        },
                        {}});
    }

    MomentIndex delayed(MomentIndex child, std::int64_t delay) {
        bool const instant = is_instant(child);
        return append({[=](MomentStep const& step) {
                           auto& own = step.own;
                           bool const holds = step.run[child].holds;
                           if (std::exchange(own.held, holds) != holds) own.history.emplace_back(step.frame(), holds);
                           bool then = own.count != 0;
                           while (!own.history.empty() && own.history.front().first <= step.frame() - delay) {
                               then = own.history.front().second;
                               own.history.pop_front();
                           }
                           own.count = then ? 1 : 0;
                           return instant ? step.at(then) : step.during(then);
                       },
                       [child](TriggerRun const& run, MomentMemory const& own) {
                           return !own.history.empty() || run.may_fire_again(child);
                       }},
                      instant);
    }

    MomentIndex blocking(MomentIndex child, std::int64_t interval) {
        return instant({[=](MomentStep const& step) {
                            auto& own = step.own;
                            if (!step.run[child].fires || (own.mark >= 0 && step.frame() - own.mark < interval))
                                return Moment{};
                            own.mark = step.frame();
                            return step.at(true);
                        },
                        [child](TriggerRun const& run, MomentMemory const&) { return run.may_fire_again(child); }});
    }

    /// @param count how often it fires for each firing of the child; 0: until the child ends
    MomentIndex periodic(MomentIndex child, std::int64_t period, std::int64_t count) {
        bool const child_ends = !is_instant(child);
        return instant({[=](MomentStep const& step) {
                            auto& own = step.own;
                            if (step.run[child].fires) {
                                own.mark = step.frame();
                                own.count = 1;
                                return step.at(true);
                            }
                            if (child_ends && !step.run[child].holds) own.mark = -1;
                            if (own.mark < 0 || (step.frame() - own.mark) % period != 0) return Moment{};
                            if (count > 0 && own.count == count) return Moment{};
                            ++own.count;
                            return step.at(true);
                        },
                        [=](TriggerRun const& run, MomentMemory const& own) {
                            return run.may_fire_again(child) || (own.mark >= 0 && (count == 0 || own.count < count));
                        }});
    }

    MomentIndex transition_count(TransitionCountTriggerState const& state) {
        auto const child = trigger(*state.child);
        auto const transition = SymbolTable::add(compiler.symbols_.transitions, state.transition);
        bool const child_ends = !is_instant(child);
        return instant({[=, target = state.target, loop = state.loop](MomentStep const& step) {
                            auto& own = step.own;
                            bool reached = false;
                            if (own.mark >= 0) {
                                own.count += step.facts.transitions(transition);
                                reached = own.count >= target;
                                own.count %= target;
                            }
                            bool const has_ended = child_ends && !step.run[child].holds;
                            if ((reached && !loop) || has_ended) own.mark = -1;
                            if (step.run[child].fires) {
                                own.mark = step.frame();
                                own.count = 0;
                            }
                            return step.at(reached);
                        },
                        {}});
    }

    /// Holds for some frames after each firing of the start; a firing meanwhile prolongs it.
    MomentIndex duration(MomentIndex start, std::int64_t duration) {
        return interval_while([=](MomentStep const& step) {
            if (step.run[start].fires) step.own.mark = step.frame();
            return step.own.mark >= 0 && step.frame() - step.own.mark < duration;
        });
    }
    /// Holds during each of the spans after a firing of the start; a firing meanwhile begins them anew.
    MomentIndex scheduled(MomentIndex start, std::vector<Span> const& spans) {
        return interval({[=](MomentStep const& step) {
                             auto& own = step.own;
                             if (step.run[start].fires) own.mark = step.frame();
                             if (own.mark < 0) return Moment{};
                             auto const since = step.frame() - own.mark;
                             return Moment{
                                 .fires = std::ranges::any_of(
                                     spans, [&](Span span) { return span.from == since && since < span.until; }),
                                 .holds = std::ranges::any_of(
                                     spans, [&](Span span) { return span.from <= since && since < span.until; })};
                         },
                         {}});
    }
    MomentIndex bounded(MomentIndex start, MomentIndex end) {
        return interval({[=](MomentStep const& step) {
                             bool const goes_on = step.own.now.holds && !step.run[end].fires;
                             bool const begins = !goes_on && step.run[start].fires;
                             return Moment{begins, goes_on || begins};
                         },
                         {}});
    }

    MomentIndex trigger_kind(Trigger const& node) {
        auto const& settings = compiler.project_.settings;
        auto& symbols = compiler.symbols_;
        switch (static_cast<TriggerType>(type_of(node))) {
            case TriggerType::ABSOLUTE_TIME:
                return at_second(std::int64_t{state_of<AbsoluteTimeTriggerState>(node).seconds} - settings.start_time);
            case TriggerType::SIMULATION_START:
                return at_second(state_of<SimulationStartTriggerState>(node).offset);
            case TriggerType::SIMULATION_END:
                return at_second(std::int64_t{settings.duration} - state_of<SimulationEndTriggerState>(node).offset);
            case TriggerType::CLOCK_IN_RANGE:
                return clock_in_range(state_of<ClockInRangeTriggerState>(node));
            case TriggerType::EVENT_ACTIVE: {
                auto const& state = state_of<EventActiveTriggerState>(node);
                return interval_while([event = compiler.add_event(state.event),
                                       active = state.activity == EventStateActivity::ACTIVE](MomentStep const& step) {
                    return step.run.is_active(event, step.facts) == active;
                });
            }
            case TriggerType::EVENT_START_TIME:
                return event_start(state_of<EventStartTimeTriggerState>(node));
            case TriggerType::GATE_STATE: {
                auto const& state = state_of<GateStateTriggerState>(node);
                return interval_while([state, gate = symbols.object(state.gate)](MomentStep const& step) {
                    return is_gate(state, gate, step.facts);
                });
            }
            case TriggerType::SERVER_STATE: {
                auto const& state = state_of<ServerStateTriggerState>(node);
                return interval_while([state, server = symbols.object(state.server)](MomentStep const& step) {
                    return is_server(state, server, step.facts);
                });
            }
            case TriggerType::TALLY: {
                auto const& state = state_of<TallyTriggerState>(node);
                auto const first = SymbolTable::add(symbols.tallies, state.first);
                auto const second = SymbolTable::add(symbols.tallies, state.second);
                return interval_while([first, second, comparison = state.comparison](MomentStep const& step) {
                    return compares(step.facts.tally(first), comparison, step.facts.tally(second));
                });
            }
            case TriggerType::NAMED:
                return named.follow(state_of<NamedTriggerState>(node).trigger_object,
                                    [&](TriggerObjectState const& object) { return trigger(*object.trigger); });
            case TriggerType::NEVER:
                return interval({evaluate_never, fires_no_more});
            case TriggerType::BEGINNING_OF:
                return beginning_of(only_child(node));
            case TriggerType::END_OF:
                return end_of(only_child(node));
            case TriggerType::WHENEVER:
                return instant(
                    {[child = only_child(node)](MomentStep const& step) { return step.at(step.run[child].holds); },
                     {}});
            case TriggerType::NOT:
                return none_of({only_child(node)});
            case TriggerType::NONE_OF:
                return none_of(children(node));
            case TriggerType::ALL_OF:
                return all_of(children(node));
            case TriggerType::ANY_OF:
                return any_of(children(node));
            case TriggerType::DURATION:
                return duration(only_child(node), frames(state_of<DurationTriggerState>(node).duration));
            case TriggerType::DELAYED:
                return delayed(only_child(node), frames(state_of<DelayedTriggerState>(node).delay));
            case TriggerType::BLOCKING:
                return blocking(only_child(node), frames(state_of<BlockingTriggerState>(node).interval));
            case TriggerType::PERIODIC: {
                auto const& state = state_of<PeriodicTriggerState>(node);
                return periodic(only_child(node), frames(state.period), state.count.value_or(0));
            }
            case TriggerType::TRANSITION_COUNT:
                return transition_count(state_of<TransitionCountTriggerState>(node));
        }
        throw Exception(fmt::format("Trigger: there is no kind {}", type_of(node)));
    }

    MomentIndex range(TriggerRange const& range) {
        switch (static_cast<TriggerRangeType>(type_of(range))) {
            case TriggerRangeType::ALL_SIMULATION:
                return interval({[](MomentStep const& step) { return step.during(true); },
                                 [](TriggerRun const& run, MomentMemory const&) { return run.frame() < 0; }});
            case TriggerRangeType::BOUNDED: {
                auto const& state = state_of<BoundedTriggerRangeState>(range);
                auto const start = trigger(*state.start);
                return bounded(start, trigger(*state.end));
            }
            case TriggerRangeType::OVER_DURATION: {
                auto const& state = state_of<OverDurationTriggerRangeState>(range);
                return duration(trigger(*state.start), frames(state.duration));
            }
            case TriggerRangeType::SCHEDULED: {
                auto const& state = state_of<ScheduledTriggerRangeState>(range);
                std::vector<Span> spans;
                for (auto const& [offset, length] : state.intervals) {
                    spans.push_back({frames(offset), frames(offset) + frames(length)});
                }
                return scheduled(trigger(*state.start), spans);
            }
            case TriggerRangeType::WHENEVER:
                return trigger(*state_of<WheneverTriggerRangeState>(range).start);
        }
        throw Exception(fmt::format("TriggerRange: there is no kind {}", type_of(range)));
    }
};

TriggerCompiler::TriggerCompiler(Document const& project, SymbolTable& symbols) : project_(project), symbols_(symbols) {
    program_.frame_rate = project.settings.frame_rate;
    program_.start_time = project.settings.start_time;
}

MomentIndex TriggerCompiler::add(Trigger const& trigger) { return Compilation{*this}.trigger(trigger); }
MomentIndex TriggerCompiler::add(TriggerRange const& range) { return Compilation{*this}.range(range); }

EventIndex TriggerCompiler::add_event(GlobalId const& id) {
    for (EventIndex i = 0; i < program_.events.size(); ++i) {
        if (program_.events[i].id.InternalEquals(id)) return i;
    }
    auto const* const object = project_.find(id);
    if (object == nullptr)
        throw Exception(fmt::format("The project has no event with the identifier {}", GlobalId(id).GetString()));
    // An event can wait for others that wait for it, so it is there before its own start is compiled.
    auto const event = static_cast<EventIndex>(program_.events.size());
    program_.events.push_back({id, 0});
    auto const* const with_people = dynamic_cast<EventState const*>(object);
    auto const* const broadcast = dynamic_cast<BroadcastState const*>(object);
    if (!with_people && !broadcast) {
        throw Exception(
            fmt::format("{} has no start that other rules of a simulation could follow", title_of(*object)));
    }
    MomentIndex start = 0;
    if (!object->enabled) {
        start = Compilation{*this}.instant({evaluate_never, fires_no_more});
    } else {
        start = broadcast ? add(*broadcast->trigger_range) : add(*with_people->start_trigger);
    }
    program_.moments[start].starts = event;
    program_.events[event].start = start;
    program_.events[event].lasts = broadcast != nullptr;
    return event;
}

}  // namespace pedflux::engine
