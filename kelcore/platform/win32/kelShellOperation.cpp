#include <kelcore/platform/kelShellOperation.h>

#include <windows.h>

#include <shellapi.h>

namespace KELKIT {
namespace platform {

bool runShellOperation(UInt32 operation, UInt32 flags, char const* sources, char const* targets) {
    SHFILEOPSTRUCTA record = {};
    record.hwnd = nullptr;
    record.wFunc = operation;
    record.pFrom = sources;
    record.pTo = targets;
    record.fFlags = static_cast<FILEOP_FLAGS>(flags);
    record.hNameMappings = nullptr;
    record.lpszProgressTitle = nullptr;
    return ::SHFileOperationA(&record) == 0 && !record.fAnyOperationsAborted;
}

} // namespace platform
} // namespace KELKIT
