#include <kelcore/tasks/kelListTask.h>

namespace KELKIT {

KEL_LIST_CLASS_DEFINE(kelListTask, kelTask)

} // namespace KELKIT
