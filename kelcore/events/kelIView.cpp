#include <kelcore/events/kelIView.h>

namespace KELKIT {

kelIView::~kelIView() = default;

} // namespace KELKIT
