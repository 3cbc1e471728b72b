#ifndef KELCORE_FRAME_REPETITIVETYPE_H
#define KELCORE_FRAME_REPETITIVETYPE_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_RepetitiveType(X) X(Minutes, 0) X(Hours, 1) X(Days, 2) X(Weeks, 3) X(Months, 4)
// clang-format on

namespace KELKIT {

// The unit of a repetitive schedule's period.
class KELCORE_API RepetitiveType : public kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_RepetitiveType(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(RepetitiveType)
};

} // namespace KELKIT

#endif
