#ifndef KELCORE_FILES_KELFILEITEM_H
#define KELCORE_FILES_KELFILEITEM_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// The item at a path. The path is kept as given: not normalised, not checked. Paths use the
// backslash as separator on every platform.
class KELCORE_API kelFileItem {
public:
    kelFileItem();
    kelFileItem(char const* path);
    kelFileItem(kelFileItem const& other);
    kelFileItem& operator=(kelFileItem const& other);
    virtual ~kelFileItem();

    virtual bool exists() const = 0;

    void setPath(char const* path);
    // Valid while the object and its path stay unchanged.
    char const* getPath() const;

private:
    kelString mPath;
};

} // namespace KELKIT

#endif
