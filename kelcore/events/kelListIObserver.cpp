#include <kelcore/events/kelListIObserver.h>

namespace KELKIT {

KEL_LIST_CLASS_DEFINE(kelListIObserver, kelIObserver*)

} // namespace KELKIT
