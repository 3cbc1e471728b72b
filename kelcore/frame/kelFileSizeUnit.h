#ifndef KELCORE_FRAME_KELFILESIZEUNIT_H
#define KELCORE_FRAME_KELFILESIZEUNIT_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_kelFileSizeUnit(X) X(Bytes, 0) X(Kilobytes, 1) X(Megabytes, 2) X(Gigabytes, 3) X(Terabytes, 4)
// clang-format on

namespace KELKIT {

// A unit of file size.
class KELCORE_API kelFileSizeUnit : public kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_kelFileSizeUnit(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(kelFileSizeUnit)
};

} // namespace KELKIT

#endif
