#include <kelcore/files/kelFiles.h>
#include <kelcore/files/kelFolder.h>
#include <kelcore/platform/kelDirectory.h>

#include <cstring>

namespace KELKIT {

kelFolder::kelFolder() {}

kelFolder::kelFolder(char const* path) : kelFileItem(path) {}

kelFolder::kelFolder(kelFolder const& other) : kelFileItem(other) {}

kelFolder& kelFolder::operator=(kelFolder const& other) {
    kelFileItem::operator=(other);
    return *this;
}

kelFolder::~kelFolder() {}

bool kelFolder::exists() const {
    return kelFiles::folderExists(getPath());
}

bool kelFolder::getFiles(kelListString& files) const {
    if (!exists()) {
        return false;
    }
    files.clear();
    // The pattern "<path>\*.*" and its terminator fit in 2,048 characters.
    if (std::strlen(getPath()) + 5 > 2048) {
        return false;
    }
    platform::DirectoryReader reader;
    if (!reader.open(getPath())) {
        return false;
    }
    platform::DirectoryEntry entry;
    while (reader.next(entry, false)) {
        files.add(kelString(entry.name));
    }
    return true;
}

} // namespace KELKIT
