#include <kelcore/menus/kelMenuCommandIdFilter.h>

#include <kelcore/menus/kelMenu.h>

namespace KELKIT {

kelMenuCommandIdFilter::kelMenuCommandIdFilter(SInt32 commandId) : mId(commandId) {}

kelMenuCommandIdFilter::kelMenuCommandIdFilter(kelMenuCommandIdFilter const&) = default;

kelMenuCommandIdFilter& kelMenuCommandIdFilter::operator=(kelMenuCommandIdFilter const&) = default;

kelMenuCommandIdFilter::~kelMenuCommandIdFilter() = default;

bool kelMenuCommandIdFilter::matches(kelNode const* node) const {
    // Checked rather than assumed, so a mixed tree gives false instead of reading a foreign
    // object.
    kelMenu const* menu = dynamic_cast<kelMenu const*>(node);
    return menu != nullptr && menu->getCommandId() == mId;
}

} // namespace KELKIT
