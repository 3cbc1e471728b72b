#include <kelcore/events/kelListIView.h>

namespace KELKIT {

KEL_LIST_CLASS_DEFINE(kelListIView, kelIView*)

} // namespace KELKIT
