#ifndef KELCORE_FRAME_KELICOMPARATOR_H
#define KELCORE_FRAME_KELICOMPARATOR_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>

namespace KELKIT {

// Orders two things given by address: negative, 0 or positive, like strcmp.
class KELCORE_API kelIComparator {
public:
    kelIComparator() = default;
    kelIComparator(kelIComparator const&) = default;
    kelIComparator& operator=(kelIComparator const&) = default;
    virtual ~kelIComparator();

    virtual int compare(void const* first, void const* second) const = 0;
};

} // namespace KELKIT

#endif
