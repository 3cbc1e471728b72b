#ifndef KELCORE_FRAME_KELISORTABLE_H
#define KELCORE_FRAME_KELISORTABLE_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelIComparator.h>

namespace KELKIT {

// A collection that sorts itself by a caller's comparator.
class KELCORE_API kelISortable {
public:
    kelISortable() = default;
    kelISortable(kelISortable const&) = default;
    kelISortable& operator=(kelISortable const&) = default;
    virtual ~kelISortable();

    virtual void sort(kelIComparator const& comparator) = 0;
};

} // namespace KELKIT

#endif
