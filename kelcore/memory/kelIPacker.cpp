#include <kelcore/memory/kelIPacker.h>

namespace KELKIT {

kelIPacker::kelIPacker(kelIPacker const&) {}

kelIPacker& kelIPacker::operator=(kelIPacker const&) {
    return *this;
}

} // namespace KELKIT
