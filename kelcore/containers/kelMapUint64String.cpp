#include <kelcore/containers/kelMapUint64String.h>

#include <map>

namespace KELKIT {

class kelMapUint64String::Impl {
public:
    virtual ~Impl() = default;
    std::map<UInt64, kelString> entries;
};

kelMapUint64String::kelMapUint64String() : mImpl(std::make_shared<Impl>()) {}

// Copies share the source's entries, so the shared pointer releases them exactly once, and an
// assignment lets go of the target's former entries (freeing them if it was their last user).
kelMapUint64String::kelMapUint64String(kelMapUint64String const& other) = default;
kelMapUint64String& kelMapUint64String::operator=(kelMapUint64String const& other) = default;
kelMapUint64String::~kelMapUint64String() = default;

bool kelMapUint64String::containsKey(UInt64 const& key) {
    return mImpl->entries.count(key) != 0;
}

bool kelMapUint64String::get(UInt64 const& key, kelString& value) {
    auto const found = mImpl->entries.find(key);
    if (found == mImpl->entries.end()) {
        return false;
    }
    value = found->second;
    return true;
}

void kelMapUint64String::clear() {
    mImpl->entries.clear();
}

kelListUInt64 kelMapUint64String::getKeys() {
    kelListUInt64 keys;
    for (auto const& entry : mImpl->entries) {
        keys.add(entry.first);
    }
    return keys;
}

void kelMapUint64String::set(UInt64 const& key, kelString& value) {
    mImpl->entries[key] = value;
}

void kelMapUint64String::remove(UInt64 const& key) {
    mImpl->entries.erase(key);
}

} // namespace KELKIT
