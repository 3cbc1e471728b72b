#include <kelcore/platform/kelDirectory.h>
#include <kelcore/platform/kelFileInfo.h>

#include <cstring>

namespace KELKIT {
namespace platform {

// A folder that is a link or a reparse point (a junction) is listed, never entered.
bool isEnterableEntry(DirectoryEntry const& entry) {
    return (entry.attributes & (kAttributeDirectory | kAttributeReparsePoint)) ==
               kAttributeDirectory &&
           std::strcmp(entry.name, ".") != 0 && std::strcmp(entry.name, "..") != 0;
}

} // namespace platform
} // namespace KELKIT
