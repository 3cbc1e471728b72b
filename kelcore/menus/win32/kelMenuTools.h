#ifndef KELCORE_MENUS_WIN32_KELMENUTOOLS_H
#define KELCORE_MENUS_WIN32_KELMENUTOOLS_H

// Windows build only: the native menu binding exposes the system's own handles.
#include <kelcore/menus/win32/kelWin32Handles.h>

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/menus/kelMenu.h>

namespace KELKIT {
namespace win32 {

// Turns a kelMenu tree into native menu items. The identifiers follow kelMenuNumbering (the
// same walk): commandId is the next free command on entry and on return, every entry that
// reaches the menu takes one command and one sequential identifier, depth first, and entries
// below item that are not visible are left out with their subtrees.
//
// The model stays the owner of the tree, and the menu handle stays with the caller. Destroy
// a menu built here with kelWin32Utils::destroyMenu: it releases the item bitmaps that this
// library made, which a plain DestroyMenu would leave allocated. The platform's answers are
// not reported; a sub-menu that cannot be attached is destroyed at once.
class KELCORE_API kelMenuTools {
public:
    // Inserts item at position of menu: a text or separator item, or with children a
    // sub-menu item that holds its visible children, each with state and icon set. The state
    // and icon of item itself are set only when it has children; for a plain item call
    // setMenuInfo. The four-argument form numbers sequentially from 0.
    static void insertMenu(HMENU menu, UInt32 position, kelMenu& item, UInt32& commandId);
    static void insertMenu(HMENU menu, UInt32 position, kelMenu& item, UInt32& commandId,
                           SInt32& sequentialId);
    // Sets the item's state (MFS_DISABLED when not enabled, plus MFS_CHECKED when checked)
    // and, when the icon names a file, the bitmap made from it (see kelWin32Utils).
    static void setMenuInfo(HMENU menu, UInt32 position, kelMenu& item);
};

} // namespace win32
} // namespace KELKIT

#endif
