#include <kelcore/concurrency/kelListHeartBeat.h>

namespace KELKIT {

KEL_LIST_CLASS_DEFINE(kelListHeartBeat, kelHeartBeat)

} // namespace KELKIT
