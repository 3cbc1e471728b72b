#include <kelcore/events/kelListIModel.h>

namespace KELKIT {

KEL_LIST_CLASS_DEFINE(kelListIModel, kelIModel*)

} // namespace KELKIT
