#include <kelcore/menus/kelMenuSequentialIdFilter.h>

#include <kelcore/menus/kelMenu.h>

namespace KELKIT {

kelMenuSequentialIdFilter::kelMenuSequentialIdFilter(SInt32 sequentialId) : mId(sequentialId) {}

kelMenuSequentialIdFilter::kelMenuSequentialIdFilter(kelMenuSequentialIdFilter const&) = default;

kelMenuSequentialIdFilter&
kelMenuSequentialIdFilter::operator=(kelMenuSequentialIdFilter const&) = default;

kelMenuSequentialIdFilter::~kelMenuSequentialIdFilter() = default;

bool kelMenuSequentialIdFilter::matches(kelNode const* node) const {
    // Checked rather than assumed, so a mixed tree gives false instead of reading a foreign
    // object.
    kelMenu const* menu = dynamic_cast<kelMenu const*>(node);
    return menu != nullptr && menu->getSequentialId() == mId;
}

} // namespace KELKIT
