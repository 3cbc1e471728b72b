#ifndef KELCORE_INTERNAL_KELPOINTERLIST_H
#define KELCORE_INTERNAL_KELPOINTERLIST_H

// Internal: the removals shared by the observer and model-view-controller bases.

#include <kelcore/frame/kelTypes.h>

namespace KELKIT {
namespace internal {

// Erases the first entry equal to item, by pointer; false when there is none.
template <class List, class Item>
bool eraseFirst(List& list, Item* item) {
    typename List::INDEX found;
    if (!list.find(item, found)) {
        return false;
    }
    return list.erase(found);
}

// Removes the first entry through remove (a virtual removal that a derived class may
// override) until the list is empty; true when every removal was. A removal that does not
// shorten the list ends the loop with false rather than spinning for ever.
template <class List, class Remove>
bool removeEach(List& list, Remove remove) {
    bool all = true;
    while (!list.empty()) {
        UInt32 const before = list.size();
        all = remove(list.get(0)) && all;
        if (list.size() >= before) {
            return false;
        }
    }
    return all;
}

} // namespace internal
} // namespace KELKIT

#endif
