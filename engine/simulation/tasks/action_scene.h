#pragma once

#include "engine/behaviour/actions/action_stack.h"
#include "engine/simulation/tasks/task_context.h"

#include <optional>
#include <utility>

namespace pedflux::engine {

/// One agent and the world around it, as its actions see them.
class LiveScene final : public ActionScene {
  public:
    LiveScene(TaskContext& context, AgentMotion& motion)
        : context_(context),
          motion_(motion),
          info_(context.agents.infos[motion.agent]),
          tasks_(context.agents.tasks[motion.agent]) {}

    double now() const override { return context_.clock.time_of_day(); }
    ActionProgram const& actions_of(OrderProgram const& order) const override { return order.actions.program; }
    std::optional<double> time_of(TimeInFrame const& time) const override {
        return clock_time(context_.clock, context_.events, time);
    }
    bool put_test(int test) override;
    bool pursue(ActionTask const& task) override;
    void happen(ActionEffect effect, ActionNode const& node) override;

    /// Whether an action lets the agent leave.
    bool leaves() const { return leaves_; }
    /// The portal that the agent reached on its way since the last call; no_place when there was none.
    PlaceIndex take_passed_portal() { return std::exchange(passed_portal_, no_place); }

  private:
    PlaceIndex choose_goal(ActionTask const& task);

    TaskContext& context_;
    AgentMotion& motion_;
    AgentInfo& info_;
    TaskState& tasks_;
    bool leaves_ = false;
    bool has_arrived_ = false;  ///< at the goal of the last task, so that the next one chooses its own
    PlaceIndex passed_portal_ = no_place;
};

}  // namespace pedflux::engine
