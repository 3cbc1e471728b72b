#ifndef KELCORE_FILES_KELLISTDRIVEPTR_H
#define KELCORE_FILES_KELLISTDRIVEPTR_H

#include <kelcore/containers/kelList.h>
#include <kelcore/files/kelDrive.h>

namespace KELKIT {

// Stores the pointers only; the drives stay the caller's.
KEL_LIST_CLASS(kelListDrivePtr, kelDrive*)

} // namespace KELKIT

#endif
