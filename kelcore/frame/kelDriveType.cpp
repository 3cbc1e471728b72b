#include <kelcore/frame/kelDriveType.h>

namespace KELKIT {

KEL_ENUM_DEFINE(kelDriveType, kelDriveType, KEL_ROWS_kelDriveType)

} // namespace KELKIT
