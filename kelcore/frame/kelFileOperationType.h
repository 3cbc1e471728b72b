#ifndef KELCORE_FRAME_KELFILEOPERATIONTYPE_H
#define KELCORE_FRAME_KELFILEOPERATIONTYPE_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_kelFileOperationType(X) X(Copy, 0) X(Move, 1) X(Delete, 2) X(Rename, 3)
// clang-format on

namespace KELKIT {

// What a batch file operation does.
class KELCORE_API kelFileOperationType : public kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_kelFileOperationType(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(kelFileOperationType)
};

} // namespace KELKIT

#endif
