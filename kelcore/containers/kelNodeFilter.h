#ifndef KELCORE_CONTAINERS_KELNODEFILTER_H
#define KELCORE_CONTAINERS_KELNODEFILTER_H

#include <kelcore/frame/kelExport.h>

namespace KELKIT {

class kelNode;

// Decides which nodes kelNode::findNodes collects. Not deletable through this base (its
// destructor is protected and not virtual); derived filters have their own virtual destructor.
class KELCORE_API kelNodeFilter {
public:
    kelNodeFilter() = default;
    kelNodeFilter(kelNodeFilter const&) = default;
    kelNodeFilter& operator=(kelNodeFilter const&) = default;

    // May be given a null node by a caller; the library's filters answer false then.
    virtual bool matches(kelNode const* node) const = 0;

protected:
    ~kelNodeFilter();
};

} // namespace KELKIT

#endif
