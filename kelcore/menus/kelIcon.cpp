#include <kelcore/menus/kelIcon.h>

namespace KELKIT {

kelIcon const kelIcon::NullIcon("");

kelIcon::kelIcon(char const* fileContainer) : mFileContainer(fileContainer), mIndex(0) {}

kelIcon::kelIcon(char const* fileContainer, UInt16 index)
    : mFileContainer(fileContainer), mIndex(index) {}

kelIcon::kelIcon(kelIcon const& other) = default;

kelIcon& kelIcon::operator=(kelIcon const& other) = default;

kelIcon::~kelIcon() = default;

char const* kelIcon::getFileContainer() const {
    return mFileContainer.c_str();
}

UInt16 kelIcon::getIndex() const {
    return mIndex;
}

bool kelIcon::operator==(kelIcon const& other) const {
    return mIndex == other.mIndex && mFileContainer == other.mFileContainer;
}

bool kelIcon::operator!=(kelIcon const& other) const {
    return !(*this == other);
}

bool kelIcon::operator<(kelIcon const& other) const {
    if (mFileContainer == other.mFileContainer) {
        return mIndex < other.mIndex;
    }
    return mFileContainer < other.mFileContainer;
}

bool kelIcon::operator<=(kelIcon const& other) const {
    return !(other < *this);
}

bool kelIcon::operator>(kelIcon const& other) const {
    return other < *this;
}

bool kelIcon::operator>=(kelIcon const& other) const {
    return !(*this < other);
}

} // namespace KELKIT
