#include <kelcore/memory/kelListMemoryBlockPtr.h>

namespace KELKIT {

KEL_LIST_CLASS_DEFINE(kelListMemoryBlockPtr, kelMemoryBlock*)

} // namespace KELKIT
