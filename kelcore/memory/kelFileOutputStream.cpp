#include <kelcore/memory/kelFileOutputStream.h>

#include <kelcore/internal/kelFileStreamBuffer.h>
#include <kelcore/internal/kelThrowSite.h>
#include <kelcore/platform/kelFileStream.h>

#include <algorithm>

namespace KELKIT {

kelFileOutputStream::kelFileOutputStream(char const* path) : mWritten(0) {
    std::FILE* const file = platform::openFileStream(path, "wb");
    if (file == nullptr) {
        KEL_THROW("Unable to create file output stream!");
    }
    mFile = internal::shareFileStream(file);
}

kelFileOutputStream::~kelFileOutputStream() {
    close();
}

UInt32 kelFileOutputStream::size() {
    return static_cast<UInt32>(std::min<UInt64>(mWritten, 0xFFFFFFFFu));
}

UInt32 kelFileOutputStream::available() {
    return 0xFFFFFFFFu;
}

void kelFileOutputStream::close() {
    kelFileOutputStream::flush();
    mFile.reset();
}

bool kelFileOutputStream::isClosed() {
    return mFile == nullptr;
}

void kelFileOutputStream::flush() {
    if (mFile != nullptr) {
        std::fflush(mFile.get());
    }
}

UInt32 kelFileOutputStream::write(UInt8 const* data, UInt32 size) {
    if (mFile == nullptr || data == nullptr || size == 0) {
        return 0;
    }
    auto const count = static_cast<UInt32>(std::fwrite(data, 1, size, mFile.get()));
    mWritten += count;
    return count;
}

UInt32 kelFileOutputStream::write(UInt8 value) {
    return kelFileOutputStream::write(&value, 1);
}

} // namespace KELKIT
