#ifndef KELCORE_EVENTS_KELEVENTNOTIFIER_H
#define KELCORE_EVENTS_KELEVENTNOTIFIER_H

#include <kelcore/events/kelEvent.h>

namespace KELKIT {

// A listener on the event bus; it receives every event and picks by getType. The event is the
// publisher's: a notifier neither keeps nor deletes it.
class KELCORE_API kelEventNotifier {
public:
    kelEventNotifier() = default;
    kelEventNotifier(kelEventNotifier const&) = default;
    kelEventNotifier& operator=(kelEventNotifier const&) = default;
    virtual ~kelEventNotifier();

    virtual void onEvent(kelEvent* event) = 0;
};

} // namespace KELKIT

#endif
