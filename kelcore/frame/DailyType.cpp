#include <kelcore/frame/DailyType.h>

namespace KELKIT {

KEL_ENUM_DEFINE(DailyType, DailyType, KEL_ROWS_DailyType)

} // namespace KELKIT
