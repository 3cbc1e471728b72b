#include <kelcore/platform/kelDirectory.h>
#include <kelcore/platform/kelNativePath.h>

#include <windows.h>

#include <string>

namespace KELKIT {
namespace platform {

struct DirectoryReader::State {
    HANDLE find = INVALID_HANDLE_VALUE;
    WIN32_FIND_DATAA data;
    bool pending = false; // data holds an entry not handed out yet
};

DirectoryReader::DirectoryReader() : mState(new State()) {}

DirectoryReader::~DirectoryReader() {
    close();
}

bool DirectoryReader::open(char const* path) {
    close();
    std::string pattern;
    if (!toNativePath(path, pattern)) {
        return false;
    }
    if (pattern.back() != '\\') {
        pattern += '\\';
    }
    pattern += "*.*";
    if (pattern.size() > kMaxPathLength) {
        return false;
    }
    mState->find = ::FindFirstFileA(pattern.c_str(), &mState->data);
    mState->pending = mState->find != INVALID_HANDLE_VALUE;
    return mState->pending;
}

bool DirectoryReader::openChild(DirectoryReader const& /*parent*/, char const* /*name*/,
                                char const* path) {
    return open(path);
}

bool DirectoryReader::next(DirectoryEntry& entry, bool /*wantAttributes: always known*/) {
    if (mState->find == INVALID_HANDLE_VALUE) {
        return false;
    }
    if (!mState->pending && !::FindNextFileA(mState->find, &mState->data)) {
        return false;
    }
    mState->pending = false;
    entry.name = mState->data.cFileName;
    entry.attributes = mState->data.dwFileAttributes;
    return true;
}

void DirectoryReader::close() {
    if (mState->find != INVALID_HANDLE_VALUE) {
        ::FindClose(mState->find);
        mState->find = INVALID_HANDLE_VALUE;
    }
    mState->pending = false;
}

} // namespace platform
} // namespace KELKIT
