#ifndef KELCORE_FILES_KELFILECRITERIA_H
#define KELCORE_FILES_KELFILECRITERIA_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelFileAttributes.h>

namespace KELKIT {

// The filter that kelFiles' listings ask about each entry they meet: `path` is the entry's
// full path, `attributes` its kelFileAttributes. A refused folder is neither listed nor entered.
class KELCORE_API kelFileCriteria {
public:
    kelFileCriteria();
    kelFileCriteria(kelFileCriteria const& other);
    kelFileCriteria& operator=(kelFileCriteria const& other);
    virtual ~kelFileCriteria();

    virtual bool accept(char const* path, kelFileAttributes attributes) = 0;
};

} // namespace KELKIT

#endif
