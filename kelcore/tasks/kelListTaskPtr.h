#ifndef KELCORE_TASKS_KELLISTTASKPTR_H
#define KELCORE_TASKS_KELLISTTASKPTR_H

#include <kelcore/containers/kelList.h>
#include <kelcore/tasks/kelTask.h>

namespace KELKIT {

KEL_LIST_CLASS(kelListTaskPtr, kelTask*)

} // namespace KELKIT

#endif
