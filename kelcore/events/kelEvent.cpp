#include <kelcore/events/kelEvent.h>

namespace KELKIT {

kelEvent::~kelEvent() = default;

} // namespace KELKIT
