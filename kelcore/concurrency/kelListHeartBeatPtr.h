#ifndef KELCORE_CONCURRENCY_KELLISTHEARTBEATPTR_H
#define KELCORE_CONCURRENCY_KELLISTHEARTBEATPTR_H

#include <kelcore/concurrency/kelHeartBeat.h>
#include <kelcore/containers/kelList.h>

namespace KELKIT {

KEL_LIST_CLASS(kelListHeartBeatPtr, kelHeartBeat*)

} // namespace KELKIT

#endif
