#include <kelcore/frame/kelEventTypes.h>

namespace KELKIT {

KEL_ENUM_DEFINE(kelEventTypes, kelEventTypes, KEL_ROWS_kelEventTypes)

} // namespace KELKIT
