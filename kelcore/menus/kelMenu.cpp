#include <kelcore/menus/kelMenu.h>

#include <kelcore/strings/kelStringConverter.h>

namespace KELKIT {

kelMenu::kelMenu() = default;

kelMenu::kelMenu(kelMenu* parent, char const* text) : kelTextNode(parent, text) {}

kelMenu::kelMenu(kelMenu const&) = default;

kelMenu& kelMenu::operator=(kelMenu const&) = default;

kelMenu::~kelMenu() = default;

kelString kelMenu::toString() const {
    return kelStringConverter::format("menu [name=\"%s\" uid=%d cid=%d sid=%d]", getText(),
                                      static_cast<int>(mUniqueId), static_cast<int>(mCommandId),
                                      static_cast<int>(mSequentialId));
}

bool kelMenu::isVisible() const {
    return mVisible;
}

bool kelMenu::isEnabled() const {
    return mEnabled;
}

bool kelMenu::isChecked() const {
    return mChecked;
}

bool kelMenu::isSeparator() const {
    return mSeparator;
}

void kelMenu::setVisible(bool visible) {
    mVisible = visible;
}

void kelMenu::setEnabled(bool enabled) {
    mEnabled = enabled;
}

void kelMenu::setChecked(bool checked) {
    mChecked = checked;
}

void kelMenu::setSeparator(bool separator) {
    mSeparator = separator;
}

kelIcon const& kelMenu::getIcon() const {
    return mIcon;
}

void kelMenu::setIcon(kelIcon const& icon) {
    mIcon = icon;
}

SInt32 kelMenu::getUniqueId() const {
    return mUniqueId;
}

SInt32 kelMenu::getCommandId() const {
    return mCommandId;
}

SInt32 kelMenu::getSequentialId() const {
    return mSequentialId;
}

void kelMenu::setUniqueId(SInt32 uniqueId) {
    mUniqueId = uniqueId;
}

void kelMenu::setCommandId(SInt32 commandId) {
    mCommandId = commandId;
}

void kelMenu::setSequentialId(SInt32 sequentialId) {
    mSequentialId = sequentialId;
}

} // namespace KELKIT
