#ifndef KELCORE_MEMORY_KELIPACKER_H
#define KELCORE_MEMORY_KELIPACKER_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// A number bound to a place in a caller's memory: assigning stores it there, converting reads
// it back. The interface holds nothing, and copying it copies nothing.
class KELCORE_API kelIPacker {
public:
    // Inline, so that a packer made for each field of a loop costs no call.
    kelIPacker() {}
    kelIPacker(kelIPacker const& other);
    kelIPacker& operator=(kelIPacker const& other);
    virtual ~kelIPacker() {}

    virtual kelIPacker& operator=(double value) = 0;
    virtual operator double() const = 0;
};

} // namespace KELKIT

#endif
