#include <kelcore/platform/kelFileContent.h>
#include <kelcore/platform/kelNativePath.h>

#include <windows.h>

#include <algorithm>
#include <string>

namespace KELKIT {
namespace platform {

namespace {

HANDLE toHandle(FileHandle handle) {
    return reinterpret_cast<HANDLE>(handle);
}

// The identity and kind of an open file; false for what is not a file on a disk (a device).
bool fileIdentity(HANDLE handle, BY_HANDLE_FILE_INFORMATION& info) {
    return ::GetFileType(handle) == FILE_TYPE_DISK &&
           ::GetFileInformationByHandle(handle, &info) != 0;
}

bool sameFile(BY_HANDLE_FILE_INFORMATION const& a, BY_HANDLE_FILE_INFORMATION const& b) {
    return a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
           a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
}

// Not to be written: a link or a folder, and a read-only file (which the system refuses for
// writing anyway, except under an emulation that runs as the POSIX superuser).
bool notWritable(BY_HANDLE_FILE_INFORMATION const& info) {
    return (info.dwFileAttributes & (FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY |
                                     FILE_ATTRIBUTE_READONLY)) != 0;
}

FileHandle giveBack(HANDLE handle, DWORD error) {
    ::CloseHandle(handle);
    ::SetLastError(error);
    return kNoFileHandle;
}

bool emptyFile(HANDLE handle) {
    LARGE_INTEGER start;
    start.QuadPart = 0;
    return ::SetFilePointerEx(handle, start, nullptr, FILE_BEGIN) != 0 &&
           ::SetEndOfFile(handle) != 0;
}

} // namespace

FileHandle openForOverwrite(char const* path) {
    std::string native;
    if (!toNativePath(path, native)) {
        return kNoFileHandle;
    }
    // The reparse point itself is opened, so a link is recognised instead of followed.
    HANDLE const handle = ::CreateFileA(native.c_str(), GENERIC_READ | GENERIC_WRITE,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return kNoFileHandle;
    }
    BY_HANDLE_FILE_INFORMATION info;
    if (!fileIdentity(handle, info) || notWritable(info)) {
        return giveBack(handle, ERROR_INVALID_PARAMETER);
    }
    return reinterpret_cast<FileHandle>(handle);
}

FileHandle openCopyTarget(char const* path, FileHandle source) {
    std::string native;
    BY_HANDLE_FILE_INFORMATION from;
    if (!toNativePath(path, native) || !fileIdentity(toHandle(source), from)) {
        return kNoFileHandle;
    }
    // Opened without truncation, so that the source itself is recognised first.
    HANDLE const handle = ::CreateFileA(
        native.c_str(), GENERIC_WRITE | FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
        nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return kNoFileHandle;
    }
    BY_HANDLE_FILE_INFORMATION to;
    if (::GetFileType(handle) == FILE_TYPE_DISK) {
        if (!fileIdentity(handle, to) || notWritable(to) || sameFile(from, to)) {
            return giveBack(handle, ERROR_INVALID_PARAMETER);
        }
        if (!emptyFile(handle)) {
            return giveBack(handle, ::GetLastError());
        }
    }
    return reinterpret_cast<FileHandle>(handle);
}

CopyChannel::CopyChannel(FileHandle source, FileHandle target, UInt32 bufferSize)
    : mSource(source), mTarget(target), mBufferSize(std::max<UInt32>(bufferSize, 1)),
      mInKernel(false) {}

bool CopyChannel::move(UInt64 count, UInt64& moved) {
    moved = 0;
    return count == 0 || moveThroughBuffer(count, moved);
}

bool CopyChannel::moveThroughBuffer(UInt64 count, UInt64& moved) {
    if (mBuffer.empty()) {
        mBuffer.resize(mBufferSize);
    }
    DWORD const want = static_cast<DWORD>(std::min<UInt64>(count, mBuffer.size()));
    DWORD got = 0;
    if (!::ReadFile(toHandle(mSource), mBuffer.data(), want, &got, nullptr)) {
        return false;
    }
    for (DWORD written = 0; written < got;) {
        DWORD put = 0;
        if (!::WriteFile(toHandle(mTarget), mBuffer.data() + written, got - written, &put,
                         nullptr) ||
            put == 0) {
            return false; // a full disk takes nothing: no second try
        }
        written += put;
    }
    moved = got;
    return true;
}

bool flushFileHandle(FileHandle handle) {
    return ::FlushFileBuffers(toHandle(handle)) != 0;
}

void discardCopyTarget(FileHandle target, char const* path) {
    HANDLE const handle = toHandle(target);
    BY_HANDLE_FILE_INFORMATION opened;
    bool const file = fileIdentity(handle, opened);
    if (file) {
        emptyFile(handle);
    }
    ::CloseHandle(handle);
    std::string native;
    if (!file || !toNativePath(path, native)) {
        return;
    }
    // Removed only while the name still leads to the file that was written.
    HANDLE const named =
        ::CreateFileA(native.c_str(), FILE_READ_ATTRIBUTES,
                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                      OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (named == INVALID_HANDLE_VALUE) {
        return;
    }
    BY_HANDLE_FILE_INFORMATION now;
    bool const same = fileIdentity(named, now) && sameFile(opened, now);
    ::CloseHandle(named);
    if (same) {
        ::DeleteFileA(native.c_str());
    }
}

} // namespace platform
} // namespace KELKIT
