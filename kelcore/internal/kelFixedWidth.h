#ifndef KELCORE_INTERNAL_KELFIXEDWIDTH_H
#define KELCORE_INTERNAL_KELFIXEDWIDTH_H

// Internal: not installed. The pieces of the serializers' direct path for fixed-width values.

#include <kelcore/frame/kelTypes.h>

#include <cstring>
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

template <typename T>
inline void storeValue(UInt8* to, T value) {
    std::memcpy(to, &value, sizeof value);
}

template <unsigned Width>
struct WidthBits;
template <>
struct WidthBits<1> {
    typedef UInt8 type;
};
template <>
struct WidthBits<2> {
    typedef UInt16 type;
};
template <>
struct WidthBits<4> {
    typedef UInt32 type;
};
template <>
struct WidthBits<8> {
    typedef UInt64 type;
};

// Through an unsigned integer of the same width: a bool gets the stored byte as it is, and the
// destination may lie inside the block it is read from.
template <typename T>
inline void loadValue(T& value, UInt8 const* from) {
    typename WidthBits<sizeof(T)>::type bits;
    std::memcpy(&bits, from, sizeof bits);
    std::memcpy(&value, &bits, sizeof bits);
}

} // namespace internal
} // namespace KELKIT

#endif
