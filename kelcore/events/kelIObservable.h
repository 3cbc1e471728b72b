#ifndef KELCORE_EVENTS_KELIOBSERVABLE_H
#define KELCORE_EVENTS_KELIOBSERVABLE_H

#include <kelcore/events/kelListIObserver.h>

namespace KELKIT {

// An object that tells its observers when it changes.
class KELCORE_API kelIObservable {
public:
    kelIObservable() = default;
    kelIObservable(kelIObservable const&) = default;
    kelIObservable& operator=(kelIObservable const&) = default;
    virtual ~kelIObservable();

    virtual void addObserver(kelIObserver* observer) = 0;
    virtual bool removeObserver(kelIObserver* observer) = 0;
    virtual bool removeObservers() = 0;
    virtual kelListIObserver getObservers() = 0;
    virtual void notifyObservers() = 0;
    virtual void lock() = 0;
    virtual void unlock() = 0;
};

} // namespace KELKIT

#endif
