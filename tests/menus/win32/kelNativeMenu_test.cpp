#include <kelcore/menus/kelIcon.h>
#include <kelcore/menus/kelMenu.h>
#include <kelcore/menus/win32/kelMenuTools.h>
#include <kelcore/menus/win32/kelWin32Utils.h>

#include "menus/kelMenuTrees.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

// Windows only: real menus built by the system, read back with its own menu queries.
using namespace KELKIT;
using namespace KELKIT::win32;

namespace {

// The test icon's colour at pixel p, with alpha 0 so that the mask alone decides.
UINT32 colourAt(int p) {
    return static_cast<UINT32>(0x102030 + p * 0x010305) & 0xFFFFFFu;
}

MENUITEMINFOA readItem(HMENU menu, UINT position, char* text, UINT room) {
    MENUITEMINFOA info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_ID | MIIM_STATE | MIIM_SUBMENU | MIIM_FTYPE | MIIM_STRING | MIIM_BITMAP;
    info.dwTypeData = text;
    info.cch = room;
    EXPECT_TRUE(GetMenuItemInfoA(menu, position, TRUE, &info));
    return info;
}

// The native item at position against its model entry, and its sub-menu against the
// entry's visible children.
void compare(HMENU menu, UINT position, kelMenu const& item, bool stateSet) {
    char text[256] = {};
    MENUITEMINFOA const info = readItem(menu, position, text, sizeof(text));
    EXPECT_EQ(static_cast<SInt32>(info.wID), item.getCommandId());
    bool const parent = item.getChildrenCount() > 0;
    EXPECT_EQ((info.fType & MFT_SEPARATOR) != 0, item.isSeparator() && !parent);
    if (!item.isSeparator() || parent) {
        EXPECT_STREQ(text, item.getText());
    }
    UINT const state = (item.isEnabled() ? 0 : 3u) | (item.isChecked() ? 8u : 0);
    EXPECT_EQ(info.fState & 0xBu, stateSet ? state : 0u) << item.getText();
    ASSERT_EQ(info.hSubMenu != nullptr, parent);
    if (!parent) {
        return;
    }
    UINT shown = 0;
    for (UInt32 i = 0; i < item.getChildrenCount(); ++i) {
        kelMenu const* child = static_cast<kelMenu const*>(item.getChildren(i));
        if (child->isVisible()) {
            compare(info.hSubMenu, shown++, *child, true);
        }
    }
    EXPECT_EQ(GetMenuItemCount(info.hSubMenu), static_cast<int>(shown));
}

// A 16 x 16 icon as the bytes of a .ico file: colour pixels from the position, the given
// pixels transparent. The image starts at byte 22.
std::vector<BYTE> iconFile(std::vector<bool> const& clear) {
    std::vector<BYTE> bytes = {0, 0, 1, 0, 1, 0, 16, 16, 0, 0, 1, 0, 32, 0};
    DWORD const header[] = {40 + 1024 + 64, 22, 40, 16, 32};
    bytes.insert(bytes.end(), (BYTE const*)header, (BYTE const*)(header + 5));
    bytes.insert(bytes.end(), {1, 0, 32, 0});
    bytes.resize(22 + 40 + 1024 + 64, 0);
    for (int p = 0; p < 256; ++p) { // rows bottom-up
        UINT32 const c = colourAt(p);
        std::memcpy(&bytes[62 + ((15 - p / 16) * 16 + p % 16) * 4], &c, 4);
        if (clear[p]) {
            bytes[62 + 1024 + (15 - p / 16) * 4 + (p % 16) / 8] |= 0x80 >> (p % 8);
        }
    }
    return bytes;
}

} // namespace

TEST(kelNativeMenu, GeneratedTreesReadBackAsTheModel) {
    std::mt19937 rng(21);
    for (int round = 0; round < 30; ++round) {
        kelMenu top(nullptr, "top");
        menutest::grow(top, 1 + static_cast<int>(rng() % 50), rng);
        HMENU bar = CreateMenu();
        UInt32 command = 100 + rng() % 1000;
        menutest::Oracle oracle{command, 0, {}, {}};
        oracle.run(top);
        kelMenuTools::insertMenu(bar, 0, top, command);
        EXPECT_EQ(command, static_cast<UInt32>(oracle.command));
        for (auto const& given : oracle.given) {
            EXPECT_EQ(menutest::ids(given.first), given.second);
        }
        ASSERT_EQ(GetMenuItemCount(bar), 1);
        compare(bar, 0, top, true);
        EXPECT_TRUE(kelWin32Utils::destroyMenu(bar));
    }
    // A plain entry at the top gets no state until setMenuInfo; text operations by position.
    HMENU menu = CreatePopupMenu();
    kelMenu entry(nullptr, "Open");
    entry.setEnabled(false);
    entry.setChecked(true);
    kelMenuSeparator line(nullptr);
    UInt32 command = 7;
    kelMenuTools::insertMenu(menu, 0, entry, command);
    kelMenuTools::insertMenu(menu, 1, line, command);
    compare(menu, 0, entry, false);
    kelMenuTools::setMenuInfo(menu, 0, entry);
    compare(menu, 0, entry, true);
    EXPECT_EQ(line.getCommandId(), 8);
    kelString text("unchanged");
    EXPECT_FALSE(kelWin32Utils::setMenuText(menu, 1, "x") || kelWin32Utils::isStringMenu(menu, 1));
    EXPECT_FALSE(kelWin32Utils::getMenuText(menu, 2, text));
    EXPECT_TRUE(kelWin32Utils::setMenuText(menu, 0, "Save as") &&
                kelWin32Utils::getMenuText(menu, 0, text));
    EXPECT_STREQ(text.c_str(), "Save as");
    RGBQUAD const quad = kelWin32Utils::toRGBQUAD(RGB(1, 2, 3));
    EXPECT_TRUE(quad.rgbRed == 1 && quad.rgbGreen == 2 && quad.rgbBlue == 3 &&
                quad.rgbReserved == 255);
    EXPECT_TRUE(kelWin32Utils::destroyMenu(menu));
    EXPECT_FALSE(kelWin32Utils::destroyMenu(menu));
}

TEST(kelNativeMenu, IconBitmapsKeepTheTransparencyRuleAndGoWithTheMenu) {
    std::mt19937 rng(4);
    std::vector<bool> clear(256);
    for (int p = 0; p < 256; ++p) {
        clear[p] = rng() % 3 == 0;
    }
    std::vector<BYTE> bytes = iconFile(clear);
    HICON icon =
        CreateIconFromResourceEx(&bytes[22], bytes.size() - 22, TRUE, 0x00030000, 16, 16, 0);
    ASSERT_NE(icon, nullptr);
    SIZE const size = kelWin32Utils::getIconSize(icon);
    EXPECT_TRUE(size.cx == 16 && size.cy == 16);
    RGBQUAD const background = {40, 50, 60, 0};
    HBITMAP bitmap = kelWin32Utils::createBitmapFromIcon(icon, 16, 16, background);
    ASSERT_NE(bitmap, nullptr);
    BITMAPINFO format = {};
    format.bmiHeader = {sizeof(BITMAPINFOHEADER), 16, -16, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    std::vector<UINT32> pixels(256); // blue, green, red, alpha from the low byte up
    HDC screen = GetDC(nullptr);
    EXPECT_EQ(GetDIBits(screen, bitmap, 0, 16, pixels.data(), &format, DIB_RGB_COLORS), 16);
    ReleaseDC(nullptr, screen);
    for (int p = 0; p < 256; ++p) {
        EXPECT_EQ(pixels[p], clear[p] ? 0x003C3228u : colourAt(p) | 0xFF000000u) << "pixel " << p;
    }
    DeleteObject(bitmap);
    DestroyIcon(icon);
    EXPECT_EQ(kelWin32Utils::createBitmapFromIcon(icon, 0, 16, background), nullptr);

    // From a file: made at the check-mark size; a missing file gives none. Bitmaps on items
    // go when replaced and with the menu.
    char folder[MAX_PATH] = {};
    GetTempPathA(MAX_PATH, folder);
    std::string const path =
        std::string(folder) + "kelcore-menus-" + std::to_string(GetCurrentProcessId()) + ".ico";
    FILE* file = std::fopen(path.c_str(), "wb");
    ASSERT_TRUE(file != nullptr &&
                std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size());
    std::fclose(file);
    EXPECT_EQ(kelWin32Utils::createMenuBitmap(kelIcon((path + ".none").c_str())), nullptr);
    HMENU menu = CreatePopupMenu();
    kelMenu root(nullptr, "root");
    (new kelMenu(&root, "child"))->setIcon(kelIcon(path.c_str()));
    root.setIcon(kelIcon(path.c_str()));
    UInt32 command = 1;
    kelMenuTools::insertMenu(menu, 0, root, command);
    char text[64];
    HMENU const sub = readItem(menu, 0, text, sizeof(text)).hSubMenu;
    HBITMAP const first = readItem(sub, 0, text, sizeof(text)).hbmpItem;
    HBITMAP const onRoot = readItem(menu, 0, text, sizeof(text)).hbmpItem;
    EXPECT_TRUE(kelWin32Utils::setMenuIcon(sub, 0, kelIcon(path.c_str())));
    std::remove(path.c_str());
    HBITMAP const second = readItem(sub, 0, text, sizeof(text)).hbmpItem;
    BITMAP shape = {};
    ASSERT_TRUE(first != nullptr && onRoot != nullptr && GetObjectA(second, sizeof(shape), &shape));
    EXPECT_EQ(shape.bmWidth, GetSystemMetrics(SM_CXMENUCHECK));
    EXPECT_EQ(GetObjectType(first), 0u);
    EXPECT_EQ(GetObjectType(second), static_cast<DWORD>(OBJ_BITMAP));
    EXPECT_TRUE(kelWin32Utils::destroyMenu(menu));
    EXPECT_EQ(GetObjectType(second), 0u);
    EXPECT_EQ(GetObjectType(onRoot), 0u);
}
