#ifndef KELCORE_CONTAINERS_KELNODECOMPARATOR_H
#define KELCORE_CONTAINERS_KELNODECOMPARATOR_H

#include <kelcore/frame/kelExport.h>

namespace KELKIT {

class kelNode;

// Orders two nodes for kelNode::sort: -1 when left comes first, 0 or 1 otherwise. Not
// deletable through this base (its destructor is protected and not virtual).
class KELCORE_API kelNodeComparator {
public:
    kelNodeComparator() = default;
    kelNodeComparator(kelNodeComparator const&) = default;
    kelNodeComparator& operator=(kelNodeComparator const&) = default;

    virtual int compare(kelNode const* left, kelNode const* right) const = 0;

protected:
    ~kelNodeComparator();
};

} // namespace KELKIT

#endif
