#include <kelcore/files/kelFileCriteria.h>

namespace KELKIT {

kelFileCriteria::kelFileCriteria() {}

kelFileCriteria::kelFileCriteria(kelFileCriteria const& /*other*/) {}

kelFileCriteria& kelFileCriteria::operator=(kelFileCriteria const& /*other*/) {
    return *this;
}

kelFileCriteria::~kelFileCriteria() {}

} // namespace KELKIT
