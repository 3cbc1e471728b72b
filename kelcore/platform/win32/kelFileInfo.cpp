#include <kelcore/platform/kelFileInfo.h>
#include <kelcore/platform/kelNativePath.h>

#include <windows.h>

#include <string>
#include <sys/stat.h>

namespace KELKIT {
namespace platform {

bool getItemAttributeWord(char const* path, UInt32& word) {
    std::string native;
    if (!toNativePath(path, native)) {
        return false;
    }
    DWORD const attributes = ::GetFileAttributesA(native.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return false;
    }
    word = attributes;
    return true;
}

bool isFileItem(char const* path) {
    UInt32 word = 0;
    return getItemAttributeWord(path, word) && (word & kAttributeDirectory) == 0;
}

bool isEnterableFolder(char const* path) {
    UInt32 word = 0;
    return getItemAttributeWord(path, word) && (word & kAttributeDirectory) != 0;
}

bool setItemAttributeWord(char const* path, UInt32 word) {
    std::string native;
    return toNativePath(path, native) && ::SetFileAttributesA(native.c_str(), word) != 0;
}

bool getMetadataSize(char const* path, UInt64& size) {
    std::string native;
    struct _stat64 status;
    if (!toNativePath(path, native) || ::_stat64(native.c_str(), &status) != 0) {
        return false;
    }
    size = (status.st_mode & _S_IFDIR) != 0 ? 0 : static_cast<UInt64>(status.st_size);
    return true;
}

} // namespace platform
} // namespace KELKIT
