#include <kelcore/containers/kelNodeFilter.h>

namespace KELKIT {

kelNodeFilter::~kelNodeFilter() = default;

} // namespace KELKIT
