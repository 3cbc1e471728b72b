#ifndef KELCORE_MEMORY_KELMEMORY_H
#define KELCORE_MEMORY_KELMEMORY_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// Operations on raw memory that need no buffer object.
class KELCORE_API kelMemory {
public:
    kelMemory() = default;
    kelMemory(kelMemory const&) = default;
    kelMemory& operator=(kelMemory const&) = default;
    virtual ~kelMemory();

    // Exchanges size bytes through a temporary block; false, with nothing changed, if the
    // block cannot be had. The two places must not overlap.
    static bool swap(void* first, void* second, UInt32 size);
};

} // namespace KELKIT

#endif
