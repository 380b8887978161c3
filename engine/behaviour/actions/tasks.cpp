#include "engine/base/list_checks.h"
#include "engine/behaviour/actions/task_order.h"

#include <pedflux/tasks.h>

#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>

namespace pedflux {

namespace {

using engine::TaskKind;
using engine::TaskOrder;

TaskOrder going(std::string_view task, TaskKind kind, std::vector<GlobalId> const& goals, bool erase_route_history) {
    if (goals.empty()) engine::refuse(fmt::format("{}: there is no goal, there must be at least one", task));
    engine::require_distinct(fmt::format("{}: goal", task), goals);
    return {.kind = kind, .goals = goals, .erase_route_history = erase_route_history};
}

TaskOrder waiting(std::string_view task, TaskKind kind, int seconds, std::shared_ptr<WaitStyle> const& style) {
    if (!style) engine::refuse(fmt::format("{}: the wait style must be given, not empty", task));
    if (seconds < 0) engine::refuse(fmt::format("{}: seconds must be at least 0, not {}", task, seconds));
    return {.kind = kind, .seconds = seconds, .style = style->Clone()};
}

}  // namespace

Task::Task(TaskOrder order) : order_(std::make_unique<TaskOrder const>(std::move(order))) {}
Task::~Task() = default;

ExitTask::ExitTask() : Task({.kind = TaskKind::EXIT}) {}

#define GO_TO_ONE(Class, KIND)                                 \
    Class::Class(GlobalId const& goal) : Class(goal, false) {} \
    Class::Class(GlobalId const& goal, bool eraseRouteHistory) \
        : Task(going(#Class, TaskKind::KIND, {goal}, eraseRouteHistory)) {}
#define GO_TO(Class, KIND)                                                    \
    GO_TO_ONE(Class, KIND)                                                    \
    Class::Class(std::vector<GlobalId> const& goals) : Class(goals, false) {} \
    Class::Class(std::vector<GlobalId> const& goals, bool eraseRouteHistory)  \
        : Task(going(#Class, TaskKind::KIND, goals, eraseRouteHistory)) {}

GO_TO(FollowSignTask, FOLLOW_SIGN)
GO_TO(SeekAreaTask, SEEK_AREA)
GO_TO(SeekPortalTask, SEEK_PORTAL)
GO_TO_ONE(SeekProcessStartTask, SEEK_PROCESS_START)

std::shared_ptr<WaitStyle> WaitTask::GetWaitStyle() { return order_->style->Clone(); }

WaitForDurationTask::WaitForDurationTask(int seconds, std::shared_ptr<WaitStyle> const& style)
    : WaitTask(waiting("WaitForDurationTask", TaskKind::WAIT_FOR_DURATION, seconds, style)) {}
WaitForeverTask::WaitForeverTask(std::shared_ptr<WaitStyle> const& style)
    : WaitTask(waiting("WaitForeverTask", TaskKind::WAIT_FOREVER, 0, style)) {}
WaitUntilTimeTask::WaitUntilTimeTask(int seconds, std::shared_ptr<WaitStyle> const& style)
    : WaitTask(waiting("WaitUntilTimeTask", TaskKind::WAIT_UNTIL_TIME, seconds, style)) {}

}  // namespace pedflux
