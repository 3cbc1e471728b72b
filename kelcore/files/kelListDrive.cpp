#include <kelcore/files/kelListDrive.h>

namespace KELKIT {

KEL_LIST_CLASS_DEFINE(kelListDrive, kelDrive)

} // namespace KELKIT
