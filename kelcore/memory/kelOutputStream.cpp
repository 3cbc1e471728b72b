#include <kelcore/memory/kelOutputStream.h>

namespace KELKIT {

kelOutputStream::~kelOutputStream() = default;

} // namespace KELKIT
