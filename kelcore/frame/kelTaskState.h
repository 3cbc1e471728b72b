#ifndef KELCORE_FRAME_KELTASKSTATE_H
#define KELCORE_FRAME_KELTASKSTATE_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_kelTaskState(X) X(Play, 0) X(Pause, 1) X(Stop, 2)
// clang-format on

namespace KELKIT {

// Whether a task plays, pauses or stops.
class KELCORE_API kelTaskState : public kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_kelTaskState(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(kelTaskState)
};

} // namespace KELKIT

#endif
