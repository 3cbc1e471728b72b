#ifndef KELCORE_FRAME_KELFILEOPERATIONFLAG_H
#define KELCORE_FRAME_KELFILEOPERATIONFLAG_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_kelFileOperationFlag(X) X(DisplayProgress, 0) X(ShowErrors, 1) X(ShowConfirmation, 2) X(Recycle, 3)
// clang-format on

namespace KELKIT {

// An option of a batch file operation. The values are consecutive numbers, not bits.
class KELCORE_API kelFileOperationFlag : public kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_kelFileOperationFlag(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(kelFileOperationFlag)
};

} // namespace KELKIT

#endif
