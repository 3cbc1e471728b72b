#include <kelcore/events/kelEventNotifier.h>

namespace KELKIT {

kelEventNotifier::~kelEventNotifier() = default;

} // namespace KELKIT
