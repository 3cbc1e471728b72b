#include <kelcore/frame/kelFileAttributes.h>

namespace KELKIT {

KEL_ENUM_DEFINE(kelFileAttributes, kelFileAttributes, KEL_ROWS_kelFileAttributes)

} // namespace KELKIT
