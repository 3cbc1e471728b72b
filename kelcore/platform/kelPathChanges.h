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

} // namespace platform
} // namespace KELKIT

#endif
