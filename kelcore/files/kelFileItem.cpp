#include <kelcore/files/kelFileItem.h>

namespace KELKIT {

kelFileItem::kelFileItem() {}

kelFileItem::kelFileItem(char const* path) : mPath(path) {}

kelFileItem::kelFileItem(kelFileItem const&) = default;

kelFileItem& kelFileItem::operator=(kelFileItem const&) = default;

kelFileItem::~kelFileItem() {}

void kelFileItem::setPath(char const* path) {
    mPath = kelString(path); // a copy first: path may point into mPath itself
}

char const* kelFileItem::getPath() const {
    return mPath.c_str();
}

} // namespace KELKIT
