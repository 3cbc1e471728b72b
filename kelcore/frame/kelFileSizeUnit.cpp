#include <kelcore/frame/kelFileSizeUnit.h>

namespace KELKIT {

KEL_ENUM_DEFINE(kelFileSizeUnit, kelFileSizeUnit, KEL_ROWS_kelFileSizeUnit)

} // namespace KELKIT
