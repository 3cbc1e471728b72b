#include <kelcore/frame/kelWeekDay.h>

namespace KELKIT {

KEL_ENUM_DEFINE(kelWeekDay, kelWeekDay, KEL_ROWS_kelWeekDay)

} // namespace KELKIT
