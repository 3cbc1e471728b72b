#ifndef KELCORE_FRAME_KELTIMEUNIT_H
#define KELCORE_FRAME_KELTIMEUNIT_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_kelTimeUnit(X) X(Years, 0) X(Months, 1) X(Weeks, 2) X(Days, 3) X(Hours, 4) X(Minutes, 5) X(Seconds, 6) X(Milliseconds, 7)
// clang-format on

namespace KELKIT {

// A unit of calendar time.
class KELCORE_API kelTimeUnit : public kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_kelTimeUnit(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(kelTimeUnit)
};

} // namespace KELKIT

#endif
