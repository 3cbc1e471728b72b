#ifndef KELCORE_FRAME_KELSIZE_H
#define KELCORE_FRAME_KELSIZE_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// A plain pair of 32-bit unsigned values: width and height.
class KELCORE_API kelSize {
public:
    kelSize();
    kelSize(UInt32 width, UInt32 height);
    kelSize(kelSize const&) = default;
    kelSize& operator=(kelSize const&) = default;
    virtual ~kelSize();

    UInt32 getWidth();
    UInt32 getHeight();

private:
    UInt32 mWidth;
    UInt32 mHeight;
};

} // namespace KELKIT

#endif
