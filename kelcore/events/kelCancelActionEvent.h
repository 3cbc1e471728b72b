#ifndef KELCORE_EVENTS_KELCANCELACTIONEVENT_H
#define KELCORE_EVENTS_KELCANCELACTIONEVENT_H

#include <kelcore/events/kelEvent.h>

namespace KELKIT {

// Published by a long operation at each step; any notifier may ask it to stop. Once set, the
// flag stays set (only assignment from another event clears it).
class KELCORE_API kelCancelActionEvent : public kelEvent {
public:
    kelCancelActionEvent();
    kelCancelActionEvent(kelCancelActionEvent const& other);
    kelCancelActionEvent& operator=(kelCancelActionEvent const& other);
    ~kelCancelActionEvent() override;

    // kelEventTypes::CancelAction (5).
    UInt64 getType() const override;
    virtual void cancelAction();
    virtual bool isCancel() const;

private:
    bool mCancel;
};

} // namespace KELKIT

#endif
