#include <kelcore/frame/kelIHashable.h>

namespace KELKIT {

kelIHashable::~kelIHashable() = default;

} // namespace KELKIT
