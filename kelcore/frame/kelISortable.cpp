#include <kelcore/frame/kelISortable.h>

namespace KELKIT {

kelISortable::~kelISortable() = default;

} // namespace KELKIT
