#ifndef KELCORE_EVENTS_KELIOBSERVER_H
#define KELCORE_EVENTS_KELIOBSERVER_H

#include <kelcore/frame/kelExport.h>

namespace KELKIT {

class kelIObservable;

// Told by an observable that it has news; the caller derives from this class.
class KELCORE_API kelIObserver {
public:
    kelIObserver() = default;
    kelIObserver(kelIObserver const&) = default;
    kelIObserver& operator=(kelIObserver const&) = default;
    virtual ~kelIObserver();

    // Runs on the notifying thread, under the observable's lock.
    virtual void onNotify(kelIObservable* observable) = 0;
};

} // namespace KELKIT

#endif
