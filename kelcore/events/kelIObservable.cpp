#include <kelcore/events/kelIObservable.h>

namespace KELKIT {

kelIObservable::~kelIObservable() = default;

} // namespace KELKIT
