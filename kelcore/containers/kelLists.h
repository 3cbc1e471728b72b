#ifndef KELCORE_CONTAINERS_KELLISTS_H
#define KELCORE_CONTAINERS_KELLISTS_H

#include <kelcore/containers/kelList.h>
#include <kelcore/frame/kelMonth.h>
#include <kelcore/frame/kelWeekDay.h>
#include <kelcore/strings/kelString.h>

// A module handle of the operating system. The list only stores it; on Windows it is the type
// behind HMODULE and HINSTANCE, so those pass without a cast.
struct HINSTANCE__;

namespace KELKIT {

// The element types of the named lists below, each instantiated once in the library.
// `int`, `long` and `unsigned long` of the documented interface are SInt32 and UInt32.
#define KEL_LIST_ELEMENT_TYPES(X)                                                                  \
    X(Float64)                                                                                     \
    X(Float32)                                                                                     \
    X(SInt32)                                                                                      \
    X(UInt32)                                                                                      \
    X(UInt8)                                                                                       \
    X(UInt16)                                                                                      \
    X(UInt64)                                                                                      \
    X(SInt8)                                                                                       \
    X(SInt16)                                                                                      \
    X(SInt64)                                                                                      \
    X(kelString)                                                                                   \
    X(kelMonth)                                                                                    \
    X(kelWeekDay)                                                                                  \
    X(Float64*)                                                                                    \
    X(Float32*)                                                                                    \
    X(SInt32*)                                                                                     \
    X(UInt32*)                                                                                     \
    X(UInt8*)                                                                                      \
    X(UInt16*)                                                                                     \
    X(UInt64*)                                                                                     \
    X(SInt8*)                                                                                      \
    X(SInt16*)                                                                                     \
    X(SInt64*)                                                                                     \
    X(kelString*)                                                                                  \
    X(void*)                                                                                       \
    X(::HINSTANCE__*)

// The named lists: (class, element type). Lists over classes that live elsewhere are declared
// next to their element class with KEL_LIST_CLASS.
#define KEL_LIST_CLASSES(X)                                                                        \
    X(kelListDouble, double)                                                                       \
    X(kelListFloat, float)                                                                         \
    X(kelListInt, int)                                                                             \
    X(kelListLong, SInt32)                                                                         \
    X(kelListUnsignedInt, unsigned int)                                                            \
    X(kelListUnsignedLong, UInt32)                                                                 \
    X(kelListUInt8, UInt8)                                                                         \
    X(kelListUInt16, UInt16)                                                                       \
    X(kelListUInt32, UInt32)                                                                       \
    X(kelListUInt64, UInt64)                                                                       \
    X(kelListSInt8, SInt8)                                                                         \
    X(kelListSInt16, SInt16)                                                                       \
    X(kelListSInt32, SInt32)                                                                       \
    X(kelListSInt64, SInt64)                                                                       \
    X(kelListFloat32, Float32)                                                                     \
    X(kelListFloat64, Float64)                                                                     \
    X(kelListString, kelString)                                                                    \
    X(kelListMonth, kelMonth)                                                                      \
    X(kelListWeekDay, kelWeekDay)                                                                  \
    X(kelListHModule, ::HINSTANCE__*)                                                              \
    X(kelListDoublePtr, double*)                                                                   \
    X(kelListFloatPtr, float*)                                                                     \
    X(kelListIntPtr, int*)                                                                         \
    X(kelListLongPtr, SInt32*)                                                                     \
    X(kelListUnsignedIntPtr, unsigned int*)                                                        \
    X(kelListUnsignedLongPtr, UInt32*)                                                             \
    X(kelListUInt8Ptr, UInt8*)                                                                     \
    X(kelListUInt16Ptr, UInt16*)                                                                   \
    X(kelListUInt32Ptr, UInt32*)                                                                   \
    X(kelListUInt64Ptr, UInt64*)                                                                   \
    X(kelListSInt8Ptr, SInt8*)                                                                     \
    X(kelListSInt16Ptr, SInt16*)                                                                   \
    X(kelListSInt32Ptr, SInt32*)                                                                   \
    X(kelListSInt64Ptr, SInt64*)                                                                   \
    X(kelListFloat32Ptr, Float32*)                                                                 \
    X(kelListFloat64Ptr, Float64*)                                                                 \
    X(kelListStringPtr, kelString*)                                                                \
    X(kelListVoidPtr, void*)

static_assert(std::is_same<int, SInt32>::value && std::is_same<unsigned int, UInt32>::value &&
                  std::is_same<float, Float32>::value && std::is_same<double, Float64>::value,
              "every named list's element type is in KEL_LIST_ELEMENT_TYPES");

KEL_LIST_ELEMENT_TYPES(KEL_LIST_EXTERN)
KEL_LIST_CLASSES(KEL_LIST_DECLARE)

} // namespace KELKIT

#endif
