#ifndef KELCORE_TASKS_KELLISTTASK_H
#define KELCORE_TASKS_KELLISTTASK_H

#include <kelcore/containers/kelList.h>
#include <kelcore/tasks/kelTask.h>

namespace KELKIT {

// Holds copies: a task in the list has no subtasks of the original's.
KEL_LIST_CLASS(kelListTask, kelTask)

} // namespace KELKIT

#endif
