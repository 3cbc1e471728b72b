#include <kelcore/serialization/kelISerializer.h>

namespace KELKIT {

kelISerializer::~kelISerializer() = default;

} // namespace KELKIT
