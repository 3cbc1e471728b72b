#include <kelcore/logging/kelILogger.h>

namespace KELKIT {

kelILogger::~kelILogger() = default;

} // namespace KELKIT
