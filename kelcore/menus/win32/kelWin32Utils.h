#ifndef KELCORE_MENUS_WIN32_KELWIN32UTILS_H
#define KELCORE_MENUS_WIN32_KELWIN32UTILS_H

// Windows build only: the native menu binding exposes the system's own handles and records.
#include <kelcore/menus/win32/kelWin32Handles.h>

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/menus/kelIcon.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {
namespace win32 {

// Single operations on native menu items, and menu bitmaps made from icons. Positions are
// item positions, never commands. All operations are static.
//
// Bitmaps: a bitmap that setMenuIcon (or kelMenuTools::setMenuInfo) puts on an item stays
// with the menu and is released by destroyMenu, or when another bitmap of this library
// replaces it on the same item. A plain DestroyMenu leaves such bitmaps allocated, so destroy
// menus that carry them with destroyMenu. The bitmaps that the create operations return
// belong to the caller.
class KELCORE_API kelWin32Utils {
public:
    // Whether the item is a plain text item (the type that GetMenuItemInfoA reports for
    // MIIM_TYPE is MFT_STRING); false when the item cannot be read.
    static bool isStringMenu(HMENU menu, UInt32 position);
    // The caption of a text item; false, leaving text alone, when it cannot be read.
    static bool getMenuText(HMENU menu, UInt32 position, kelString& text);
    // Sets the caption of a text item (null is the empty text); false for other items.
    static bool setMenuText(HMENU menu, UInt32 position, char const* text);

    // A 32-bit bitmap of the icon drawn at width x height: pixels where the icon's mask is
    // white hold background with alpha 0, all others the icon's colour with alpha 255 (see
    // kelIconTransparency). null when a size is 0 or the bitmap or its pixel buffers cannot
    // be made or read.
    static HBITMAP createBitmapFromIcon(HICON icon, UInt32 width, UInt32 height,
                                        RGBQUAD background);
    // The icon that kelIcon names (its large form), at the size of a menu check mark, over
    // the menu colour; null when the file yields no icon.
    static HBITMAP createMenuBitmap(kelIcon const& icon);
    static HBITMAP createMenuBitmap(HICON icon);
    // The size of the icon's mask bitmap (twice the height for a monochrome icon); 0 x 0 when
    // the icon cannot be read.
    static SIZE getIconSize(HICON icon);
    // Puts the bitmap of icon on the item (null when none can be made). The result is that
    // of SetMenuItemInfoA; a bitmap the item did not take is released at once.
    static bool setMenuIcon(HMENU menu, UInt32 position, kelIcon const& icon);
    // The low byte of color is red, the next green, the next blue; rgbReserved is 255.
    static RGBQUAD toRGBQUAD(UInt32 const& color);

    // Releases the bitmaps that this library put on the items of menu and of its sub-menus,
    // then DestroyMenu, whose result it gives.
    static bool destroyMenu(HMENU menu);
};

} // namespace win32
} // namespace KELKIT

#endif
