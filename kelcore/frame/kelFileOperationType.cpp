#include <kelcore/frame/kelFileOperationType.h>

namespace KELKIT {

KEL_ENUM_DEFINE(kelFileOperationType, kelFileOperationType, KEL_ROWS_kelFileOperationType)

} // namespace KELKIT
