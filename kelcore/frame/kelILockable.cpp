#include <kelcore/frame/kelILockable.h>

namespace KELKIT {

kelILockable::~kelILockable() = default;

} // namespace KELKIT
