#include <kelcore/concurrency/kelListHeartBeatPtr.h>

namespace KELKIT {

KEL_LIST_CLASS_DEFINE(kelListHeartBeatPtr, kelHeartBeat*)

} // namespace KELKIT
