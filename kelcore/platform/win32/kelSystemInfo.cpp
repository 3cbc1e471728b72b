#include <kelcore/platform/kelSystemInfo.h>

#include <windows.h>

#include <shlobj.h>

namespace KELKIT {
namespace platform {

void screenSize(UInt32& width, UInt32& height) {
    width = static_cast<UInt32>(::GetSystemMetrics(SM_CXSCREEN));
    height = static_cast<UInt32>(::GetSystemMetrics(SM_CYSCREEN));
}

std::vector<DriveEntry> listDrives() {
    std::vector<DriveEntry> drives;
    DWORD const mask = ::GetLogicalDrives();
    for (int bit = 0; bit < 26; ++bit) {
        if ((mask & (DWORD(1) << bit)) == 0) {
            continue;
        }
        char const letter = static_cast<char>('A' + bit);
        char const root[] = {letter, ':', '\\', '\0'};
        kelDriveType::Enum type = kelDriveType::Unknown;
        switch (::GetDriveTypeA(root)) {
        case DRIVE_REMOVABLE:
            type = kelDriveType::Removable;
            break;
        case DRIVE_FIXED:
            type = kelDriveType::Fixed;
            break;
        case DRIVE_REMOTE:
            type = kelDriveType::Remote;
            break;
        case DRIVE_CDROM:
            type = kelDriveType::CdRom;
            break;
        case DRIVE_RAMDISK:
            type = kelDriveType::RamDisk;
            break;
        default:
            break;
        }
        // A drive without a readable volume (an empty reader) keeps an empty label.
        char label[1024] = {};
        if (!::GetVolumeInformationA(root, label, sizeof label, nullptr, nullptr, nullptr, nullptr,
                                     0)) {
            label[0] = '\0';
        }
        label[sizeof label - 1] = '\0';
        drives.push_back(DriveEntry{letter, label, type});
    }
    return drives;
}

UInt32 lastErrorCode() {
    return static_cast<UInt32>(::GetLastError());
}

std::string errorText(UInt32 code) {
    char text[10240];
    DWORD const length =
        ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                         MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), text, sizeof text, nullptr);
    return std::string(text, length < sizeof text ? length : 0);
}

std::string knownFolder(KnownFolder folder) {
    int csidl = CSIDL_APPDATA;
    switch (folder) {
    case KnownFolder::UserRoaming:
        csidl = CSIDL_APPDATA;
        break;
    case KnownFolder::UserSettings:
        csidl = CSIDL_LOCAL_APPDATA;
        break;
    case KnownFolder::UserDocuments:
        csidl = CSIDL_PERSONAL;
        break;
    case KnownFolder::AllUsersDocuments:
        csidl = CSIDL_COMMON_DOCUMENTS;
        break;
    }
    char path[MAX_PATH] = {};
    if (::SHGetFolderPathA(nullptr, csidl, nullptr, SHGFP_TYPE_CURRENT, path) != S_OK) {
        return std::string();
    }
    return path;
}

} // namespace platform
} // namespace KELKIT
