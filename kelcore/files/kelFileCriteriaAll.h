#ifndef KELCORE_FILES_KELFILECRITERIAALL_H
#define KELCORE_FILES_KELFILECRITERIAALL_H

#include <kelcore/files/kelFileCriteria.h>

namespace KELKIT {

// Accepts every entry, "." and ".." included.
class KELCORE_API kelFileCriteriaAll : public kelFileCriteria {
public:
    kelFileCriteriaAll();
    kelFileCriteriaAll(kelFileCriteriaAll const& other);
    kelFileCriteriaAll& operator=(kelFileCriteriaAll const& other);
    ~kelFileCriteriaAll() override;

    bool accept(char const* path, kelFileAttributes attributes) override;
};

} // namespace KELKIT

#endif
