#include <kelcore/tasks/kelListTaskPtr.h>

namespace KELKIT {

KEL_LIST_CLASS_DEFINE(kelListTaskPtr, kelTask*)

} // namespace KELKIT
