#ifndef KELCORE_FRAME_KELEVENTTYPES_H
#define KELCORE_FRAME_KELEVENTTYPES_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_kelEventTypes(X) X(FileCopy, 0) X(FolderCopy, 1) X(FileDelete, 2) X(FolderDelete, 3) X(HeartBeat, 4) X(CancelAction, 5) X(Custom, 32768)
// clang-format on

namespace KELKIT {

// The type numbers of the library's events; callers' own types start at Custom.
class KELCORE_API kelEventTypes : public kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_kelEventTypes(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(kelEventTypes)
};

} // namespace KELKIT

#endif
