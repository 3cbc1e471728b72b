#ifndef KELCORE_FRAME_KELDRIVETYPE_H
#define KELCORE_FRAME_KELDRIVETYPE_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_kelDriveType(X) X(Fixed, 0) X(Remote, 1) X(CdRom, 2) X(Removable, 3) X(RamDisk, 4) X(Unknown, 5)
// clang-format on

namespace KELKIT {

// The kind of a drive.
class KELCORE_API kelDriveType : public kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_kelDriveType(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(kelDriveType)
};

} // namespace KELKIT

#endif
