#ifndef KELCORE_MENUS_KELICON_H
#define KELCORE_MENUS_KELICON_H

#include <kelcore/frame/kelExport.h>
#include <kelcore/frame/kelTypes.h>
#include <kelcore/strings/kelString.h>

namespace KELKIT {

// Names an icon as data: the path of a file that holds icons, and the index of one of them.
// Ordered by path (kelString order), then by index.
class KELCORE_API kelIcon {
public:
    // The empty path and index 0.
    static kelIcon const NullIcon;

    // null is taken as the empty path.
    explicit kelIcon(char const* fileContainer);
    kelIcon(char const* fileContainer, UInt16 index);
    kelIcon(kelIcon const& other);
    kelIcon& operator=(kelIcon const& other);
    virtual ~kelIcon();

    virtual char const* getFileContainer() const;
    virtual UInt16 getIndex() const;

    bool operator==(kelIcon const& other) const;
    bool operator!=(kelIcon const& other) const;
    bool operator<(kelIcon const& other) const;
    bool operator<=(kelIcon const& other) const;
    bool operator>(kelIcon const& other) const;
    bool operator>=(kelIcon const& other) const;

private:
    kelString mFileContainer;
    UInt16 mIndex;
};

} // namespace KELKIT

#endif
