#ifndef KELCORE_EVENTS_KELLISTIMODEL_H
#define KELCORE_EVENTS_KELLISTIMODEL_H

#include <kelcore/containers/kelList.h>
#include <kelcore/events/kelIModel.h>

namespace KELKIT {

// Stores the pointers only; what they point at stays the caller's.
KEL_LIST_CLASS(kelListIModel, kelIModel*)

} // namespace KELKIT

#endif
