#ifndef KELCORE_FRAME_DAILYTYPE_H
#define KELCORE_FRAME_DAILYTYPE_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_DailyType(X) X(Everyday, 0) X(WeekDays, 1) X(WeekEnds, 2)
// clang-format on

namespace KELKIT {

// Which days a daily schedule runs on.
class KELCORE_API DailyType : public kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_DailyType(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(DailyType)
};

} // namespace KELKIT

#endif
