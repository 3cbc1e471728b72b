#include <kelcore/frame/RepetitiveType.h>

namespace KELKIT {

KEL_ENUM_DEFINE(RepetitiveType, RepetitiveType, KEL_ROWS_RepetitiveType)

} // namespace KELKIT
