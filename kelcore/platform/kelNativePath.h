#ifndef KELCORE_PLATFORM_KELNATIVEPATH_H
#define KELCORE_PLATFORM_KELNATIVEPATH_H

// Internal: the library's backslash paths as the operating system takes them, and back.

#include <cstddef>
#include <string>

namespace KELKIT {
namespace platform {

// The longest path text, in characters, that the library hands to the system. Longer ones are
// refused before any system call, so no fixed buffer anywhere can be asked to hold them.
constexpr std::size_t kMaxPathLength = 10239;

// The path in the system's form (POSIX: each backslash becomes '/'). False, with native
// unchanged, for a null, empty or over-long path.
bool toNativePath(char const* path, std::string& native);
// As toNativePath, without the trailing separators (the root itself stays). A folder named with
// a trailing separator is the same folder, and a link named that way must not be followed.
// endsWithSeparator tells whether any were dropped.
bool toNativeItemPath(char const* path, std::string& native, bool& endsWithSeparator);
// A path the system gave, in the library's form (POSIX: each '/' becomes a backslash).
void fromNativePath(std::string& path);
// The process's working folder in the library's form; false if the system cannot tell.
bool getWorkingFolder(std::string& folder);

// What differs between the platforms in the functions above.
namespace native {
// The library's separators as the system takes them, in place (POSIX: each backslash to '/').
void toSystemSeparators(std::string& path);
// How many leading characters of a native path name its root, which keeps its separator.
std::size_t rootLength(std::string const& path);
} // namespace native

} // namespace platform
} // namespace KELKIT

#endif
