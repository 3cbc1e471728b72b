#ifndef KELCORE_FRAME_KELREVERSECOMPARATOR_H
#define KELCORE_FRAME_KELREVERSECOMPARATOR_H

#include <kelcore/frame/kelIComparator.h>

namespace KELKIT {

// Turns another comparator's order around. The wrapped comparator is not owned and must
// outlive this one.
class KELCORE_API kelReverseComparator : public virtual kelIComparator {
public:
    explicit kelReverseComparator(kelIComparator const& comparator);
    kelReverseComparator(kelReverseComparator const&) = default;
    kelReverseComparator& operator=(kelReverseComparator const&) = default;
    ~kelReverseComparator() override;

    int compare(void const* first, void const* second) const override;

private:
    kelIComparator const* mComparator;
};

} // namespace KELKIT

#endif
