#pragma once

#include "engine/simulation/tasks/task_context.h"

namespace pedflux::engine {

/// Lets agents leave that have arrived at their last goal, unless they have something else to do or a dispatch sends
/// them on. Those who were pushed out through an exit and are not to leave are put back.
void finish_arrivals(TaskContext& context);

}  // namespace pedflux::engine
