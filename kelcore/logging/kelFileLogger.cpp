#include <kelcore/logging/kelFileLogger.h>

#include <kelcore/files/kelSystem.h>
#include <kelcore/internal/kelEntered.h>
#include <kelcore/platform/kelFileStream.h>

#include <cstring>

namespace KELKIT {

using internal::Entered;

kelFileLogger::kelFileLogger(char const* fileName, bool autoFlush) : mAutoFlush(autoFlush) {
    createLogFile(fileName);
}

kelFileLogger::kelFileLogger(kelFileLogger const& other)
    : kelILogger(other), kelBaseLogger(other), mAutoFlush(other.mAutoFlush.load()) {
    Entered const entered(mLock);
    mFile = other.mFile;
}

kelFileLogger& kelFileLogger::operator=(kelFileLogger const& other) {
    if (this != &other) {
        kelBaseLogger::operator=(other);
        Entered const entered(mLock);
        mFile = other.mFile;
        mAutoFlush = other.mAutoFlush.load();
    }
    return *this;
}

kelFileLogger::~kelFileLogger() {
    Entered const entered(mLock);
    mFile.reset();
}

void kelFileLogger::print(char const* text) {
    static char const* const separator = kelSystem::getLineSeparator();
    static std::size_t const separatorLength = std::strlen(separator);
    Entered const entered(mLock);
    if (!mFile || text == nullptr) {
        return;
    }
    std::FILE* const file = mFile.get();
    // The text is translated into a block on the stack and written a block at a time: one
    // fwrite for a usual line, whatever its line feeds.
    char block[1024];
    std::size_t used = 0;
    auto put = [&](char const* bytes, std::size_t count) {
        if (used + count > sizeof block) {
            std::fwrite(block, 1, used, file);
            used = 0;
            if (count > sizeof block) {
                std::fwrite(bytes, 1, count, file);
                return;
            }
        }
        std::memcpy(block + used, bytes, count);
        used += count;
    };
    for (char const* piece = text;;) {
        char const* const lineFeed = std::strchr(piece, '\n');
        if (lineFeed == nullptr) {
            put(piece, std::strlen(piece));
            break;
        }
        put(piece, static_cast<std::size_t>(lineFeed - piece));
        put(separator, separatorLength);
        piece = lineFeed + 1;
    }
    std::fwrite(block, 1, used, file);
    if (mAutoFlush.load(std::memory_order_relaxed)) {
        std::fflush(file);
    }
}

void kelFileLogger::setAutoFlush(bool autoFlush) {
    mAutoFlush = autoFlush;
}

void kelFileLogger::createLogFile(char const* fileName) {
    Entered const entered(mLock);
    mFile.reset();
    std::FILE* const file = platform::openFileStream(fileName, "wb");
    if (file != nullptr) {
        mFile.reset(file, [](std::FILE* stream) { std::fclose(stream); });
    }
}

} // namespace KELKIT
