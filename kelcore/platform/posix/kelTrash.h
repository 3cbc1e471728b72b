#ifndef KELCORE_PLATFORM_POSIX_KELTRASH_H
#define KELCORE_PLATFORM_POSIX_KELTRASH_H

// Internal to the POSIX backend: the user's trash as the desktops share it (freedesktop.org):
// the item goes into the trash's files/ folder, and a <name>.trashinfo in its info/ folder
// says where it came from and when, so that a file manager can put it back.

#include <string>

namespace KELKIT {
namespace platform {

// Moves the item at a native path (a link goes itself) into the home trash,
// $XDG_DATA_HOME/Trash (by default ~/.local/share/Trash), or, for an item on another file
// system, into that file system's own trash ($topdir/.Trash/$uid or $topdir/.Trash-$uid).
// False, with the item where it was, when no trash takes it.
bool moveToTrash(std::string const& native);

} // namespace platform
} // namespace KELKIT

#endif
