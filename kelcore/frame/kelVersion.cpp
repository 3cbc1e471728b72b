#include <kelcore/frame/kelVersion.h>

#include <string>

namespace KELKIT {

KEL_ENUM_DEFINE(kelVersion::Flags, Flags, KEL_ROWS_kelVersion_Flags)

kelVersion::kelVersion() : mMajor(0), mMinor(0), mPatch(0), mBuild(0), mFlags(Flags::None) {}

kelVersion::kelVersion(kelVersion const& other)
    : mMajor(other.mMajor), mMinor(other.mMinor), mPatch(other.mPatch), mBuild(other.mBuild),
      mFlags(other.mFlags) {}

kelVersion::kelVersion(UInt16 major, UInt16 minor, UInt16 patch, UInt16 build)
    : mMajor(major), mMinor(minor), mPatch(patch), mBuild(build), mFlags(Flags::All) {}

kelVersion::kelVersion(UInt16 major, UInt16 minor, UInt16 patch, UInt16 build, Flags const& flags)
    : mMajor(major), mMinor(minor), mPatch(patch), mBuild(build), mFlags(flags) {}

kelVersion::~kelVersion() = default;

UInt16 const& kelVersion::getMajor() const {
    return mMajor;
}
UInt16& kelVersion::getMajor() {
    return mMajor;
}
UInt16 const& kelVersion::getMinor() const {
    return mMinor;
}
UInt16& kelVersion::getMinor() {
    return mMinor;
}
UInt16 const& kelVersion::getPatch() const {
    return mPatch;
}
UInt16& kelVersion::getPatch() {
    return mPatch;
}
UInt16 const& kelVersion::getBuild() const {
    return mBuild;
}
UInt16& kelVersion::getBuild() {
    return mBuild;
}

void kelVersion::setMajor(UInt16 const& major) {
    mMajor = major;
}
void kelVersion::setMinor(UInt16 const& minor) {
    mMinor = minor;
}
void kelVersion::setPatch(UInt16 const& patch) {
    mPatch = patch;
}
void kelVersion::setBuild(UInt16 const& build) {
    mBuild = build;
}

void kelVersion::set(UInt16 const& major, UInt16 const& minor, UInt16 const& patch,
                     UInt16 const& build) {
    mMajor = major;
    mMinor = minor;
    mPatch = patch;
    mBuild = build;
}

void kelVersion::setFlags(Flags const& flags) {
    mFlags = flags;
}

kelVersion::Flags const& kelVersion::getFlags() const {
    return mFlags;
}

kelString kelVersion::toString() const {
    std::string text = std::to_string(mMajor);
    if (mFlags.isFlagsEnabled(Flags::Minor)) {
        text += '.' + std::to_string(mMinor);
    }
    if (mFlags.isFlagsEnabled(Flags::Patch)) {
        text += '.' + std::to_string(mPatch);
    }
    if (mFlags.isFlagsEnabled(Flags::Build)) {
        text += '.' + std::to_string(mBuild);
    }
    if (mFlags.isFlagsEnabled(Flags::Trim)) {
        while (text.size() >= 2 && text.compare(text.size() - 2, 2, ".0") == 0) {
            text.resize(text.size() - 2);
        }
    }
    return kelString(text.c_str());
}

kelVersion const& kelVersion::operator=(kelVersion const& other) {
    set(other.mMajor, other.mMinor, other.mPatch, other.mBuild);
    return *this;
}

UInt64 kelVersion::cell() const {
    return static_cast<UInt64>(mMajor) | static_cast<UInt64>(mMinor) << 16 |
           static_cast<UInt64>(mPatch) << 32 | static_cast<UInt64>(mBuild) << 48;
}

bool kelVersion::operator==(kelVersion const& other) const {
    return cell() == other.cell();
}
bool kelVersion::operator!=(kelVersion const& other) const {
    return cell() != other.cell();
}
bool kelVersion::operator<(kelVersion const& other) const {
    return cell() < other.cell();
}
bool kelVersion::operator<=(kelVersion const& other) const {
    return cell() <= other.cell();
}
bool kelVersion::operator>(kelVersion const& other) const {
    return cell() > other.cell();
}
bool kelVersion::operator>=(kelVersion const& other) const {
    return cell() >= other.cell();
}

} // namespace KELKIT
