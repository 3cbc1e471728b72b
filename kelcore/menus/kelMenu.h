#ifndef KELCORE_MENUS_KELMENU_H
#define KELCORE_MENUS_KELMENU_H

#include <kelcore/containers/kelTextNode.h>
#include <kelcore/menus/kelIcon.h>

namespace KELKIT {

// One entry of a menu described as data; its children are the entries of its sub-menu and
// its text is the caption. Enabled and visible by default, not checked, no separator, the
// null icon, and the three identifiers at -1 (not set). uniqueId is the caller's; the native
// form gives out commandId and sequentialId (see kelMenuNumbering).
//
// Copies share the tree as kelNode describes and copy every field of the entry.
class KELCORE_API kelMenu : public kelTextNode {
public:
    kelMenu();
    // Joins parent as kelNode(parent) does; a null parent leaves the entry alone.
    kelMenu(kelMenu* parent, char const* text);
    kelMenu(kelMenu const& other);
    kelMenu& operator=(kelMenu const& other);
    ~kelMenu() override;

    // menu [name="<caption>" uid=<uniqueId> cid=<commandId> sid=<sequentialId>]
    kelString toString() const override;

    bool isVisible() const;
    bool isEnabled() const;
    bool isChecked() const;
    bool isSeparator() const;
    void setVisible(bool visible);
    void setEnabled(bool enabled);
    void setChecked(bool checked);
    void setSeparator(bool separator);

    kelIcon const& getIcon() const;
    void setIcon(kelIcon const& icon);

    SInt32 getUniqueId() const;
    SInt32 getCommandId() const;
    SInt32 getSequentialId() const;
    void setUniqueId(SInt32 uniqueId);
    void setCommandId(SInt32 commandId);
    void setSequentialId(SInt32 sequentialId);

private:
    bool mEnabled = true;
    bool mVisible = true;
    bool mChecked = false;
    bool mSeparator = false;
    kelIcon mIcon{""};
    SInt32 mUniqueId = -1;
    SInt32 mCommandId = -1;
    SInt32 mSequentialId = -1;
};

} // namespace KELKIT

#endif
