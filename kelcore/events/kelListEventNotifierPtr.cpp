#include <kelcore/events/kelListEventNotifierPtr.h>

namespace KELKIT {

KEL_LIST_CLASS_DEFINE(kelListEventNotifierPtr, kelEventNotifier*)

} // namespace KELKIT
