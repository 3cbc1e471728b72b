#ifndef KELCORE_FRAME_KELWEEKDAY_H
#define KELCORE_FRAME_KELWEEKDAY_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_kelWeekDay(X) X(Sunday, 1) X(Monday, 2) X(Tuesday, 3) X(Wednesday, 4) X(Thursday, 5) X(Friday, 6) X(Saturday, 7)
// clang-format on

namespace KELKIT {

// A day of the week, Sunday first; 0 is no day.
class KELCORE_API kelWeekDay : public kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_kelWeekDay(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(kelWeekDay)
};

} // namespace KELKIT

#endif
