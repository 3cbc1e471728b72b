#include <kelcore/menus/kelMenuSeparator.h>

namespace KELKIT {

kelMenuSeparator::kelMenuSeparator(kelMenu* parent) : kelMenu(parent, "") {
    setSeparator(true);
    setMaxChildren(0);
}

kelMenuSeparator::kelMenuSeparator(kelMenuSeparator const& other) = default;

kelMenuSeparator& kelMenuSeparator::operator=(kelMenuSeparator const& other) {
    kelMenu::operator=(other);
    return *this;
}

kelMenuSeparator::~kelMenuSeparator() = default;

} // namespace KELKIT
