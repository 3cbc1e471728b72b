#include <kelcore/files/kelFileCriteriaAll.h>

namespace KELKIT {

kelFileCriteriaAll::kelFileCriteriaAll() {}

kelFileCriteriaAll::kelFileCriteriaAll(kelFileCriteriaAll const& other) : kelFileCriteria(other) {}

kelFileCriteriaAll& kelFileCriteriaAll::operator=(kelFileCriteriaAll const& other) {
    kelFileCriteria::operator=(other);
    return *this;
}

kelFileCriteriaAll::~kelFileCriteriaAll() {}

bool kelFileCriteriaAll::accept(char const* /*path*/, kelFileAttributes /*attributes*/) {
    return true;
}

} // namespace KELKIT
