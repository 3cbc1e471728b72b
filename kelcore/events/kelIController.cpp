#include <kelcore/events/kelIController.h>

namespace KELKIT {

kelIController::~kelIController() = default;

} // namespace KELKIT
