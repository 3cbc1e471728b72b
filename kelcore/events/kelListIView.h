#ifndef KELCORE_EVENTS_KELLISTIVIEW_H
#define KELCORE_EVENTS_KELLISTIVIEW_H

#include <kelcore/containers/kelList.h>
#include <kelcore/events/kelIView.h>

namespace KELKIT {

// Stores the pointers only; what they point at stays the caller's.
KEL_LIST_CLASS(kelListIView, kelIView*)

} // namespace KELKIT

#endif
