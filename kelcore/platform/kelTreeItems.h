#ifndef KELCORE_PLATFORM_KELTREEITEMS_H
#define KELCORE_PLATFORM_KELTREEITEMS_H

// Internal: the items of one tree, reached from its root without following a link below it.
// A folder operation lists a tree first and acts on the items afterwards; a folder inside that
// is swapped for a link meanwhile must not lead the operation outside the tree. POSIX opens each
// folder on the way relative to the one above with O_NOFOLLOW; Windows reaches items by path.

#include <kelcore/frame/kelTypes.h>
#include <kelcore/platform/kelFileHandle.h>

#include <memory>

namespace KELKIT {
namespace platform {

class TreeItems {
public:
    TreeItems();
    ~TreeItems();
    TreeItems(TreeItems const&) = delete;
    TreeItems& operator=(TreeItems const&) = delete;

    // Opens the tree at the folder root (not a link). False when it is none.
    bool open(char const* root);

    // Each operation takes an item by its library path, which starts with the root's text; an
    // item outside the tree, or one whose way passes a link, fails. The item itself is never
    // followed when it is a link. The operations are those of kelFileInfo.h, kelFileContent.h
    // and kelPathChanges.h of the same names.
    bool getItemAttributeWord(char const* item, UInt32& word) const;
    bool setItemAttributeWord(char const* item, UInt32 word) const;
    FileHandle openForOverwrite(char const* item) const;
    // For reading, following nothing: a link fails.
    FileHandle openForReading(char const* item) const;
    bool removeFile(char const* item) const;
    // The root itself is removed by its path.
    bool removeFolder(char const* item) const;

private:
    struct State;
    std::unique_ptr<State> mState;
};

} // namespace platform
} // namespace KELKIT

#endif
