#ifndef KELCORE_CONCURRENCY_KELLISTHEARTBEAT_H
#define KELCORE_CONCURRENCY_KELLISTHEARTBEAT_H

#include <kelcore/concurrency/kelHeartBeat.h>
#include <kelcore/containers/kelList.h>

namespace KELKIT {

KEL_LIST_CLASS(kelListHeartBeat, kelHeartBeat)

} // namespace KELKIT

#endif
