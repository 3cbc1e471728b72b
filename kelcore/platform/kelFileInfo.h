#ifndef KELCORE_PLATFORM_KELFILEINFO_H
#define KELCORE_PLATFORM_KELFILEINFO_H

// Internal: what the system knows about an item at a path, and its attribute word.

#include <kelcore/frame/kelTypes.h>

namespace KELKIT {
namespace platform {

// The attribute word of an item, in the Windows bit values on both platforms. POSIX makes it
// up: kDirectory from the file type (a link is never a folder), kHidden for a name that starts
// with a dot (other than "." and ".."), kReadOnly when the owner may not write, and
// kReparsePoint for a symbolic link. kSystem and kArchive never occur there.
constexpr UInt32 kAttributeReadOnly = 1;
constexpr UInt32 kAttributeHidden = 2;
constexpr UInt32 kAttributeSystem = 4;
constexpr UInt32 kAttributeDirectory = 16;
constexpr UInt32 kAttributeArchive = 32;
constexpr UInt32 kAttributeNormal = 128;
constexpr UInt32 kAttributeReparsePoint = 1024;

// The word of the item itself; a link is not followed. False when there is no such item.
bool getItemAttributeWord(char const* path, UInt32& word);
// A file for the library: an item that is not a folder (a link, dangling or not, is one).
bool isFileItem(char const* path);
// A folder that this process can enter. A link to a folder is not one on POSIX.
bool isEnterableFolder(char const* path);
// Applies kReadOnly, kHidden, kSystem and kArchive of the word as far as the system has them
// (POSIX: read-only only; a link has no attributes of its own and is refused).
bool setItemAttributeWord(char const* path, UInt32 word);
// The size in the item's metadata, following links; a folder has 0.
bool getMetadataSize(char const* path, UInt64& size);

} // namespace platform
} // namespace KELKIT

#endif
