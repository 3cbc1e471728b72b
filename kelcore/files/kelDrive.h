#ifndef KELCORE_FILES_KELDRIVE_H
#define KELCORE_FILES_KELDRIVE_H

#include <kelcore/frame/kelDriveType.h>
#include <kelcore/frame/kelExport.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// One drive: its letter, volume label and kind. Comparisons look at the letter alone, so two
// drives with equal letters are equal whatever their names; the order is that of the letters
// as signed 8-bit values.
class KELCORE_API kelDrive {
public:
    // Letter 'A', no name, kind Unknown.
    kelDrive();
    kelDrive(char letter, char const* name, kelDriveType type);
    kelDrive(kelDrive const& other);
    kelDrive& operator=(kelDrive const& other);
    virtual ~kelDrive();

    virtual void setLetter(char letter);
    // A null name is the empty text.
    virtual void setName(char const* name);
    virtual void setType(kelDriveType type);
    virtual char getLetter() const;
    virtual char const* getName() const;
    virtual kelDriveType getType() const;
    virtual bool operator<(kelDrive const& other) const;
    virtual bool operator==(kelDrive const& other) const;
    virtual bool operator!=(kelDrive const& other) const;

private:
    char mLetter;
    kelString mName;
    kelDriveType mType;
};

} // namespace KELKIT

#endif
