#include <kelcore/containers/kelNodeComparator.h>

namespace KELKIT {

kelNodeComparator::~kelNodeComparator() = default;

} // namespace KELKIT
