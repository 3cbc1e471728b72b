#include <kelcore/memory/kelInputStream.h>

namespace KELKIT {

kelInputStream::~kelInputStream() = default;

} // namespace KELKIT
