#include <kelcore/frame/kelSize.h>

namespace KELKIT {

kelSize::kelSize() : mWidth(0), mHeight(0) {}

kelSize::kelSize(UInt32 width, UInt32 height) : mWidth(width), mHeight(height) {}

kelSize::~kelSize() = default;

UInt32 kelSize::getWidth() {
    return mWidth;
}

UInt32 kelSize::getHeight() {
    return mHeight;
}

} // namespace KELKIT
