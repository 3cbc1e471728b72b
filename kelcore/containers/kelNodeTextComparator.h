#ifndef KELCORE_CONTAINERS_KELNODETEXTCOMPARATOR_H
#define KELCORE_CONTAINERS_KELNODETEXTCOMPARATOR_H

#include <kelcore/containers/kelNodeComparator.h>

namespace KELKIT {

// Orders text nodes by their texts (kelString == and <) and puts every text node before any
// other node (or null); two nodes without text compare as 0.
class KELCORE_API kelNodeTextComparator : public virtual kelNodeComparator {
public:
    kelNodeTextComparator() = default;
    kelNodeTextComparator(kelNodeTextComparator const& other);
    kelNodeTextComparator& operator=(kelNodeTextComparator const& other);
    virtual ~kelNodeTextComparator();

    int compare(kelNode const* left, kelNode const* right) const override;
};

} // namespace KELKIT

#endif
