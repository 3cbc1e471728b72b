#ifndef KELCORE_MENUS_KELICONTRANSPARENCY_H
#define KELCORE_MENUS_KELICONTRANSPARENCY_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

class kelMemoryBuffer;

// How a menu bitmap is made from an icon drawn twice, once as its mask and once as its image,
// on any platform. Pixels are 4 bytes each, in the order blue, green, red, alpha.
class KELCORE_API kelIconTransparency {
public:
    // For each pixel: a pixel whose mask is white (blue, green and red all 255) is
    // transparent and becomes the background colour with alpha 0; every other pixel keeps
    // the image's colour with alpha 255. false, changing nothing, when the two buffers differ
    // in size or their size is not a whole number of pixels.
    static bool apply(kelMemoryBuffer const& mask, kelMemoryBuffer& image, UInt8 blue, UInt8 green,
                      UInt8 red);
};

} // namespace KELKIT

#endif
