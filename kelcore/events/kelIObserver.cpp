#include <kelcore/events/kelIObserver.h>

namespace KELKIT {

kelIObserver::~kelIObserver() = default;

} // namespace KELKIT
