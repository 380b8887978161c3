#include "engine/behaviour/triggers/trigger_states.h"
#include "engine/model/node_kind.h"
#include "engine/model/properties.h"

#include <pedflux/triggers.h>

#include <array>
#include <type_traits>
#include <utility>

#include <fmt/format.h>

namespace pedflux {
namespace engine {
namespace {

enum class Timing { INSTANT, INTERVAL, EITHER, AS_CHILDREN };
enum class Children { NONE, ANY, INTERVALS };

struct Traits {
    TriggerType type;
    Timing timing;
    Children children;
};

Traits const& kind_traits_of(Trigger const& trigger) {
    static constexpr auto TABLE = std::to_array<Traits>({
#define TRIGGER(Class, type, timing, children, ...) {TriggerType::type, Timing::timing, Children::children},
#include "engine/behaviour/triggers/trigger_table.def"
    });
    static_assert([] {
        for (std::size_t i = 0; i < TABLE.size(); ++i) {
            if (static_cast<std::size_t>(TABLE[i].type) != i) return false;
        }
        return true;
    }());
    return TABLE[static_cast<std::size_t>(type_of(trigger))];
}

/// Of a trigger that does not nest too deep.
TriggerTiming shallow_timing_of(Trigger const& trigger) {
    switch (kind_traits_of(trigger).timing) {
        case Timing::INSTANT:
            return {true, false};
        case Timing::INTERVAL:
            return {false, true};
        case Timing::EITHER:
            return {true, true};
        case Timing::AS_CHILDREN:
            break;
    }
    TriggerTiming timing{false, true};
    for (auto const& child : children_of(trigger)) {
        auto const [instant, interval] = shallow_timing_of(*child);
        timing.instant = timing.instant || instant;
        timing.interval = timing.interval && interval;
    }
    return timing;
}

void require_interval(Subject const& subject, std::string const& field, std::shared_ptr<Trigger> const& trigger) {
    if (!trigger || timing_of(*trigger).interval) return;
    Subject{subject.owner, subject.property.empty() ? field : subject.property + "." + field}.refuse(
        "a trigger that holds for spans of time",
        fmt::format("{}, which fires at moments", node_of(*trigger).kind->name));
}

template <class State>
void check_children(Subject const& subject, State const& self, Children children) {
    if (children != Children::INTERVALS) return;
    State::fields(self, [&]<class Value>(std::string_view name, Value const& value, auto const&...) {
        if constexpr (std::is_same_v<Value, std::shared_ptr<Trigger>>) {
            require_interval(subject, std::string(name), value);
        } else if constexpr (std::is_same_v<Value, std::vector<std::shared_ptr<Trigger>>>) {
            for (std::size_t i = 0; i < value.size(); ++i) {
                require_interval(subject, fmt::format("{}.{}", name, i), value[i]);
            }
        }
    });
}

}  // namespace

TriggerTiming timing_of(Trigger const& trigger) {
    require_shallow(node_of(trigger));
    return shallow_timing_of(trigger);
}

#define TRIGGER(Class, type, timing, children, ...)                              \
    void Class##State::check(Subject const& subject, Class##State const& self) { \
        check_children(subject, self, Children::children);                       \
    }
#include "engine/behaviour/triggers/trigger_table.def"

template <>
std::span<KindOfNode<Trigger> const* const> kinds_of<Trigger>() {
    static KindOfNode<Trigger> const* const kinds[] = {
#define TRIGGER(Class, ...) &node_kind<Trigger, Class##State>(),
#include "engine/behaviour/triggers/trigger_table.def"
    };
    return kinds;
}

}  // namespace engine

Trigger::Trigger(engine::NodePointer node) : node_(std::move(node)) {}
Trigger::Trigger(Trigger const& other) : node_(engine::copy_of(engine::node_of(other))) {}
Trigger::~Trigger() = default;

int Trigger::GetTriggerTypeId() { return engine::type_of(*this); }
std::shared_ptr<Trigger> Trigger::Clone() { return engine::clone_of(*this); }
int Trigger::GetChildTriggerCount() { return static_cast<int>(engine::children_of(*this).size()); }
std::shared_ptr<Trigger> Trigger::GetChildTriggerAt(int index) { return engine::child_of(*this, index); }
std::vector<std::shared_ptr<Trigger>> Trigger::GetChildTriggers() { return engine::children_of(*this); }
bool Trigger::IsValidChild(std::shared_ptr<Trigger> const& child) {
    auto const children = engine::kind_traits_of(*this).children;
    return children != engine::Children::NONE && engine::may_hold(*this, child) &&
           (children == engine::Children::ANY || engine::timing_of(*child).interval);
}

bool Trigger::IsInstant() const { return engine::timing_of(*this).instant; }
bool Trigger::IsInterval() const { return engine::timing_of(*this).interval; }
std::vector<std::shared_ptr<Trigger>> Trigger::GetAllNestedChildTriggers() { return engine::nested_children_of(*this); }

}  // namespace pedflux
