#include <kelcore/frame/kelPoint.h>

namespace KELKIT {

kelPoint::kelPoint() : mX(0), mY(0) {}

kelPoint::kelPoint(UInt32 x, UInt32 y) : mX(x), mY(y) {}

kelPoint::~kelPoint() = default;

UInt32 kelPoint::getX() {
    return mX;
}

UInt32 kelPoint::getY() {
    return mY;
}

} // namespace KELKIT
