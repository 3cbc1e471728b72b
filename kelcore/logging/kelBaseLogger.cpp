#include <kelcore/logging/kelBaseLogger.h>

#include <cstdarg>
#include <cstdio>

namespace KELKIT {

kelBaseLogger::kelBaseLogger() = default;

kelBaseLogger::kelBaseLogger(kelBaseLogger const&) = default;

kelBaseLogger& kelBaseLogger::operator=(kelBaseLogger const&) = default;

kelBaseLogger::~kelBaseLogger() = default;

void kelBaseLogger::printArgs(char const* format, ...) {
    // One buffer per call, on the caller's stack: threads format at the same time without
    // sharing anything, and vsnprintf cuts a longer text at the end of the buffer.
    char buffer[FORMAT_BUFFER_SIZE];
    buffer[0] = '\0';
    if (format != nullptr) {
        va_list args;
        va_start(args, format);
        int const written = std::vsnprintf(buffer, sizeof buffer, format, args);
        va_end(args);
        if (written < 0) {
            buffer[0] = '\0';
        }
    }
    print(buffer);
}

void kelBaseLogger::enterCriticalSection() {
    mLock.enter();
}

void kelBaseLogger::leaveCriticalSection() {
    mLock.leave();
}

} // namespace KELKIT
