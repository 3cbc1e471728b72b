#include <kelcore/memory/kelIPacker.h>

namespace KELKIT {

kelIPacker::kelIPacker() = default;

kelIPacker::kelIPacker(kelIPacker const&) {}

kelIPacker& kelIPacker::operator=(kelIPacker const&) {
    return *this;
}

kelIPacker::~kelIPacker() = default;

} // namespace KELKIT
