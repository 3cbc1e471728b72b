#ifndef KELCORE_FRAME_SCHEDULETYPE_H
#define KELCORE_FRAME_SCHEDULETYPE_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_ScheduleType(X) X(Unique, 0) X(Repetitive, 1) X(Daily, 2) X(Weekly, 3) X(Montly, 4)
// clang-format on

namespace KELKIT {

// The form of a schedule ("Montly" is the name callers depend on).
class KELCORE_API ScheduleType : public kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_ScheduleType(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(ScheduleType)
};

} // namespace KELKIT

#endif
