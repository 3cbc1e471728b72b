#ifndef KELCORE_PLATFORM_KELPATHCHANGES_H
#define KELCORE_PLATFORM_KELPATHCHANGES_H

// Internal: operations that change what a path names (rename, and the making and removing of
// items), on the library's backslash paths.

namespace KELKIT {
namespace platform {

// Gives the item at from (file, folder or link, which is moved itself) the name to. Never
// replaces an existing item: a taken name fails and both items stay as they were. False for a
// null, empty or over-long path.
bool renameItem(char const* from, char const* to);

// Makes one folder, whose parent must exist (the runtime's _mkdir; POSIX mode 0777 less the
// umask). False when the name is taken or the system refuses.
bool makeFolder(char const* path);
// Removes one empty folder (_rmdir). A link is never removed this way: on POSIX it is no
// folder, and on Windows a folder link goes itself, never its target's content.
bool removeFolder(char const* path);
// Removes a file, or a link itself (the runtime's remove, which never removes a folder; POSIX
// unlinks, so that an empty folder is not removed as remove() would).
bool removeFile(char const* path);
// Makes at target a link holding what the link at source holds, so that a copy of a tree keeps
// its links as links and reads nothing through them. An existing target that is not a folder is
// replaced, as a copy replaces a file, unless it is the source link itself.
bool copyLink(char const* source, char const* target);

} // namespace platform
} // namespace KELKIT

#endif
