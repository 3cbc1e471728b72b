#include <kelcore/memory/kelListMemoryBlock.h>

namespace KELKIT {

KEL_LIST_CLASS_DEFINE(kelListMemoryBlock, kelMemoryBlock)

} // namespace KELKIT
