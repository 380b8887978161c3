#include "engine/base/list_checks.h"
#include "engine/behaviour/triggers/trigger_range_states.h"
#include "engine/model/node_handles.h"
#include "engine/model/properties.h"

#include <pedflux/triggers.h>

#include <utility>

namespace pedflux {

using engine::get;
using engine::make_node;
using engine::ScheduledTriggerRangeState;
using engine::set;
using engine::StartedRangeState;

namespace {

std::vector<engine::ScheduledInterval> intervals_of(std::vector<int> const& offsets,
                                                    std::vector<int> const& durations) {
    engine::require_equal_lengths("ScheduledTriggerRange: offsets", offsets.size(), "durations", durations.size());
    std::vector<engine::ScheduledInterval> intervals;
    for (std::size_t i = 0; i < offsets.size(); ++i) intervals.push_back({offsets[i], durations[i]});
    return intervals;
}

}  // namespace

TriggerRange::TriggerRange(engine::NodePointer node) : node_(std::move(node)) {}
TriggerRange::TriggerRange(TriggerRange const& other) : node_(engine::copy_of(engine::node_of(other))) {}
TriggerRange::~TriggerRange() = default;

int TriggerRange::GetTriggerRangeTypeId() { return engine::type_of(*this); }
std::shared_ptr<Trigger> TriggerRange::GetStartTrigger() {
    auto const* const started = dynamic_cast<StartedRangeState const*>(&engine::node_of(*this));
    return started == nullptr ? std::make_shared<SimulationStartTrigger>(0) : started->start;
}
std::shared_ptr<TriggerRange> TriggerRange::Clone() { return engine::clone_of(*this); }

#define TRIGGER_RANGE(Class, type, ...) PEDFLUX_CONSTRUCTOR(TriggerRange, Class, __VA_ARGS__)
#define STARTED_RANGE(Class, type, ...)                                                                   \
    PEDFLUX_CONSTRUCTOR(TriggerRange, Class,                                                              \
                        (VALUE, std::shared_ptr<Trigger>, StartTrigger, start)__VA_OPT__(, ) __VA_ARGS__) \
    STARTED_RANGE_WITH_CONSTRUCTORS(Class, type, __VA_ARGS__)
#define STARTED_RANGE_WITH_CONSTRUCTORS(Class, type, ...)                       \
    PEDFLUX_CONSTRUCTOR(TriggerRange, Class)                                    \
    PEDFLUX_ACCESS_SETTER(Class, std::shared_ptr<Trigger>, StartTrigger, start) \
    PEDFLUX_ACCESSORS(Class, __VA_ARGS__)
#include "engine/behaviour/triggers/trigger_range_table.def"

ScheduledTriggerRange::ScheduledTriggerRange(std::shared_ptr<Trigger> const& start, std::vector<int> const& offsets,
                                             std::vector<int> const& durations)
    : TriggerRange(make_node<TriggerRange, ScheduledTriggerRangeState>([&](auto& state) {
          state.start = start;
          state.intervals = intervals_of(offsets, durations);
      })) {}
void ScheduledTriggerRange::AddInterval(int offset, int duration) {
    auto intervals = get(*this, &ScheduledTriggerRangeState::intervals);
    intervals.push_back({offset, duration});
    set(*this, &ScheduledTriggerRangeState::intervals, std::move(intervals));
}
void ScheduledTriggerRange::ClearIntervals() {
    set(*this, &ScheduledTriggerRangeState::intervals, std::vector<engine::ScheduledInterval>{});
}
int ScheduledTriggerRange::GetIntervalCount() const {
    return static_cast<int>(get(*this, &ScheduledTriggerRangeState::intervals).size());
}

#define OF_INTERVALS(Name, field)                                                                                   \
    int ScheduledTriggerRange::GetInterval##Name##InSeconds(int index) const {                                      \
        auto const& intervals = get(*this, &ScheduledTriggerRangeState::intervals);                                 \
        return intervals[engine::checked_index(engine::node_of(*this), "interval", index, intervals.size())].field; \
    }                                                                                                               \
    std::vector<int> ScheduledTriggerRange::GetInterval##Name##sInSeconds() {                                       \
        std::vector<int> found;                                                                                     \
        for (auto const& interval : get(*this, &ScheduledTriggerRangeState::intervals)) {                           \
            found.push_back(interval.field);                                                                        \
        }                                                                                                           \
        return found;                                                                                               \
    }
OF_INTERVALS(Offset, offset)
OF_INTERVALS(Duration, duration)

namespace engine {

template <>
std::span<KindOfNode<TriggerRange> const* const> kinds_of<TriggerRange>() {
    static KindOfNode<TriggerRange> const* const kinds[] = {
#define TRIGGER_RANGE(Class, ...) &node_kind<TriggerRange, Class##State>(),
#include "engine/behaviour/triggers/trigger_range_table.def"
    };
    return kinds;
}

}  // namespace engine
}  // namespace pedflux
