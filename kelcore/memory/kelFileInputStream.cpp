#include <kelcore/memory/kelFileInputStream.h>

#include <kelcore/internal/kelFileStreamBuffer.h>
#include <kelcore/internal/kelThrowSite.h>
#include <kelcore/platform/kelFileStream.h>

#include <algorithm>

namespace KELKIT {

kelFileInputStream::kelFileInputStream(char const* path) : mFileSize(0) {
    std::FILE* const file = platform::openFileStream(path, "rb");
    if (file == nullptr) {
        KEL_THROW("Unable to create file input stream!");
    }
    mFile = internal::shareFileStream(file);
    if (platform::seekFileStream(file, 0, SEEK_END)) {
        long long const end = platform::tellFileStream(file);
        mFileSize = end < 0 ? 0 : static_cast<UInt64>(end);
    }
    platform::seekFileStream(file, 0, SEEK_SET);
}

kelFileInputStream::~kelFileInputStream() {
    close();
}

UInt32 kelFileInputStream::size() {
    if (mFile == nullptr) {
        return 0;
    }
    long long const position = platform::tellFileStream(mFile.get());
    if (position < 0 || static_cast<UInt64>(position) >= mFileSize) {
        return 0; // read beyond the measured size into a file that grew
    }
    return static_cast<UInt32>(std::min<UInt64>(mFileSize - position, 0xFFFFFFFFu));
}

void kelFileInputStream::close() {
    mFile.reset();
}

bool kelFileInputStream::isClosed() {
    return mFile == nullptr;
}

UInt32 kelFileInputStream::read(UInt8* data, UInt32 size) {
    if (mFile == nullptr || data == nullptr || size == 0) {
        return 0;
    }
    return static_cast<UInt32>(std::fread(data, 1, size, mFile.get()));
}

UInt8 kelFileInputStream::read() {
    if (mFile == nullptr) {
        return 0;
    }
    int const c = std::fgetc(mFile.get());
    return c == EOF ? 0 : static_cast<UInt8>(c);
}

UInt32 kelFileInputStream::skip(UInt32 size) {
    // size() is what lies before the size measured at opening, held at 4294967295, which no
    // skip exceeds; it is 0 when closed, at or past that size, or when the position is unknown.
    UInt32 const left = kelFileInputStream::size();
    if (left == 0) {
        return 0;
    }
    UInt32 const count = std::min(size, left);
    return platform::seekFileStream(mFile.get(), count, SEEK_CUR) ? count : 0;
}

} // namespace KELKIT
