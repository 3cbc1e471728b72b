#include <kelcore/frame/kelIRunnable.h>

namespace KELKIT {

kelIRunnable::~kelIRunnable() = default;

} // namespace KELKIT
