#ifndef KELCORE_FILES_KELFOLDER_H
#define KELCORE_FILES_KELFOLDER_H

#include <kelcore/containers/kelLists.h>
#include <kelcore/files/kelFileItem.h>

namespace KELKIT {

// A folder at a path, with a flat listing of its names.
class KELCORE_API kelFolder : public kelFileItem {
public:
    kelFolder();
    kelFolder(char const* path);
    kelFolder(kelFolder const& other);
    kelFolder& operator=(kelFolder const& other);
    ~kelFolder() override;

    // As kelFiles::folderExists: a folder this process can enter. The working folder is never
    // changed to find out.
    bool exists() const override;
    // Replaces files with the bare names of the folder's entries in the system's order, "." and
    // ".." included. False, with files untouched, when the folder does not exist; false with
    // files empty when it cannot be listed or its path is longer than 2,043 characters (the
    // listing pattern "<path>\*.*" must fit in 2,048).
    virtual bool getFiles(kelListString& files) const;
};

} // namespace KELKIT

#endif
