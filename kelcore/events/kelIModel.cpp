#include <kelcore/events/kelIModel.h>

namespace KELKIT {

kelIModel::~kelIModel() = default;

} // namespace KELKIT
