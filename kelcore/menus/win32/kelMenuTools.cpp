#include <kelcore/menus/win32/kelMenuTools.h>

#include <windows.h>

#include <kelcore/menus/kelMenuNumbering.h>
#include <kelcore/menus/win32/kelWin32Utils.h>

#include <vector>

namespace KELKIT {
namespace win32 {

namespace {

void insertLeafMenu(HMENU menu, UInt32 position, kelMenu& item) {
    UINT_PTR const command = static_cast<UINT>(item.getCommandId());
    if (item.isSeparator()) {
        InsertMenuA(menu, position, MF_SEPARATOR | MF_BYPOSITION, command, nullptr);
    } else {
        InsertMenuA(menu, position, MF_STRING | MF_BYPOSITION, command, item.getText());
    }
}

void insertParentMenu(HMENU menu, UInt32 position, kelMenu& item, HMENU subMenu) {
    MENUITEMINFOA info;
    ZeroMemory(&info, sizeof(info));
    info.cbSize = sizeof(info);
    info.fMask = MIIM_ID | MIIM_SUBMENU | MIIM_STRING;
    info.wID = static_cast<UINT>(item.getCommandId());
    info.hSubMenu = subMenu;
    info.dwTypeData = const_cast<char*>(item.getText());
    if (!InsertMenuItemA(menu, position, TRUE, &info)) {
        // Nobody else would ever release a sub-menu that no item holds.
        kelWin32Utils::destroyMenu(subMenu);
        return;
    }
    kelMenuTools::setMenuInfo(menu, position, item);
}

// Builds the native items while the shared walk numbers the entries. A parent's sub-menu is
// filled before its item is inserted, as its children are numbered after it.
class NativeBuilder : public kelMenuNumbering::Visitor {
public:
    NativeBuilder(HMENU menu, UInt32 position) : mMenu(menu), mPosition(position) {}
    // Sub-menus still open here were never attached: only an exception leaves any.
    ~NativeBuilder() override {
        for (HMENU subMenu : mSubMenus) {
            kelWin32Utils::destroyMenu(subMenu);
        }
    }

    void leaf(kelMenu& item, UInt32 depth) override {
        Place const at = place(depth);
        insertLeafMenu(at.menu, at.position, item);
        if (depth > 0) {
            kelMenuTools::setMenuInfo(at.menu, at.position, item);
        }
    }

    void enterParent(kelMenu& item, UInt32 depth) override {
        (void)item;
        mParents.push_back(place(depth));
        mSubMenus.push_back(CreatePopupMenu());
    }

    // insertParentMenu sets the state and icon, so a nested parent needs no second pass.
    void leaveParent(kelMenu& item, UInt32) override {
        HMENU const subMenu = mSubMenus.back();
        Place const at = mParents.back();
        mSubMenus.pop_back();
        mParents.pop_back();
        insertParentMenu(at.menu, at.position, item, subMenu);
    }

private:
    struct Place {
        HMENU menu;
        UInt32 position;
    };

    // The entry given goes where the caller said; the others at the end of their sub-menu.
    Place place(UInt32 depth) const {
        if (depth == 0) {
            return Place{mMenu, mPosition};
        }
        HMENU const subMenu = mSubMenus.back();
        int const count = GetMenuItemCount(subMenu);
        return Place{subMenu, count > 0 ? static_cast<UInt32>(count) : 0u};
    }

    HMENU mMenu;
    UInt32 mPosition;
    std::vector<Place> mParents;
    std::vector<HMENU> mSubMenus;
};

} // namespace

void kelMenuTools::insertMenu(HMENU menu, UInt32 position, kelMenu& item, UInt32& commandId) {
    SInt32 sequentialId = 0;
    insertMenu(menu, position, item, commandId, sequentialId);
}

void kelMenuTools::insertMenu(HMENU menu, UInt32 position, kelMenu& item, UInt32& commandId,
                              SInt32& sequentialId) {
    NativeBuilder builder(menu, position);
    kelMenuNumbering::walk(item, commandId, sequentialId, builder);
}

void kelMenuTools::setMenuInfo(HMENU menu, UInt32 position, kelMenu& item) {
    MENUITEMINFOA info;
    ZeroMemory(&info, sizeof(info));
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STATE;
    info.fState = (item.isEnabled() ? 0u : static_cast<UINT>(MFS_DISABLED)) |
                  (item.isChecked() ? static_cast<UINT>(MFS_CHECKED) : 0u);
    SetMenuItemInfoA(menu, position, TRUE, &info);
    if (item.getIcon().getFileContainer()[0] != '\0') {
        kelWin32Utils::setMenuIcon(menu, position, item.getIcon());
    }
}

} // namespace win32
} // namespace KELKIT
