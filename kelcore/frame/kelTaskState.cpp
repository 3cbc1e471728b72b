#include <kelcore/frame/kelTaskState.h>

namespace KELKIT {

KEL_ENUM_DEFINE(kelTaskState, kelTaskState, KEL_ROWS_kelTaskState)

} // namespace KELKIT
