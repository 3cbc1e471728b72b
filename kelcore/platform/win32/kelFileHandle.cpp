#include <kelcore/platform/kelFileHandle.h>
#include <kelcore/platform/kelNativePath.h>

#include <windows.h>

#include <string>

namespace KELKIT {
namespace platform {

namespace {

HANDLE toHandle(FileHandle handle) {
    return reinterpret_cast<HANDLE>(handle);
}

} // namespace

FileHandle openFileHandle(char const* path, FileAccess access, FileCreation creation,
                          unsigned share) {
    std::string native;
    if (!toNativePath(path, native)) {
        return kNoFileHandle;
    }
    DWORD const desired = access == FileAccess::Read    ? GENERIC_READ
                          : access == FileAccess::Write ? GENERIC_WRITE
                                                        : (GENERIC_READ | GENERIC_WRITE);
    DWORD const disposition = creation == FileCreation::OpenAlways     ? OPEN_ALWAYS
                              : creation == FileCreation::OpenExisting ? OPEN_EXISTING
                              : creation == FileCreation::CreateAlways ? CREATE_ALWAYS
                                                                       : CREATE_NEW;
    DWORD const sharing = ((share & kShareRead) != 0 ? FILE_SHARE_READ : 0) |
                          ((share & kShareWrite) != 0 ? FILE_SHARE_WRITE : 0);
    HANDLE const handle = ::CreateFileA(native.c_str(), desired, sharing, nullptr, disposition,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
    return handle == INVALID_HANDLE_VALUE ? kNoFileHandle : reinterpret_cast<FileHandle>(handle);
}

void closeFileHandle(FileHandle handle) {
    if (handle != kNoFileHandle) {
        ::CloseHandle(toHandle(handle));
    }
}

UInt32 readFileHandle(FileHandle handle, void* buffer, UInt32 size) {
    DWORD count = 0;
    if (!::ReadFile(toHandle(handle), buffer, size, &count, nullptr)) {
        return 0;
    }
    return count;
}

UInt32 writeFileHandle(FileHandle handle, void const* buffer, UInt32 size) {
    DWORD count = 0;
    if (!::WriteFile(toHandle(handle), buffer, size, &count, nullptr)) {
        return 0;
    }
    return count;
}

bool seekFileHandle(FileHandle handle, SInt64 distance, SeekOrigin origin, UInt64& position) {
    DWORD const method = origin == SeekOrigin::Begin     ? FILE_BEGIN
                         : origin == SeekOrigin::Current ? FILE_CURRENT
                                                         : FILE_END;
    LARGE_INTEGER move;
    move.QuadPart = distance;
    LARGE_INTEGER result;
    if (!::SetFilePointerEx(toHandle(handle), move, &result, method)) {
        return false;
    }
    position = static_cast<UInt64>(result.QuadPart);
    return true;
}

bool getFileHandleSize(FileHandle handle, UInt64& size) {
    LARGE_INTEGER result;
    if (!::GetFileSizeEx(toHandle(handle), &result)) {
        return false;
    }
    size = static_cast<UInt64>(result.QuadPart);
    return true;
}

} // namespace platform
} // namespace KELKIT
