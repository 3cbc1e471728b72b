#include <kelcore/menus/kelMenuUniqueIdFilter.h>

#include <kelcore/menus/kelMenu.h>

namespace KELKIT {

kelMenuUniqueIdFilter::kelMenuUniqueIdFilter(SInt32 uniqueId) : mId(uniqueId) {}

kelMenuUniqueIdFilter::kelMenuUniqueIdFilter(kelMenuUniqueIdFilter const&) = default;

kelMenuUniqueIdFilter& kelMenuUniqueIdFilter::operator=(kelMenuUniqueIdFilter const&) = default;

kelMenuUniqueIdFilter::~kelMenuUniqueIdFilter() = default;

bool kelMenuUniqueIdFilter::matches(kelNode const* node) const {
    // Checked rather than assumed, so a mixed tree gives false instead of reading a foreign
    // object.
    kelMenu const* menu = dynamic_cast<kelMenu const*>(node);
    return menu != nullptr && menu->getUniqueId() == mId;
}

} // namespace KELKIT
