#include <kelcore/frame/kelFileOperationFlag.h>

namespace KELKIT {

KEL_ENUM_DEFINE(kelFileOperationFlag, kelFileOperationFlag, KEL_ROWS_kelFileOperationFlag)

} // namespace KELKIT
