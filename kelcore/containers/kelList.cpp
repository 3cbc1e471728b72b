#include <kelcore/containers/kelList.h>

namespace KELKIT {

void kelListSortAddresses(std::vector<void const*>& addresses, kelIComparator const& comparator) {
    // A merge sort reads only inside its ranges; introsort's unguarded scans trust the
    // comparator to be a strict order, which a caller's comparator need not be.
    std::stable_sort(addresses.begin(), addresses.end(),
                     [&](void const* a, void const* b) { return comparator.compare(a, b) < 0; });
}

} // namespace KELKIT
