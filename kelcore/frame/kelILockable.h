#ifndef KELCORE_FRAME_KELILOCKABLE_H
#define KELCORE_FRAME_KELILOCKABLE_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// Something a caller can lock and unlock; the library itself implements none.
class KELCORE_API kelILockable {
public:
    kelILockable() = default;
    kelILockable(kelILockable const&) = default;
    kelILockable& operator=(kelILockable const&) = default;
    virtual ~kelILockable();

    virtual void lock() = 0;
    virtual void unlock() = 0;
};

} // namespace KELKIT

#endif
