#include <kelcore/menus/win32/kelWin32Utils.h>

#include <windows.h>

#include <kelcore/memory/kelMemoryBuffer.h>
#include <kelcore/menus/kelIconTransparency.h>

#include <climits>
#include <mutex>
#include <new>
#include <set>
#include <vector>

namespace KELKIT {
namespace win32 {

namespace {

MENUITEMINFOA record(UINT mask) {
    MENUITEMINFOA info;
    ZeroMemory(&info, sizeof(info));
    info.cbSize = sizeof(info);
    info.fMask = mask;
    return info;
}

// The bitmaps this library has put on menu items and not yet released. Only these are
// released with a menu: a bitmap the caller put there stays the caller's.
struct ItemBitmaps {
    std::mutex lock;
    std::set<HBITMAP> handles;
};

ItemBitmaps& itemBitmaps() {
    static ItemBitmaps bitmaps;
    return bitmaps;
}

void remember(HBITMAP bitmap) {
    ItemBitmaps& bitmaps = itemBitmaps();
    std::lock_guard<std::mutex> guard(bitmaps.lock);
    bitmaps.handles.insert(bitmap);
}

void releaseIfOurs(HBITMAP bitmap) {
    ItemBitmaps& bitmaps = itemBitmaps();
    std::lock_guard<std::mutex> guard(bitmaps.lock);
    if (bitmaps.handles.erase(bitmap) != 0) {
        DeleteObject(bitmap);
    }
}

// Puts bitmap on the item. The bitmap it replaces goes if it was ours; a bitmap the item did
// not take goes at once.
bool attachBitmap(HMENU menu, UInt32 position, HBITMAP bitmap) {
    MENUITEMINFOA current = record(MIIM_BITMAP);
    HBITMAP former = GetMenuItemInfoA(menu, position, TRUE, &current) ? current.hbmpItem : nullptr;
    MENUITEMINFOA info = record(MIIM_BITMAP);
    info.hbmpItem = bitmap;
    if (!SetMenuItemInfoA(menu, position, TRUE, &info)) {
        if (bitmap != nullptr) {
            DeleteObject(bitmap);
        }
        return false;
    }
    if (bitmap != nullptr) {
        remember(bitmap);
    }
    if (former != nullptr && former != bitmap) {
        releaseIfOurs(former);
    }
    return true;
}

} // namespace

bool kelWin32Utils::isStringMenu(HMENU menu, UInt32 position) {
    MENUITEMINFOA info = record(MIIM_TYPE);
    if (!GetMenuItemInfoA(menu, position, TRUE, &info)) {
        return false;
    }
    return info.fType == MFT_STRING;
}

bool kelWin32Utils::getMenuText(HMENU menu, UInt32 position, kelString& text) {
    if (!isStringMenu(menu, position)) {
        return false;
    }
    MENUITEMINFOA info = record(MIIM_TYPE);
    if (!GetMenuItemInfoA(menu, position, TRUE, &info)) {
        return false;
    }
    std::vector<char> buffer;
    try {
        buffer.assign(static_cast<std::size_t>(info.cch) + 1, '\0');
    } catch (std::bad_alloc const&) {
        return false;
    }
    info.dwTypeData = buffer.data();
    info.cch += 1;
    if (!GetMenuItemInfoA(menu, position, TRUE, &info)) {
        return false;
    }
    buffer.back() = '\0'; // whatever the call wrote, the text ends inside the buffer
    text = buffer.data();
    return true;
}

bool kelWin32Utils::setMenuText(HMENU menu, UInt32 position, char const* text) {
    if (!isStringMenu(menu, position)) {
        return false;
    }
    MENUITEMINFOA info = record(MIIM_STRING);
    info.dwTypeData = const_cast<char*>(text != nullptr ? text : "");
    return SetMenuItemInfoA(menu, position, TRUE, &info) != FALSE;
}

HBITMAP kelWin32Utils::createBitmapFromIcon(HICON icon, UInt32 width, UInt32 height,
                                            RGBQUAD background) {
    // Both sizes must fit an int for the system and the pixel count a 32-bit buffer size.
    if (width == 0 || height == 0 || width > 0x7FFFFFFFu || height > 0x7FFFFFFFu ||
        static_cast<UInt64>(width) * height > 0x3FFFFFFFu) {
        return nullptr;
    }
    UInt32 const size = width * height * 4;
    HWND desktop = GetDesktopWindow();
    HDC screen = GetDC(desktop);
    HDC memory = CreateCompatibleDC(screen);
    HBITMAP bitmap =
        CreateBitmap(static_cast<int>(width), static_cast<int>(height), 1, 32, nullptr);
    bool made = false;
    if (memory != nullptr && bitmap != nullptr) {
        HGDIOBJ old = SelectObject(memory, bitmap);
        kelMemoryBuffer mask;
        kelMemoryBuffer image;
        if (mask.allocate(size) && image.allocate(size)) {
            DrawIconEx(memory, 0, 0, icon, static_cast<int>(width), static_cast<int>(height), 0,
                       nullptr, DI_MASK);
            LONG const maskRead = GetBitmapBits(bitmap, static_cast<LONG>(size), mask.getBuffer());
            DrawIconEx(memory, 0, 0, icon, static_cast<int>(width), static_cast<int>(height), 0,
                       nullptr, DI_IMAGE);
            LONG const imageRead =
                GetBitmapBits(bitmap, static_cast<LONG>(size), image.getBuffer());
            // A short read would leave bytes of no pixel in the result: treat it as failure.
            made = maskRead == static_cast<LONG>(size) && imageRead == static_cast<LONG>(size) &&
                   kelIconTransparency::apply(mask, image, background.rgbBlue, background.rgbGreen,
                                              background.rgbRed) &&
                   SetBitmapBits(bitmap, size, image.getBuffer()) == static_cast<LONG>(size);
        }
        SelectObject(memory, old);
    }
    if (memory != nullptr) {
        DeleteDC(memory);
    }
    if (screen != nullptr) {
        ReleaseDC(desktop, screen);
    }
    if (!made && bitmap != nullptr) {
        DeleteObject(bitmap);
        bitmap = nullptr;
    }
    return bitmap;
}

HBITMAP kelWin32Utils::createMenuBitmap(kelIcon const& icon) {
    HICON large = nullptr;
    HICON small = nullptr;
    UINT const extracted =
        ExtractIconExA(icon.getFileContainer(), icon.getIndex(), &large, &small, 1);
    if (extracted == 0 || extracted == UINT_MAX) {
        // A failed call may leave anything in the outputs (Wine does): no handle to release.
        return nullptr;
    }
    HBITMAP bitmap = large != nullptr ? createMenuBitmap(large) : nullptr;
    if (large != nullptr) {
        DestroyIcon(large);
    }
    if (small != nullptr) {
        DestroyIcon(small);
    }
    return bitmap;
}

HBITMAP kelWin32Utils::createMenuBitmap(HICON icon) {
    int const width = GetSystemMetrics(SM_CXMENUCHECK);
    int const height = GetSystemMetrics(SM_CYMENUCHECK);
    if (width <= 0 || height <= 0) {
        return nullptr;
    }
    return createBitmapFromIcon(icon, static_cast<UInt32>(width), static_cast<UInt32>(height),
                                toRGBQUAD(static_cast<UInt32>(GetSysColor(COLOR_MENU))));
}

SIZE kelWin32Utils::getIconSize(HICON icon) {
    SIZE size = {0, 0};
    ICONINFO info;
    ZeroMemory(&info, sizeof(info));
    if (!GetIconInfo(icon, &info)) {
        return size;
    }
    BITMAP mask;
    ZeroMemory(&mask, sizeof(mask));
    if (info.hbmMask != nullptr && GetObjectA(info.hbmMask, sizeof(mask), &mask) != 0) {
        size.cx = mask.bmWidth;
        size.cy = mask.bmHeight;
    }
    if (info.hbmMask != nullptr) {
        DeleteObject(info.hbmMask);
    }
    if (info.hbmColor != nullptr) {
        DeleteObject(info.hbmColor);
    }
    return size;
}

bool kelWin32Utils::setMenuIcon(HMENU menu, UInt32 position, kelIcon const& icon) {
    return attachBitmap(menu, position, createMenuBitmap(icon));
}

RGBQUAD kelWin32Utils::toRGBQUAD(UInt32 const& color) {
    RGBQUAD quad;
    quad.rgbRed = static_cast<BYTE>(color & 0xFFu);
    quad.rgbGreen = static_cast<BYTE>((color >> 8) & 0xFFu);
    quad.rgbBlue = static_cast<BYTE>((color >> 16) & 0xFFu);
    quad.rgbReserved = 255;
    return quad;
}

bool kelWin32Utils::destroyMenu(HMENU menu) {
    if (menu == nullptr || !IsMenu(menu)) {
        return false;
    }
    // Sub-menus go with their menu in DestroyMenu; only the bitmaps need a walk first.
    std::vector<HMENU> pending(1, menu);
    while (!pending.empty()) {
        HMENU current = pending.back();
        pending.pop_back();
        int const count = GetMenuItemCount(current);
        for (int i = 0; i < count; ++i) {
            MENUITEMINFOA info = record(MIIM_BITMAP | MIIM_SUBMENU);
            if (!GetMenuItemInfoA(current, static_cast<UINT>(i), TRUE, &info)) {
                continue;
            }
            if (info.hbmpItem != nullptr) {
                releaseIfOurs(info.hbmpItem);
            }
            if (info.hSubMenu != nullptr) {
                pending.push_back(info.hSubMenu);
            }
        }
    }
    return DestroyMenu(menu) != FALSE;
}

} // namespace win32
} // namespace KELKIT
