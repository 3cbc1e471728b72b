#ifndef KELCORE_FRAME_KELGLOBAL_H
#define KELCORE_FRAME_KELGLOBAL_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/frame/kelVersion.h>

namespace KELKIT {

// Two small operations that belong to no other class. It holds no state.
class KELCORE_API kelGlobal {
public:
    kelGlobal();
    kelGlobal(kelGlobal const& other);
    kelGlobal& operator=(kelGlobal const& other);
    virtual ~kelGlobal();

    // The low 32 bits of the pointer's value.
    UInt32 kelPtrToULong(void const* pointer);

    // The library's own version, 2.0.0.437 with all parts printed.
    static kelVersion getKelKitVersion();
};

} // namespace KELKIT

#endif
