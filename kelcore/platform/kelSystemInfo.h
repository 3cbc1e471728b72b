#ifndef KELCORE_PLATFORM_KELSYSTEMINFO_H
#define KELCORE_PLATFORM_KELSYSTEMINFO_H

// Internal: questions about the machine: screen, drives, error codes and known folders.

#include <kelcore/frame/kelDriveType.h>
#include <kelcore/frame/kelTypes.h>

#include <string>
#include <vector>

namespace KELKIT {
namespace platform {

struct DriveEntry {
    char letter;
    std::string label;
    kelDriveType::Enum type;
};

enum class KnownFolder { UserRoaming, UserSettings, UserDocuments, AllUsersDocuments };

// Width and height of the primary screen; 0 x 0 when no display can be asked.
void screenSize(UInt32& width, UInt32& height);
// The drives in letter order.
std::vector<DriveEntry> listDrives();
// The calling thread's last error code.
UInt32 lastErrorCode();
// The system's text for an error code; empty for a code without one.
std::string errorText(UInt32 code);
// A library path (backslashes) to the folder; empty when it cannot be found.
std::string knownFolder(KnownFolder folder);

} // namespace platform
} // namespace KELKIT

#endif
