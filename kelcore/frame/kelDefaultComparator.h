#ifndef KELCORE_FRAME_KELDEFAULTCOMPARATOR_H
#define KELCORE_FRAME_KELDEFAULTCOMPARATOR_H

#include <kelcore/frame/kelIComparator.h>

namespace KELKIT {

// Orders two T by their own == and <. Gives exactly -1, 0 or 1; a null address compares equal
// to anything, so that a list holding gaps still sorts without crashing.
template <typename T>
class kelDefaultComparator : public virtual kelIComparator {
public:
    kelDefaultComparator() = default;
    kelDefaultComparator(kelDefaultComparator const&) = default;
    kelDefaultComparator& operator=(kelDefaultComparator const&) = default;
    ~kelDefaultComparator() override = default;

    int compare(void const* first, void const* second) const override {
        if (first == nullptr || second == nullptr) {
            return 0;
        }
        T const& a = *static_cast<T const*>(first);
        T const& b = *static_cast<T const*>(second);
        if (a == b) {
            return 0;
        }
        return (a < b) ? -1 : 1;
    }
};

} // namespace KELKIT

#endif
