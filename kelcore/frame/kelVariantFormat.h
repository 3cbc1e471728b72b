#ifndef KELCORE_FRAME_KELVARIANTFORMAT_H
#define KELCORE_FRAME_KELVARIANTFORMAT_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_kelVariantFormat(X) X(Bool, 0) X(UInt8, 1) X(SInt8, 2) X(UInt16, 3) X(SInt16, 4) X(UInt32, 5) X(SInt32, 6) X(UInt64, 7) X(SInt64, 8) X(Float32, 9) X(Float64, 10) X(String, 11) X(Time, 12)
// clang-format on

// The format of a variant's value. It lies at global scope.
class KELCORE_API kelVariantFormat : public KELKIT::kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_kelVariantFormat(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(kelVariantFormat)
};

#endif
