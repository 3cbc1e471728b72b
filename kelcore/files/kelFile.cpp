#include <kelcore/files/kelFile.h>
#include <kelcore/platform/kelFileHandle.h>
#include <kelcore/platform/kelFileInfo.h>

namespace KELKIT {

struct kelFile::Impl {
    kelFile::ACCESS_MODE mode = kelFile::READ;
    platform::FileHandle handle = platform::kNoFileHandle;

    void close() {
        platform::closeFileHandle(handle);
        handle = platform::kNoFileHandle;
        mode = kelFile::READ;
    }
};

kelFile::kelFile() : mImpl(new Impl()) {}

kelFile::kelFile(char const* path) : kelFileItem(path), mImpl(new Impl()) {}

kelFile::kelFile(kelFile const& other) : kelFileItem(other), mImpl(new Impl()) {}

kelFile& kelFile::operator=(kelFile const& other) {
    if (this != &other) {
        mImpl->close();
        kelFileItem::operator=(other);
    }
    return *this;
}

kelFile::~kelFile() {
    mImpl->close();
}

bool kelFile::exists() const {
    UInt32 word = 0;
    return isOpened() || platform::getItemAttributeWord(getPath(), word);
}

UInt64 kelFile::getSize() const {
    if (getPath()[0] == '\0') {
        return 0;
    }
    UInt64 size = 0;
    if (isOpened()) {
        return platform::getFileHandleSize(mImpl->handle, size) ? size : 0;
    }
    if (!platform::getMetadataSize(getPath(), size)) {
        return 0;
    }
    SInt32 const narrow = static_cast<SInt32>(static_cast<UInt32>(size));
    return static_cast<UInt64>(static_cast<SInt64>(narrow));
}

bool kelFile::isOpened() const {
    return mImpl->handle != platform::kNoFileHandle;
}

bool kelFile::open(ACCESS_MODE const& mode) {
    close();
    using platform::FileAccess;
    using platform::FileCreation;
    platform::FileHandle handle = platform::kNoFileHandle;
    switch (mode) {
    case READ:
        handle = platform::openFileHandle(getPath(), FileAccess::Read, FileCreation::OpenAlways,
                                          platform::kShareRead);
        break;
    case WRITE:
        handle = platform::openFileHandle(getPath(), FileAccess::Write, FileCreation::OpenAlways,
                                          platform::kShareWrite);
        break;
    case READ_WRITE:
        handle =
            platform::openFileHandle(getPath(), FileAccess::ReadWrite, FileCreation::OpenExisting,
                                     platform::kShareRead | platform::kShareWrite);
        break;
    default:
        return false; // asks for no access at all, which the system refuses
    }
    if (handle == platform::kNoFileHandle) {
        return false;
    }
    mImpl->handle = handle;
    mImpl->mode = mode;
    return true;
}

void kelFile::close() {
    mImpl->close();
}

kelFile::ACCESS_MODE kelFile::getMode() const {
    return mImpl->mode;
}

UInt32 kelFile::read(unsigned char* buffer, UInt32 size) {
    if (!isOpened() || (buffer == nullptr && size != 0)) {
        return 0;
    }
    return platform::readFileHandle(mImpl->handle, buffer, size);
}

UInt32 kelFile::write(unsigned char const* buffer, UInt32 size) {
    if (!isOpened() || (buffer == nullptr && size != 0)) {
        return 0;
    }
    return platform::writeFileHandle(mImpl->handle, buffer, size);
}

bool kelFile::setPosition(UInt32 position) {
    UInt64 reached = 0;
    return isOpened() &&
           platform::seekFileHandle(mImpl->handle, position, platform::SeekOrigin::Begin,
                                    reached) &&
           reached == position;
}

UInt32 kelFile::getPosition() const {
    if (!isOpened()) {
        return 0;
    }
    UInt64 position = 0;
    if (!platform::seekFileHandle(mImpl->handle, 0, platform::SeekOrigin::Current, position)) {
        return 0xFFFFFFFFu;
    }
    return static_cast<UInt32>(position);
}

} // namespace KELKIT
