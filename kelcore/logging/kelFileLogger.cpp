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
    // The pieces between line feeds go out as they are, each line feed as the separator.
    for (char const* piece = text;;) {
        char const* const lineFeed = std::strchr(piece, '\n');
        if (lineFeed == nullptr) {
            std::fwrite(piece, 1, std::strlen(piece), file);
            break;
        }
        std::fwrite(piece, 1, static_cast<std::size_t>(lineFeed - piece), file);
        std::fwrite(separator, 1, separatorLength, file);
        piece = lineFeed + 1;
    }
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
