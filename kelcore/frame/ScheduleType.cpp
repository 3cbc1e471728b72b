#include <kelcore/frame/ScheduleType.h>

namespace KELKIT {

KEL_ENUM_DEFINE(ScheduleType, ScheduleType, KEL_ROWS_ScheduleType)

} // namespace KELKIT
