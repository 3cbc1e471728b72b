#ifndef KELCORE_FRAME_KELPOINT_H
#define KELCORE_FRAME_KELPOINT_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// A plain pair of 32-bit unsigned values: x and y.
class KELCORE_API kelPoint {
public:
    kelPoint();
    kelPoint(UInt32 x, UInt32 y);
    kelPoint(kelPoint const&) = default;
    kelPoint& operator=(kelPoint const&) = default;
    virtual ~kelPoint();

    UInt32 getX();
    UInt32 getY();

private:
    UInt32 mX;
    UInt32 mY;
};

} // namespace KELKIT

#endif
