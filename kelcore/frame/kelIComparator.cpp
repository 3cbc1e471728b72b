#include <kelcore/frame/kelIComparator.h>

namespace KELKIT {

kelIComparator::~kelIComparator() = default;

} // namespace KELKIT
