#include <kelcore/events/kelCancelActionEvent.h>

#include <kelcore/frame/kelEventTypes.h>

namespace KELKIT {

kelCancelActionEvent::kelCancelActionEvent() : mCancel(false) {}

kelCancelActionEvent::kelCancelActionEvent(kelCancelActionEvent const& other)
    : kelEvent(other), mCancel(other.mCancel) {}

kelCancelActionEvent& kelCancelActionEvent::operator=(kelCancelActionEvent const& other) {
    mCancel = other.mCancel;
    return *this;
}

kelCancelActionEvent::~kelCancelActionEvent() = default;

UInt64 kelCancelActionEvent::getType() const {
    return kelEventTypes::CancelAction;
}

void kelCancelActionEvent::cancelAction() {
    mCancel = true;
}

bool kelCancelActionEvent::isCancel() const {
    return mCancel;
}

} // namespace KELKIT
