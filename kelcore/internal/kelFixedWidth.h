#ifndef KELCORE_INTERNAL_KELFIXEDWIDTH_H
#define KELCORE_INTERNAL_KELFIXEDWIDTH_H

// Internal: not installed. How the serializers decide whether their inline forms may be used.

#include <typeinfo>

namespace KELKIT {
namespace internal {

// Whether the object is exactly of class C and not of a class derived from it: only then do the
// typed operations of C know what its serializeData and deserializeData would do. Comparing the
// type_info objects themselves costs two loads; should a platform ever duplicate them, the
// answer is false and the general path runs, which gives the same bytes.
template <class C>
inline bool isExactly(C const& object) {
    return &typeid(object) == &typeid(C);
}

} // namespace internal
} // namespace KELKIT

#endif
