#ifndef KELCORE_EVENTS_KELEVENT_H
#define KELCORE_EVENTS_KELEVENT_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// Something that happened, told apart by its type number (see kelEventTypes).
class KELCORE_API kelEvent {
public:
    kelEvent() = default;
    kelEvent(kelEvent const&) = default;
    kelEvent& operator=(kelEvent const&) = default;
    virtual ~kelEvent();

    virtual UInt64 getType() const = 0;
};

} // namespace KELKIT

#endif
