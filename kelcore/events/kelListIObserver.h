#ifndef KELCORE_EVENTS_KELLISTIOBSERVER_H
#define KELCORE_EVENTS_KELLISTIOBSERVER_H

#include <kelcore/containers/kelList.h>
#include <kelcore/events/kelIObserver.h>

namespace KELKIT {

// Stores the pointers only; what they point at stays the caller's.
KEL_LIST_CLASS(kelListIObserver, kelIObserver*)

} // namespace KELKIT

#endif
