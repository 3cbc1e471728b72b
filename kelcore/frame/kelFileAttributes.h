#ifndef KELCORE_FRAME_KELFILEATTRIBUTES_H
#define KELCORE_FRAME_KELFILEATTRIBUTES_H

#include <kelcore/frame/kelBaseEnum.h>

// clang-format off
#define KEL_ROWS_kelFileAttributes(X) X(None, 1) X(File, 2) X(Folder, 4) X(CurrentFolder, 8) X(ParentFolder, 16) X(Archive, 32) X(Hidden, 64) X(ReadOnly, 128) X(System, 256)
// clang-format on

namespace KELKIT {

// A set of file attribute bits; the value is normally an OR of named values.
class KELCORE_API kelFileAttributes : public kelBaseEnum {
public:
    enum Enum : int { KEL_ROWS_kelFileAttributes(KEL_ENUM_ENUMERATOR) };
    KEL_ENUM_MEMBERS(kelFileAttributes)
};

} // namespace KELKIT

#endif
