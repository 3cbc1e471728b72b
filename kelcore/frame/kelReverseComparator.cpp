#include <kelcore/frame/kelReverseComparator.h>

#include <climits>

namespace KELKIT {

kelReverseComparator::kelReverseComparator(kelIComparator const& comparator)
    : mComparator(&comparator) {}

kelReverseComparator::~kelReverseComparator() = default;

int kelReverseComparator::compare(void const* first, void const* second) const {
    int const result = mComparator->compare(first, second);
    // Negating INT_MIN would overflow; any negative result only needs to become positive.
    return result < 0 ? (result == INT_MIN ? 1 : -result) : -result;
}

} // namespace KELKIT
