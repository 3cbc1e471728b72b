#ifndef KELCORE_FRAME_KELMONTH_H
#define KELCORE_FRAME_KELMONTH_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_kelMonth(X) X(January, 1) X(February, 2) X(March, 3) X(April, 4) X(May, 5) X(June, 6) X(July, 7) X(August, 8) X(September, 9) X(October, 10) X(November, 11) X(December, 12)
// clang-format on

namespace KELKIT {

// A month of the year; 0 is no month.
class KELCORE_API kelMonth : public kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_kelMonth(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(kelMonth)
};

} // namespace KELKIT

#endif
