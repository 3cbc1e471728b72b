#ifndef KELCORE_FILES_KELLISTDRIVE_H
#define KELCORE_FILES_KELLISTDRIVE_H

#include <kelcore/containers/kelList.h>
#include <kelcore/files/kelDrive.h>

namespace KELKIT {

KEL_LIST_CLASS(kelListDrive, kelDrive)

} // namespace KELKIT

#endif
