#ifndef KELCORE_EVENTS_KELLISTEVENTNOTIFIERPTR_H
#define KELCORE_EVENTS_KELLISTEVENTNOTIFIERPTR_H

#include <kelcore/containers/kelList.h>
#include <kelcore/events/kelEventNotifier.h>

namespace KELKIT {

KEL_LIST_CLASS(kelListEventNotifierPtr, kelEventNotifier*)

} // namespace KELKIT

#endif
