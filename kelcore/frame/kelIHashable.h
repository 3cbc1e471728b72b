#ifndef KELCORE_FRAME_KELIHASHABLE_H
#define KELCORE_FRAME_KELIHASHABLE_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// A value with a 32-bit hash code.
class KELCORE_API kelIHashable {
public:
    kelIHashable() = default;
    kelIHashable(kelIHashable const&) = default;
    kelIHashable& operator=(kelIHashable const&) = default;
    virtual ~kelIHashable();

    virtual UInt32 getHashCode() const = 0;
};

} // namespace KELKIT

#endif
