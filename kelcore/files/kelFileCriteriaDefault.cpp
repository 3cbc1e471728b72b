#include <kelcore/files/kelFileCriteriaDefault.h>

namespace KELKIT {

kelFileCriteriaDefault::kelFileCriteriaDefault() {}

kelFileCriteriaDefault::kelFileCriteriaDefault(kelFileCriteriaDefault const& other)
    : kelFileCriteria(other) {}

kelFileCriteriaDefault& kelFileCriteriaDefault::operator=(kelFileCriteriaDefault const& other) {
    kelFileCriteria::operator=(other);
    return *this;
}

kelFileCriteriaDefault::~kelFileCriteriaDefault() {}

bool kelFileCriteriaDefault::accept(char const* /*path*/, kelFileAttributes attributes) {
    if (attributes.isFlagsEnabled(kelFileAttributes::Folder)) {
        return !attributes.isFlagsEnabled(kelFileAttributes::CurrentFolder) &&
               !attributes.isFlagsEnabled(kelFileAttributes::ParentFolder);
    }
    return attributes.isFlagsEnabled(kelFileAttributes::File);
}

} // namespace KELKIT
