#include <kelcore/containers/kelNodeDefaultComparator.h>

#include <functional>

namespace KELKIT {

kelNodeDefaultComparator::kelNodeDefaultComparator(kelNodeDefaultComparator const& other)
    : kelNodeComparator(other) {}

kelNodeDefaultComparator&
kelNodeDefaultComparator::operator=(kelNodeDefaultComparator const&) = default;

kelNodeDefaultComparator::~kelNodeDefaultComparator() = default;

int kelNodeDefaultComparator::compare(kelNode const* left, kelNode const* right) const {
    if (left == right) {
        return 0;
    }
    // std::less gives a total order over any two pointers, where < between unrelated objects
    // would not be defined.
    return std::less<kelNode const*>()(left, right) ? -1 : 1;
}

} // namespace KELKIT
