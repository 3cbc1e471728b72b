#ifndef KELCORE_FRAME_KELVERSION_H
#define KELCORE_FRAME_KELVERSION_H

#include <kelcore/frame/kelBaseEnum.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/strings/kelString.h>

// clang-format off
#define KEL_ROWS_kelVersion_Flags(X) X(None, 0) X(Minor, 1) X(Patch, 2) X(Build, 4) X(Trim, 8) X(All, 15)
// clang-format on

namespace KELKIT {

// A four-part version number with a choice of the parts it prints.
//
// The four numbers form one 64-bit cell with major in its lowest 16 bits and build in its
// highest, and the comparisons compare that cell: build counts first, major last, so 1.0.0.2
// is greater than 2.0.0.1. The flags take no part in comparisons, and assignment leaves them.
class KELCORE_API kelVersion {
public:
    // Which parts toString prints; Trim drops trailing ".0" parts.
    class KELCORE_API Flags : public kelBaseEnum {
    public:
        enum Enum : int { KEL_ROWS_kelVersion_Flags(KEL_ENUM_ENUMERATOR) };
        KEL_ENUM_MEMBERS(Flags)
    };

    // All numbers 0, flags None.
    kelVersion();
    kelVersion(kelVersion const& other);
    // Flags All.
    kelVersion(UInt16 major, UInt16 minor, UInt16 patch, UInt16 build);
    kelVersion(UInt16 major, UInt16 minor, UInt16 patch, UInt16 build, Flags const& flags);
    virtual ~kelVersion();

    UInt16 const& getMajor() const;
    UInt16& getMajor();
    UInt16 const& getMinor() const;
    UInt16& getMinor();
    UInt16 const& getPatch() const;
    UInt16& getPatch();
    UInt16 const& getBuild() const;
    UInt16& getBuild();

    void setMajor(UInt16 const& major);
    void setMinor(UInt16 const& minor);
    void setPatch(UInt16 const& patch);
    void setBuild(UInt16 const& build);
    void set(UInt16 const& major, UInt16 const& minor, UInt16 const& patch, UInt16 const& build);

    void setFlags(Flags const& flags);
    Flags const& getFlags() const;

    // Major, then ".minor", ".patch", ".build" for each flag set, then Trim.
    kelString toString() const;

    // Copies the numbers only; the flags of this object stay.
    kelVersion const& operator=(kelVersion const& other);

    bool operator==(kelVersion const& other) const;
    bool operator!=(kelVersion const& other) const;
    bool operator<(kelVersion const& other) const;
    bool operator<=(kelVersion const& other) const;
    bool operator>(kelVersion const& other) const;
    bool operator>=(kelVersion const& other) const;

private:
    UInt64 cell() const;

    UInt16 mMajor;
    UInt16 mMinor;
    UInt16 mPatch;
    UInt16 mBuild;
    Flags mFlags;
};

} // namespace KELKIT

#endif
