#ifndef KELCORE_MENUS_KELMENUSEPARATOR_H
#define KELCORE_MENUS_KELMENUSEPARATOR_H

#include <kelcore/menus/kelMenu.h>

namespace KELKIT {

// A separator line: an entry with an empty caption, the separator flag set and room for no
// children, so that it never gets any.
class KELCORE_API kelMenuSeparator : public kelMenu {
public:
    explicit kelMenuSeparator(kelMenu* parent);
    kelMenuSeparator(kelMenuSeparator const& other);
    kelMenuSeparator& operator=(kelMenuSeparator const& other);
    ~kelMenuSeparator() override;
};

} // namespace KELKIT

#endif
