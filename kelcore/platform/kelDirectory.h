#ifndef KELCORE_PLATFORM_KELDIRECTORY_H
#define KELCORE_PLATFORM_KELDIRECTORY_H

// Internal: reading the entries of one folder, "." and ".." included, in the system's order.

#include <kelcore/frame/kelTypes.h>

#include <memory>

namespace KELKIT {
namespace platform {

struct DirectoryEntry {
    char const* name;  // valid until the next call on the reader
    UInt32 attributes; // the attribute word of kelFileInfo.h
};

// One open enumeration. A link is never opened as a folder, neither by open nor by openChild.
class DirectoryReader {
public:
    DirectoryReader();
    ~DirectoryReader();
    DirectoryReader(DirectoryReader const&) = delete;
    DirectoryReader& operator=(DirectoryReader const&) = delete;

    // Opens the folder at a library path; false if it is none (or a link to one).
    bool open(char const* path);
    // Opens the folder `name` found by `parent`; `path` is its full library path. POSIX opens
    // it relative to the parent's descriptor, so the path is not looked up again.
    bool openChild(DirectoryReader const& parent, char const* name, char const* path);
    // The next entry, false at the end. Without wantAttributes, only kDirectory and
    // kReparsePoint of the word are sure (POSIX then asks for no file status where the entry's
    // type is known). POSIX leaves out names holding a backslash: no library path can name them.
    bool next(DirectoryEntry& entry, bool wantAttributes);
    void close();

private:
    struct State;
    std::unique_ptr<State> mState;
};

// A folder that a recursive walk may enter: a real folder, not "." or "..", not a link.
bool isEnterableEntry(DirectoryEntry const& entry);

} // namespace platform
} // namespace KELKIT

#endif
