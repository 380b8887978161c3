#include "bindings/table.h"

#include <pedflux/identifiers.h>
#include <pedflux/tasks.h>
#include <pedflux/wait_styles.h>

/// A task that leads to one of several places.
#define TASK_TOWARDS(Class)                                      \
    CLASS(Class, Task)                                           \
    CONSTRUCTOR_OVERLOAD(Class, 0, GlobalId const&)              \
    CONSTRUCTOR_OVERLOAD(Class, 1, GlobalId const&, bool)        \
    CONSTRUCTOR_OVERLOAD(Class, 2, std::vector<GlobalId> const&) \
    CONSTRUCTOR_OVERLOAD(Class, 3, std::vector<GlobalId> const&, bool)

namespace pedflux::jni {

CLASS(Task)

CLASS(ExitTask, Task)
CONSTRUCTOR(ExitTask)

TASK_TOWARDS(FollowSignTask)

TASK_TOWARDS(SeekAreaTask)

TASK_TOWARDS(SeekPortalTask)

CLASS(SeekProcessStartTask, Task)
CONSTRUCTOR_OVERLOAD(SeekProcessStartTask, 0, GlobalId const&)
CONSTRUCTOR_OVERLOAD(SeekProcessStartTask, 1, GlobalId const&, bool)

CLASS(WaitTask, Task)
GET(WaitTask, WaitStyle)

CLASS(WaitForDurationTask, WaitTask)
CONSTRUCTOR(WaitForDurationTask, int, std::shared_ptr<WaitStyle> const&)

CLASS(WaitForeverTask, WaitTask)
CONSTRUCTOR(WaitForeverTask, std::shared_ptr<WaitStyle> const&)

CLASS(WaitUntilTimeTask, WaitTask)
CONSTRUCTOR(WaitUntilTimeTask, int, std::shared_ptr<WaitStyle> const&)

}  // namespace pedflux::jni
