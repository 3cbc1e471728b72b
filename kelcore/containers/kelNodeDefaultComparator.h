#ifndef KELCORE_CONTAINERS_KELNODEDEFAULTCOMPARATOR_H
#define KELCORE_CONTAINERS_KELNODEDEFAULTCOMPARATOR_H

#include <kelcore/containers/kelNodeComparator.h>

namespace KELKIT {

// Orders nodes by address: 0 for the same object, -1 when left lies at the lower address,
// else 1.
class KELCORE_API kelNodeDefaultComparator : public virtual kelNodeComparator {
public:
    kelNodeDefaultComparator() = default;
    kelNodeDefaultComparator(kelNodeDefaultComparator const& other);
    kelNodeDefaultComparator& operator=(kelNodeDefaultComparator const& other);
    virtual ~kelNodeDefaultComparator();

    int compare(kelNode const* left, kelNode const* right) const override;
};

} // namespace KELKIT

#endif
