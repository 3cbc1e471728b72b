#include <kelcore/serialization/kelIDumper.h>

namespace KELKIT {

kelIDumper::~kelIDumper() = default;

} // namespace KELKIT
