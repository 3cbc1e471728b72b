#include <kelcore/frame/kelTimeUnit.h>

namespace KELKIT {

KEL_ENUM_DEFINE(kelTimeUnit, kelTimeUnit, KEL_ROWS_kelTimeUnit)

} // namespace KELKIT
