#include <kelcore/menus/kelIconTransparency.h>

#include <kelcore/memory/kelMemoryBuffer.h>

namespace KELKIT {

bool kelIconTransparency::apply(kelMemoryBuffer const& mask, kelMemoryBuffer& image, UInt8 blue,
                                UInt8 green, UInt8 red) {
    UInt32 const size = image.getSize();
    if (mask.getSize() != size || size % 4 != 0) {
        return false;
    }
    UInt8 const* m = mask.getBuffer();
    UInt8* p = image.getBuffer();
    for (UInt32 i = 0; i < size; i += 4) {
        if (m[i] == 255 && m[i + 1] == 255 && m[i + 2] == 255) {
            p[i] = blue;
            p[i + 1] = green;
            p[i + 2] = red;
            p[i + 3] = 0;
        } else {
            p[i + 3] = 255;
        }
    }
    return true;
}

} // namespace KELKIT
