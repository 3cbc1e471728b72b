#include <kelcore/files/kelCacheFile.h>

#include <kelcore/files/kelFile.h>
#include <kelcore/time/kelTime.h>

#include <algorithm>

namespace KELKIT {

namespace {

int const kDefaultTTL = 3600;

// The first read goes into a block of at most this size. Only once it has filled is the size
// that the file reported trusted with a block of its own, so a file that reports much and
// delivers nothing costs no more memory than this.
UInt32 const kFirstPiece = 64u * 1024u;

// Fills buffer from done up to want, until a read gives nothing; the new count.
UInt32 readUpTo(kelFile& file, UInt8* buffer, UInt32 done, UInt32 want) {
    while (done < want) {
        UInt32 const count = file.read(buffer + done, want - done);
        if (count == 0) {
            break;
        }
        done += count;
    }
    return done;
}

// The bytes of an open file, at most as many as its size when this starts, cut to 32 bits. The
// block ends up holding exactly the bytes that arrived: never bytes that no read delivered,
// never more than the file had when opened. False, with bytes empty, when memory is refused.
bool readFile(kelFile& file, kelMemoryBuffer& bytes) {
    UInt32 const size = static_cast<UInt32>(file.getSize());
    if (!bytes.allocate(std::min(size, kFirstPiece))) {
        return false;
    }
    UInt32 done = readUpTo(file, bytes.getBuffer(), 0, bytes.getSize());
    if (done == bytes.getSize() && done < size) {
        if (!bytes.reallocate(size)) { // keeps the first piece
            bytes.clear();
            return false;
        }
        done = readUpTo(file, bytes.getBuffer(), done, size);
    }
    if (done < bytes.getSize() && !bytes.reallocate(done)) {
        bytes.clear();
        return false;
    }
    return true;
}

} // namespace

class kelCacheFile::Impl {
public:
    virtual ~Impl() = default;
    kelCacheT<kelString, FILE_DATA> cache;
    int ttl = kDefaultTTL;
};

kelCacheFile::kelCacheFile() : mImpl(std::make_shared<Impl>()) {}

// Copies share the source's cache, so the shared pointer releases it exactly once, and an
// assignment lets go of the target's former cache (freeing it if it was the last user).
kelCacheFile::kelCacheFile(kelCacheFile const& other) = default;
kelCacheFile& kelCacheFile::operator=(kelCacheFile const& other) = default;
kelCacheFile::~kelCacheFile() = default;

void kelCacheFile::clear() {
    mImpl->cache.clear();
}

bool kelCacheFile::retreive(char const* path, FILE_DATA& data) {
    kelString const key(path);
    auto* entry = mImpl->cache.find(key);
    if (entry == nullptr) {
        if (!reload(path)) {
            return false;
        }
        entry = mImpl->cache.find(key); // gone already if it expired during the reload
        if (entry == nullptr) {
            return false;
        }
    }
    kelMemoryBuffer const& bytes = entry->value.data;
    if (!data.data.set(bytes.getBuffer(), bytes.getSize())) {
        return false; // a refused block leaves the old bytes
    }
    data.size = entry->value.size;
    return true;
}

bool kelCacheFile::reload(char const* path, FILE_DATA& data) {
    kelFile file(path);
    if (!file.open(kelFile::READ)) {
        return false;
    }
    // Exactly ttl seconds on the clock, added in one step. Advancing the local calendar a
    // second at a time gives the same instant except across a daylight-saving change, and
    // costs a conversion per second, which no long time to live could afford. A negative value
    // would be a count of some 4 billion such steps; it is held at 0 instead.
    kelTime expiration;
    expiration.setRawTime(expiration.getRawTime() + static_cast<UInt64>(std::max(mImpl->ttl, 0)));
    // When memory is refused the entry is stored empty all the same; its size then says 0
    // rather than what the record said before, so that no size ever promises missing bytes.
    readFile(file, data.data);
    data.size = data.data.getSize();
    kelString const key(path);
    // The old bytes go first, so that no more than the caller's and the cache's copy are ever
    // alive at once.
    if (auto* const old = mImpl->cache.find(key)) {
        old->value = FILE_DATA();
    }
    mImpl->cache.set(key, data, expiration);
    // A copy of the bytes that memory refused leaves the entry's buffer empty; so is its size.
    if (auto* const stored = mImpl->cache.find(key)) {
        stored->value.size = stored->value.data.getSize();
    }
    return true;
}

bool kelCacheFile::reload(char const* path) {
    FILE_DATA data;
    return reload(path, data);
}

void kelCacheFile::setTTL(int ttl) {
    mImpl->ttl = ttl;
}

int kelCacheFile::getTTL() const {
    return mImpl->ttl;
}

} // namespace KELKIT
