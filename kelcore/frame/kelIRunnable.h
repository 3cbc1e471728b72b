#ifndef KELCORE_FRAME_KELIRUNNABLE_H
#define KELCORE_FRAME_KELIRUNNABLE_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// A body of work that a thread runs.
class KELCORE_API kelIRunnable {
public:
    kelIRunnable() = default;
    kelIRunnable(kelIRunnable const&) = default;
    kelIRunnable& operator=(kelIRunnable const&) = default;
    virtual ~kelIRunnable();

    virtual void run() = 0;
};

} // namespace KELKIT

#endif
