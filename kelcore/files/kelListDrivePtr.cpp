#include <kelcore/files/kelListDrivePtr.h>

namespace KELKIT {

KEL_LIST_CLASS_DEFINE(kelListDrivePtr, kelDrive*)

} // namespace KELKIT
