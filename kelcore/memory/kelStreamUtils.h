#ifndef KELCORE_MEMORY_KELSTREAMUTILS_H
#define KELCORE_MEMORY_KELSTREAMUTILS_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/memory/kelInputStream.h>
#include <kelcore/memory/kelOutputStream.h>

namespace KELKIT {

class KELCORE_API kelStreamUtils {
public:
    kelStreamUtils() = default;
    kelStreamUtils(kelStreamUtils const&) = default;
    kelStreamUtils& operator=(kelStreamUtils const&) = default;
    virtual ~kelStreamUtils();

    // Moves the input to the output in blocks of 10240 bytes while the input's size() is not 0.
    // False for a null stream, when the output takes fewer bytes than a block held (what was
    // written stays written), or when the input delivers nothing although its size() is not 0
    // (a closed buffer stream, a file that shrank). Neither stream is flushed or closed.
    static bool copyStream(kelInputStream* input, kelOutputStream* output);
};

} // namespace KELKIT

#endif
