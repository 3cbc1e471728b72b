#include <kelcore/frame/kelMonth.h>

namespace KELKIT {

KEL_ENUM_DEFINE(kelMonth, kelMonth, KEL_ROWS_kelMonth)

} // namespace KELKIT
