#include <kelcore/platform/kelFileContent.h>
#include <kelcore/platform/kelFileInfo.h>
#include <kelcore/platform/kelPathChanges.h>
#include <kelcore/platform/kelTreeItems.h>

#include <string>

namespace KELKIT {
namespace platform {

// Windows reaches the items by their paths; a folder link met on the way is followed as the
// system follows it.
struct TreeItems::State {};

TreeItems::TreeItems() : mState(new State()) {}

TreeItems::~TreeItems() = default;

bool TreeItems::open(char const* root) {
    return isEnterableFolder(root);
}

bool TreeItems::getItemAttributeWord(char const* item, UInt32& word) const {
    return platform::getItemAttributeWord(item, word);
}

bool TreeItems::setItemAttributeWord(char const* item, UInt32 word) const {
    return platform::setItemAttributeWord(item, word);
}

FileHandle TreeItems::openForOverwrite(char const* item) const {
    return platform::openForOverwrite(item);
}

FileHandle TreeItems::openForReading(char const* item) const {
    return openFileHandle(item, FileAccess::Read, FileCreation::OpenExisting,
                          kShareRead | kShareWrite);
}

bool TreeItems::removeFile(char const* item) const {
    return platform::removeFile(item);
}

bool TreeItems::removeFolder(char const* item) const {
    return platform::removeFolder(item);
}

} // namespace platform
} // namespace KELKIT
