#include <kelcore/files/kelDrive.h>

namespace KELKIT {

kelDrive::kelDrive() : mLetter('A'), mType(kelDriveType::Unknown) {}

kelDrive::kelDrive(char letter, char const* name, kelDriveType type)
    : mLetter(letter), mName(name), mType(type) {}

kelDrive::kelDrive(kelDrive const& other) = default;

kelDrive& kelDrive::operator=(kelDrive const& other) = default;

kelDrive::~kelDrive() = default;

void kelDrive::setLetter(char letter) {
    mLetter = letter;
}

void kelDrive::setName(char const* name) {
    mName = name;
}

void kelDrive::setType(kelDriveType type) {
    mType = type;
}

char kelDrive::getLetter() const {
    return mLetter;
}

char const* kelDrive::getName() const {
    return mName.c_str();
}

kelDriveType kelDrive::getType() const {
    return mType;
}

bool kelDrive::operator<(kelDrive const& other) const {
    return static_cast<SInt8>(mLetter) < static_cast<SInt8>(other.mLetter);
}

bool kelDrive::operator==(kelDrive const& other) const {
    return mLetter == other.mLetter;
}

bool kelDrive::operator!=(kelDrive const& other) const {
    return mLetter != other.mLetter;
}

} // namespace KELKIT
