#ifndef KELCORE_FILES_KELFILECRITERIADEFAULT_H
#define KELCORE_FILES_KELFILECRITERIADEFAULT_H

#include <kelcore/files/kelFileCriteria.h>

namespace KELKIT {

// Drops only "." and "..": a folder passes unless it is the current or the parent folder,
// anything else passes when it has the File flag. Hidden, system and read-only items pass.
class KELCORE_API kelFileCriteriaDefault : public kelFileCriteria {
public:
    kelFileCriteriaDefault();
    kelFileCriteriaDefault(kelFileCriteriaDefault const& other);
    kelFileCriteriaDefault& operator=(kelFileCriteriaDefault const& other);
    ~kelFileCriteriaDefault() override;

    // Ignores the path.
    bool accept(char const* path, kelFileAttributes attributes) override;
};

} // namespace KELKIT

#endif
